#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A copy of the application's own data files, in a folder of its own.
struct WorkspaceBackup {
    /// `manual` is a backup the user asked for.
    enum class Reason { launch, quit, restore, manual };

    std::filesystem::path url;
    Date date;
    Reason reason = Reason::launch;

    const std::filesystem::path& id() const { return url; }
    bool operator==(const WorkspaceBackup&) const = default;
};

std::string_view rawValue(WorkspaceBackup::Reason reason);
std::optional<WorkspaceBackup::Reason> backupReasonFromRaw(std::string_view raw);

/// Backups of "profiles.json" and "widgets.json", taken at launch, at quitting and before a
/// restore, in "workspace-backups" of the data folder.
class WorkspaceBackupStore {
public:
    static constexpr std::string_view directoryName = "workspace-backups";
    static constexpr int defaultLimit = 40;
    static constexpr std::array<std::string_view, 2> fileNames = {"profiles.json", "widgets.json"};

    explicit WorkspaceBackupStore(std::filesystem::path dataDirectory, int limit = defaultLimit);

    const std::filesystem::path& directory() const { return directory_; }
    const std::filesystem::path& dataDirectory() const { return dataDirectory_; }

    /// Takes a backup, or none when the data files are byte for byte those of the newest one.
    /// Keeps the newest `limit`. Throws `DataFileError`.
    std::optional<WorkspaceBackup> backUp(WorkspaceBackup::Reason reason, Date date);
    /// Every folder with a readable "info.json", newest first; a missing folder gives none.
    std::vector<WorkspaceBackup> list() const;

    struct Contents {
        std::optional<ProfilesFile> profiles;
        /// The backed-up widgets file as it was written.
        std::optional<std::string> widgetsText;
    };
    /// What a backup holds, for a preview; a file that is missing or does not decode is none.
    Contents contents(const WorkspaceBackup& backup) const;

    /// Backs up the present state (reason restore), then copies the backup's files back. The
    /// caller reloads its stores afterwards.
    void restore(const WorkspaceBackup& backup, Date date);

private:
    bool matches(const WorkspaceBackup& backup) const;
    void prune();

    std::filesystem::path dataDirectory_;
    std::filesystem::path directory_;
    int limit_;
};

} // namespace corvane
