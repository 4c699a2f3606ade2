#pragma once

#include "CorvaneCore/dock/PlistValue.hpp"
#include "CorvaneCore/platform/DockSettings.hpp"

#include <filesystem>

namespace corvane {

/// The Dock's look in the same property-list file as its tiles (see `PlistFileBackend`).
class PlistFileDockSettings final : public DockSettings {
public:
    explicit PlistFileDockSettings(std::filesystem::path url) : url_(std::move(url)) {}

    /// A missing file is a Dock on its defaults: every value unset.
    NativeDockPreferences current() const override;
    std::optional<std::string> orientation() const override;
    void write(const NativeDockPreferences& preferences) override;

private:
    PlistDictionary root() const;

    std::filesystem::path url_;
};

} // namespace corvane
