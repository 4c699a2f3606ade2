#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockError.hpp"

namespace corvane {

const Profile& ProfileSwitcher::lookUp(const Uuid& id) const {
    auto profile = store_.profile(id);
    if (!profile) throw DockError::profileNotFound(id.string());
    return *profile;
}

// The Dock is only ever overwritten once the backup just taken has been read back as the very
// tiles the Dock holds: a backup that undo could not put back would lose the person's Dock.
void ProfileSwitcher::takeRestorableBackup() {
    auto file = backup_.snapshot();
    auto refuse = [&](const std::string& why) {
        return DockError::plistReadFailed(file.string(), "the backup just taken " + why + ", so the Dock was left unchanged");
    };
    DockTiles kept;
    try {
        kept = backup_.tiles(file);
    } catch (const DockError& error) {
        throw refuse("cannot be read back (" + (error.underlying.empty() ? error.payload : error.underlying) + ")");
    }
    if (kept != swapper_.tiles()) throw refuse("does not hold the Dock's tiles");
}

void ProfileSwitcher::pruneBackups() {
    try {
        backup_.prune(keptDockBackups);
    } catch (const std::exception&) {
        // An old backup that will not go away is no reason to fail a switch that worked.
    }
}

void ProfileSwitcher::backUpAndSwap(const DockSnapshot& target) {
    takeRestorableBackup();
    swapper_.swap(target);
    pruneBackups();
}

void ProfileSwitcher::notify(const Uuid& id) {
    if (!workspaceObserver) return;
    if (auto profile = store_.profile(id)) workspaceObserver->workspaceDidSwitch(*profile, store_.file().profiles);
}

void ProfileSwitcher::switchTo(const Uuid& profileID) {
    const auto target = lookUp(profileID);
    if (store_.file().activeProfileId == profileID) return;
    backUpAndSwap(target.snapshot(clock_.now()));
    store_.setActive(profileID);
    notify(profileID);
}

void ProfileSwitcher::activate(const Uuid& profileID) {
    lookUp(profileID);
    store_.setActive(profileID);
    notify(profileID);
}

bool ProfileSwitcher::applyActiveProfile() {
    auto active = store_.file().activeProfileId;
    if (!active) return false;
    auto target = lookUp(*active).snapshot(clock_.now());
    if (!DockChangeDetector::diff(swapper_.snapshot(), target).hasChanges()) return false;
    backUpAndSwap(target);
    return true;
}

bool ProfileSwitcher::captureCurrentDock() {
    auto active = store_.file().activeProfileId;
    if (!active) return false;
    auto profile = lookUp(*active);
    auto current = swapper_.snapshot();
    if (!DockChangeDetector::diff(profile.snapshot(clock_.now()), current).hasChanges()) return false;
    profile.items = current.apps;
    profile.others = current.others;
    store_.update(profile);
    return true;
}

std::filesystem::path ProfileSwitcher::undoLastChange() {
    auto backups = backup_.listBackups();
    if (backups.empty()) throw DockError::noBackupAvailable();
    restoreDockBackup(backups.front());
    return backups.front();
}

void ProfileSwitcher::restoreDockBackup(const std::filesystem::path& backup) {
    auto target = backup_.tiles(backup);
    takeRestorableBackup();
    swapper_.restore(target);
    pruneBackups();
}

} // namespace corvane
