#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace corvane {

/// Copies of the Dock's tile arrays, taken before every change of the Dock, as property-list
/// files laid out like the Dock's own preferences ("dock-" + time stamp + ".plist").
class BackupManager {
public:
    static constexpr int defaultLimit = 20;
    /// A backend on a property-list file, for writing and reading backups.
    using FileBackendFactory = std::function<std::unique_ptr<DockPreferencesBackend>(const std::filesystem::path&)>;

    BackupManager(std::filesystem::path directory, DockPreferencesBackend& source, FileBackendFactory files,
                  const Clock& clock)
        : directory_(std::move(directory)), source_(source), files_(std::move(files)), clock_(clock) {}

    const std::filesystem::path& directory() const { return directory_; }

    /// Writes a backup of the Dock as it is now and returns its file; when the newest backup
    /// already holds exactly these tiles, returns that one and writes nothing. Throws `DockError`
    /// or `DataFileError`.
    std::filesystem::path snapshot();
    /// Newest first; a missing folder gives none.
    std::vector<std::filesystem::path> listBackups() const;
    std::optional<std::filesystem::path> latestBackup() const;
    /// Removes every backup after the newest `keeping`.
    void prune(int keeping = defaultLimit);
    /// The tiles a backup holds, exactly as they were kept: nothing is decoded, so a tile this
    /// system cannot read is put back all the same. A file that is not a property list holding
    /// both tile arrays is refused with `DockError`, naming the file.
    DockTiles tiles(const std::filesystem::path& backup) const;

private:
    std::filesystem::path directory_;
    DockPreferencesBackend& source_;
    FileBackendFactory files_;
    const Clock& clock_;
};

} // namespace corvane
