#pragma once

#include "CorvaneCore/platform/DockPreferencesBackend.hpp"

namespace corvane {

/// The live Dock's tiles, through the preferences service (cfprefsd) of the domain
/// "com.apple.dock". Errors name `url`, the Dock's preferences file, which is what the user can
/// inspect. Written without a macOS compiler at hand: keep it thin.
class CFPreferencesBackend final : public DockPreferencesBackend {
public:
    static constexpr const char* domain = "com.apple.dock";

    explicit CFPreferencesBackend(std::filesystem::path url) : url_(std::move(url)) {}

    DockTiles readTiles() override;
    void writeTiles(const DockTiles& tiles) override;
    std::filesystem::path url() const override { return url_; }

private:
    std::filesystem::path url_;
};

} // namespace corvane
