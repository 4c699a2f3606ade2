#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include <functional>
#include <iosfwd>

namespace corvane {

/// Everything a Dock command works with, opened on demand.
struct DockSession {
    explicit DockSession(ToolContext& context)
        : dock(context.openDock()), dataDirectory(context.dataDirectory()),
          store(StoragePath::profilesFileURL(dataDirectory), &context.services.notifier),
          backups(StoragePath::backupsDirectory(dataDirectory), *dock.backend, dock.files, context.services.clock),
          swapper(DockPlistReader(*dock.backend, context.services.clock), DockPlistWriter(*dock.backend), *dock.reloader),
          switcher(store, swapper, backups, context.services.clock),
          usesOwnDock([&context] { return AppPreferences(*context.openDefaults()).load().usesOwnDock; }) {}

    DockAccess dock;
    std::filesystem::path dataDirectory;
    ProfileStore store;
    BackupManager backups;
    DockSwapper swapper;
    ProfileSwitcher switcher;
    /// While the own Dock bar is in use the macOS Dock stays hidden, so a switch only changes
    /// the active workspace and leaves the Dock's preferences alone, as the application does.
    /// Read when a switch asks, so that the other Dock commands never depend on the settings.
    std::function<bool()> usesOwnDock;
};

/// The tool's one way to switch, and say what happened: with the own Dock bar in use only the
/// active workspace changes; otherwise back up the Dock, put the workspace in, restart and
/// verify. A workspace already active is left alone.
void switchWorkspace(DockSession& session, const Profile& profile, std::ostream& out);

} // namespace corvane
