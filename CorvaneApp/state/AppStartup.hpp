#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The stores the application opens on its data folder before its state exists.
struct AppStores {
    std::filesystem::path dataDirectory;
    std::unique_ptr<ProfileStore> profiles;
    std::unique_ptr<BackupManager> dockBackups;
    std::unique_ptr<WorkspaceBackupStore> workspaceBackups;
    /// Opened on "/dev/null" because the data folder could not be used: nothing is read and
    /// nothing saved survives.
    bool degraded = false;
};

/// How the application comes up, up to its state.
namespace AppStartup {

inline constexpr std::string_view nullPath = "/dev/null";

/// Creates the data folder, takes the launch backup (a failure there is only logged), then
/// opens the workspaces file and the Dock backups folder. Throws when the folder cannot be
/// created, the workspaces file cannot be read or decoded, or the backups folder cannot be made.
AppStores live(const std::filesystem::path& dataDirectory, DockPreferencesBackend& dock,
               BackupManager::FileBackendFactory files, const Clock& clock, Log& log, Notifier* notifier = nullptr);
/// Stores on "/dev/null" that read nothing and keep nothing. Never throws.
AppStores degraded(DockPreferencesBackend& dock, BackupManager::FileBackendFactory files, const Clock& clock);
/// `live`, or, when that throws, the degraded stores (the reason is logged).
AppStores open(const std::filesystem::path& dataDirectory, DockPreferencesBackend& dock,
               BackupManager::FileBackendFactory files, const Clock& clock, Log& log, Notifier* notifier = nullptr);

} // namespace AppStartup

/// What the command line asks of a starting application: "--page NAME", "--stack FOLDER",
/// "--widget KIND". An option is honoured only when a value follows it.
struct LaunchRequests {
    static constexpr double pageDelay = 0.5;
    static constexpr double stackDelay = 1.5;
    static constexpr double widgetDelay = 1.5;

    std::optional<std::string> page;
    std::optional<std::string> stack;
    std::optional<std::string> widget;

    /// `arguments` without the program's own path.
    static LaunchRequests parse(const std::vector<std::string>& arguments);

    bool operator==(const LaunchRequests&) const = default;
};

/// The pages of the main window, by the names "--page" takes.
const std::vector<std::string>& mainWindowPages();

} // namespace corvane
