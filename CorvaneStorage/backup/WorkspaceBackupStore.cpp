#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"

#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/RawValue.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"
#include "CorvaneFiles/FileLock.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace corvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kInfoFileName = "info.json";

void checked(const fs::path& path, const std::error_code& ec) {
    if (ec) throw DataFileError(DataFileError::Operation::write, path, ec.message());
}

/// The time stamp with ":" made file-name safe; names then sort by time.
std::string folderStamp(Date date) {
    auto stamp = iso8601(date);
    std::replace(stamp.begin(), stamp.end(), ':', '-');
    return stamp;
}

std::optional<WorkspaceBackup> readBackup(const fs::path& folder) {
    try {
        auto text = readFileIfExists(folder / kInfoFileName);
        if (!text) return std::nullopt;
        auto json = parseJson(*text);
        JsonReader info(json);
        auto date = parseIso8601(info["date"].string());
        auto reason = backupReasonFromRaw(info["reason"].string());
        if (!date || !reason) return std::nullopt;
        return WorkspaceBackup{folder, *date, *reason};
    } catch (const std::exception&) {
        return std::nullopt; // an unfinished or foreign folder is not a backup
    }
}

} // namespace

std::string_view rawValue(WorkspaceBackup::Reason reason) {
    switch (reason) {
    case WorkspaceBackup::Reason::launch: return "launch";
    case WorkspaceBackup::Reason::quit: return "quit";
    case WorkspaceBackup::Reason::restore: return "restore";
    case WorkspaceBackup::Reason::manual: return "manual";
    }
    return "launch";
}

std::optional<WorkspaceBackup::Reason> backupReasonFromRaw(std::string_view raw) {
    using R = WorkspaceBackup::Reason;
    return caseWithRawValue({R::launch, R::quit, R::restore, R::manual}, raw);
}

WorkspaceBackupStore::WorkspaceBackupStore(fs::path dataDirectory, int limit)
    : dataDirectory_(std::move(dataDirectory)), directory_(dataDirectory_ / directoryName), limit_(limit) {}

std::vector<WorkspaceBackup> WorkspaceBackupStore::list() const {
    std::vector<WorkspaceBackup> backups;
    std::error_code ec;
    if (!fs::is_directory(directory_, ec)) return backups;
    for (const auto& entry : fs::directory_iterator(directory_, ec)) {
        // A backup being written or removed may hold a valid info file already, or still.
        if (!entry.is_directory(ec) || isTemporaryName(entry.path().filename().string())) continue;
        if (auto backup = readBackup(entry.path())) backups.push_back(*backup);
    }
    std::sort(backups.begin(), backups.end(), [](const auto& a, const auto& b) {
        return a.date != b.date ? a.date > b.date : a.url.filename() > b.url.filename();
    });
    return backups;
}

bool WorkspaceBackupStore::matches(const WorkspaceBackup& backup) const {
    for (auto name : fileNames)
        if (readFileIfExists(dataDirectory_ / name) != readFileIfExists(backup.url / name)) return false;
    return true;
}

std::optional<WorkspaceBackup> WorkspaceBackupStore::backUp(WorkspaceBackup::Reason reason, Date date) {
    // Leftovers of a backup killed halfway go first, whether or not a backup is taken now.
    removeAbandonedTemporaries(directory_);
    auto existing = list();
    if (!existing.empty() && matches(existing.front())) return std::nullopt;

    // The backup is put together in a temporary folder and renamed into place, so that a backup
    // killed halfway is never a folder of its own, only a leftover the next backup removes.
    auto base = folderStamp(date) + "-" + std::string(rawValue(reason));
    auto staging = createTemporaryFolder(directory_, base);
    fs::path folder;
    try {
        for (auto name : fileNames)
            if (auto contents = readFileIfExists(dataDirectory_ / name)) writeFileAtomically(staging / name, *contents);
        Json info = Json::object({{"date", iso8601(date)}, {"reason", std::string(rawValue(reason))}});
        writeFileAtomically(staging / kInfoFileName, prettyJson(info));
        folder = publishUnderFreeName(staging, directory_, base);
    } catch (...) {
        std::error_code ec;
        fs::remove_all(staging, ec);
        throw;
    }
    prune();
    return WorkspaceBackup{folder, date, reason};
}

void WorkspaceBackupStore::prune() {
    auto backups = list();
    for (std::size_t i = static_cast<std::size_t>(std::max(limit_, 0)); i < backups.size(); ++i) {
        // Out of the list in one step, then removed: a removal killed halfway leaves a leftover
        // for the next backup to clear, never a listed backup missing some of its files.
        auto doomed = createTemporaryFolder(directory_, backups[i].url.filename().string());
        if (::rename(backups[i].url.c_str(), doomed.c_str()) != 0)
            throw DataFileError(DataFileError::Operation::write, backups[i].url, std::strerror(errno));
        std::error_code ec;
        fs::remove_all(doomed, ec);
        checked(doomed, ec);
    }
}

WorkspaceBackupStore::Contents WorkspaceBackupStore::contents(const WorkspaceBackup& backup) const {
    Contents contents;
    try {
        if (auto text = readFileIfExists(backup.url / fileNames[0])) contents.profiles = profilesFileFromText(*text);
    } catch (const std::exception&) {
    }
    try {
        contents.widgetsText = readFileIfExists(backup.url / fileNames[1]);
    } catch (const std::exception&) {
    }
    return contents;
}

void WorkspaceBackupStore::restore(const WorkspaceBackup& backup, Date date) {
    // The stores' locks, in one fixed order, for the whole restore: a change another process
    // makes meanwhile lands before the safety backup or after the restore, never between them.
    std::vector<FileLock> locks;
    locks.reserve(fileNames.size());
    for (auto name : fileNames) locks.emplace_back(dataDirectory_ / name);
    backUp(WorkspaceBackup::Reason::restore, date);
    for (auto name : fileNames)
        if (auto contents = readFileIfExists(backup.url / name)) writeFileAtomically(dataDirectory_ / name, *contents);
}

} // namespace corvane
