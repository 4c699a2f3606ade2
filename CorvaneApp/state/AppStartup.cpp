#include "CorvaneApp/state/AppStartup.hpp"

#include "CorvaneStorage/storage/StoragePath.hpp"

#include <algorithm>

namespace corvane {

namespace AppStartup {

AppStores live(const std::filesystem::path& dataDirectory, DockPreferencesBackend& dock,
               BackupManager::FileBackendFactory files, const Clock& clock, Log& log, Notifier* notifier) {
    StoragePath::createDirectory(dataDirectory);
    AppStores stores;
    stores.dataDirectory = dataDirectory;
    stores.workspaceBackups = std::make_unique<WorkspaceBackupStore>(dataDirectory, WorkspaceBackupStore::defaultLimit);
    // Taken before the workspaces file is opened, so that a file that then fails to load is
    // still in the newest backup.
    try {
        stores.workspaceBackups->backUp(WorkspaceBackup::Reason::launch, clock.now());
    } catch (const std::exception& error) {
        log.error("app", std::string("launch backup failed: ") + error.what());
    }
    stores.profiles = std::make_unique<ProfileStore>(StoragePath::profilesFileURL(dataDirectory), notifier);
    auto backups = StoragePath::backupsDirectory(dataDirectory);
    StoragePath::createDirectory(backups);
    stores.dockBackups = std::make_unique<BackupManager>(backups, dock, std::move(files), clock);
    return stores;
}

AppStores degraded(DockPreferencesBackend& dock, BackupManager::FileBackendFactory files, const Clock& clock) {
    AppStores stores;
    stores.degraded = true;
    stores.dataDirectory = nullPath;
    stores.profiles = std::make_unique<ProfileStore>(ProfileStore::discarding);
    stores.dockBackups = std::make_unique<BackupManager>(std::filesystem::path(nullPath), dock, std::move(files), clock);
    stores.workspaceBackups = std::make_unique<WorkspaceBackupStore>(std::filesystem::path(nullPath));
    return stores;
}

AppStores open(const std::filesystem::path& dataDirectory, DockPreferencesBackend& dock,
               BackupManager::FileBackendFactory files, const Clock& clock, Log& log, Notifier* notifier) {
    try {
        return live(dataDirectory, dock, files, clock, log, notifier);
    } catch (const std::exception& error) {
        log.error("app", std::string("live state failed, nothing will be saved: ") + error.what());
        return degraded(dock, std::move(files), clock);
    }
}

} // namespace AppStartup

LaunchRequests LaunchRequests::parse(const std::vector<std::string>& arguments) {
    LaunchRequests requests;
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        const auto& value = arguments[i + 1];
        if (value.starts_with("--")) continue;
        if (arguments[i] == "--page") requests.page = value;
        else if (arguments[i] == "--stack") requests.stack = value;
        else if (arguments[i] == "--widget") requests.widget = value;
    }
    return requests;
}

const std::vector<std::string>& mainWindowPages() {
    // The pages the window's sidebar has, by the names its page script opens them with.
    static const std::vector<std::string> pages = {"general", "workspaces",  "dock",       "themes",
                                                   "widgets", "backups",     "permissions", "onboarding"};
    return pages;
}

} // namespace corvane
