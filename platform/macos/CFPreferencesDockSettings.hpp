#pragma once

#include "CorvaneCore/platform/DockSettings.hpp"

#include <filesystem>

namespace corvane {

/// The live Dock's look through the preferences service. Written without a macOS compiler at
/// hand: keep it thin.
class CFPreferencesDockSettings final : public DockSettings {
public:
    explicit CFPreferencesDockSettings(std::filesystem::path url) : url_(std::move(url)) {}

    NativeDockPreferences current() const override;
    std::optional<std::string> orientation() const override;
    void write(const NativeDockPreferences& preferences) override;

private:
    std::filesystem::path url_;
};

} // namespace corvane
