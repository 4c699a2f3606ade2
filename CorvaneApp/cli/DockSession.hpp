#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include <iosfwd>

namespace corvane {

/// Everything a Dock command works with, opened on demand.
struct DockSession {
    explicit DockSession(ToolContext& context)
        : dock(context.openDock()), dataDirectory(context.dataDirectory()),
          store(StoragePath::profilesFileURL(dataDirectory), &context.services.notifier),
          backups(StoragePath::backupsDirectory(dataDirectory), *dock.backend, dock.files, context.services.clock),
          swapper(DockPlistReader(*dock.backend, context.services.clock), DockPlistWriter(*dock.backend), *dock.reloader),
          switcher(store, swapper, backups, context.services.clock) {}

    DockAccess dock;
    std::filesystem::path dataDirectory;
    ProfileStore store;
    BackupManager backups;
    DockSwapper swapper;
    ProfileSwitcher switcher;
};

/// The tool's one way to switch: back up the Dock, put the workspace in, restart and verify,
/// and say what happened. A workspace already active is left alone.
void switchWorkspace(DockSession& session, const Profile& profile, std::ostream& out);

} // namespace corvane
