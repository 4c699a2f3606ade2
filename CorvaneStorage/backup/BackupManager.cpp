#include "CorvaneStorage/backup/BackupManager.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

#include <algorithm>

namespace corvane {

namespace fs = std::filesystem;

fs::path BackupManager::snapshot() {
    auto current = source_.readTiles();
    StoragePath::createDirectory(directory_);
    // Every backup is a new name, so a write killed halfway is cleaned up here or never.
    removeAbandonedTemporaries(directory_);
    // A Dock that still holds what the newest backup holds needs no second copy: repeated
    // switches that put the same Dock back would otherwise push real history out of the limit.
    if (auto latest = latestBackup()) {
        try {
            if (tiles(*latest) == current) return *latest;
        } catch (const std::exception&) {
            // An unreadable backup, or one that is not ours, proves nothing; take a fresh one.
        }
    }
    auto stem = "dock-" + iso8601(clock_.now());
    std::replace(stem.begin(), stem.end(), ':', '-');
    // Written under a temporary name first, then given the first free name: two processes backing
    // up within the same millisecond each keep their own file.
    auto staging = createTemporaryFolder(directory_, stem);
    try {
        auto finished = staging / "dock.plist";
        files_(finished)->writeTiles(current);
        auto file = publishUnderFreeName(finished, directory_, stem, ".plist");
        std::error_code ec;
        fs::remove(staging, ec); // empty now; a leftover would be cleared by the next backup
        return file;
    } catch (...) {
        std::error_code ec;
        fs::remove_all(staging, ec);
        throw;
    }
}

DockTiles BackupManager::tiles(const fs::path& backup) const {
    std::optional<std::string> bytes;
    try {
        bytes = readFileIfExists(backup);
    } catch (const DataFileError& error) {
        throw DockError::plistReadFailed(backup.string(), error.what());
    }
    if (!bytes) throw DockError::plistNotFound(backup.string());
    auto refuse = [&](const std::string& why) {
        return DockError::plistMalformed(backup.string(), "it is not a Dock backup: " + why);
    };
    auto root = parsePropertyList(*bytes);
    if (!root) throw refuse("it is not a property list");
    if (!root->dictionary()) throw refuse("its root is not a dictionary");
    // Both arrays are always written; a file without one is not ours, and putting it back would
    // empty a section of the Dock.
    auto section = [&](std::string_view key) {
        auto value = root->dictionary()->find(key);
        if (value == root->dictionary()->end()) throw refuse("it has no " + std::string(key));
        auto array = value->second.array();
        if (!array) throw refuse(std::string(key) + " is not an array of dicts");
        std::vector<PlistDictionary> tiles;
        for (const auto& tile : *array) {
            if (!tile.dictionary()) throw refuse(std::string(key) + " is not an array of dicts");
            tiles.push_back(*tile.dictionary());
        }
        return tiles;
    };
    return DockTiles{section(DockTileKey::persistentApps), section(DockTileKey::persistentOthers)};
}

std::vector<fs::path> BackupManager::listBackups() const {
    std::vector<fs::path> backups;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(directory_, ec)) {
        auto name = entry.path().filename().string();
        if (name.starts_with("dock-") && entry.path().extension() == ".plist") backups.push_back(entry.path());
    }
    // The time stamp leads the name, so names sort by time; a counter sorts after its plain name.
    std::sort(backups.begin(), backups.end(), [](const fs::path& a, const fs::path& b) {
        auto stem = [](const fs::path& p) { return p.stem().string(); };
        return stem(a) > stem(b);
    });
    return backups;
}

std::optional<fs::path> BackupManager::latestBackup() const {
    auto backups = listBackups();
    if (backups.empty()) return std::nullopt;
    return backups.front();
}

void BackupManager::prune(int keeping) {
    auto backups = listBackups();
    for (std::size_t i = static_cast<std::size_t>(std::max(keeping, 0)); i < backups.size(); ++i) {
        std::error_code ec;
        fs::remove(backups[i], ec);
        if (ec) throw DataFileError(DataFileError::Operation::write, backups[i], ec.message());
    }
}

} // namespace corvane
