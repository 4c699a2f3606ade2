#pragma once

#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/workspace/Profile.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <filesystem>
#include <vector>

namespace corvane {

/// Told after every switch, to hide or bring back running applications.
class WorkspaceSwitchObserver {
public:
    virtual ~WorkspaceSwitchObserver() = default;
    /// Main thread.
    virtual void workspaceDidSwitch(const Profile& to, const std::vector<Profile>& profiles) = 0;
};

/// The one place where the active workspace changes. Its callers are on the main thread; the
/// Dock operations block for the length of a swap.
class ProfileSwitcher {
public:
    static constexpr int keptDockBackups = 20;

    ProfileSwitcher(ProfileStore& store, DockSwapper& swapper, BackupManager& backup, const Clock& clock)
        : store_(store), swapper_(swapper), backup_(backup), clock_(clock) {}

    WorkspaceSwitchObserver* workspaceObserver = nullptr;

    /// Backs up the Dock, swaps the workspace in and makes it active; nothing at all when it is
    /// active already. A failed swap leaves the old workspace active.
    void switchTo(const Uuid& profileID);
    /// Makes the workspace active without touching the Dock.
    void activate(const Uuid& profileID);
    /// Puts the active workspace into the Dock when the Dock differs; true when it did.
    bool applyActiveProfile();
    /// Copies the Dock's tiles into the active workspace; true when something changed.
    bool captureCurrentDock();
    /// Puts the newest Dock backup back (backing up the present Dock first). Returns the backup.
    std::filesystem::path undoLastChange();
    /// Puts a given Dock backup back, as undo does with the newest: its tiles exactly as kept,
    /// less "GUID". A file that is not a Dock backup is refused before anything is written.
    void restoreDockBackup(const std::filesystem::path& backup);

private:
    const Profile& lookUp(const Uuid& id) const;
    void backUpAndSwap(const DockSnapshot& target);
    void takeRestorableBackup();
    void pruneBackups();
    void notify(const Uuid& id);

    ProfileStore& store_;
    DockSwapper& swapper_;
    BackupManager& backup_;
    const Clock& clock_;
};

} // namespace corvane
