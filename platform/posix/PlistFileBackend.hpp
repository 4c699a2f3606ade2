#pragma once

#include "CorvaneCore/platform/DockPreferencesBackend.hpp"
#include "platform/posix/PlistFile.hpp"

namespace corvane {

/// The Dock's tiles in a property-list file: a copy of the Dock's preferences, the sample Dock,
/// or the live file off macOS. Every other key of the file is kept when the tiles are written.
class PlistFileBackend final : public DockPreferencesBackend {
public:
    explicit PlistFileBackend(std::filesystem::path url) : url_(url), file_(std::move(url)) {}

    DockTiles readTiles() override;
    void writeTiles(const DockTiles& tiles) override;
    std::filesystem::path url() const override { return url_; }

private:
    std::filesystem::path url_;
    PlistFileMemo file_;
};

/// The two tile arrays of a preferences root; a missing array is empty. Throws `DockError`
/// (`plistMalformed`) naming `url` when a value is not an array of dictionaries.
DockTiles tilesFromPreferences(const PlistDictionary& root, const std::filesystem::path& url);

} // namespace corvane
