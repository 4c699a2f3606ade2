#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"

#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"

#include <algorithm>
#include <cstdio>

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
    for (auto reason : {WorkspaceBackup::Reason::launch, WorkspaceBackup::Reason::quit, WorkspaceBackup::Reason::restore,
                        WorkspaceBackup::Reason::manual})
        if (rawValue(reason) == raw) return reason;
    return std::nullopt;
}

WorkspaceBackupStore::WorkspaceBackupStore(fs::path dataDirectory, int limit)
    : dataDirectory_(std::move(dataDirectory)), directory_(dataDirectory_ / directoryName), limit_(limit) {}

std::vector<WorkspaceBackup> WorkspaceBackupStore::list() const {
    std::vector<WorkspaceBackup> backups;
    std::error_code ec;
    if (!fs::is_directory(directory_, ec)) return backups;
    for (const auto& entry : fs::directory_iterator(directory_, ec))
        if (entry.is_directory(ec))
            if (auto backup = readBackup(entry.path())) backups.push_back(*backup);
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
    auto existing = list();
    if (!existing.empty() && matches(existing.front())) return std::nullopt;

    std::error_code ec;
    fs::create_directories(directory_, ec);
    checked(directory_, ec);
    auto base = folderStamp(date) + "-" + std::string(rawValue(reason));
    auto folder = directory_ / base;
    for (int counter = 1; fs::exists(folder); ++counter) {
        char suffix[16];
        std::snprintf(suffix, sizeof suffix, "-%03d", counter);
        folder = directory_ / (base + suffix);
    }
    fs::create_directory(folder, ec);
    checked(folder, ec);
    for (auto name : fileNames)
        if (auto contents = readFileIfExists(dataDirectory_ / name)) writeFileAtomically(folder / name, *contents);
    Json info = Json::object({{"date", iso8601(date)}, {"reason", std::string(rawValue(reason))}});
    writeFileAtomically(folder / kInfoFileName, prettyJson(info));
    prune();
    return WorkspaceBackup{folder, date, reason};
}

void WorkspaceBackupStore::prune() {
    auto backups = list();
    for (std::size_t i = static_cast<std::size_t>(std::max(limit_, 0)); i < backups.size(); ++i) {
        std::error_code ec;
        fs::remove_all(backups[i].url, ec);
        checked(backups[i].url, ec);
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
    backUp(WorkspaceBackup::Reason::restore, date);
    for (auto name : fileNames)
        if (auto contents = readFileIfExists(backup.url / name)) writeFileAtomically(dataDirectory_ / name, *contents);
}

} // namespace corvane
