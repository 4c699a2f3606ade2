#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"

namespace corvane {

const Profile& ProfileSwitcher::lookUp(const Uuid& id) const {
    auto profile = store_.profile(id);
    if (!profile) throw DockError::profileNotFound(id.string());
    return *profile;
}

void ProfileSwitcher::backUpAndSwap(const DockSnapshot& target) {
    backup_.snapshot();
    swapper_.swap(target);
    try {
        backup_.prune(keptDockBackups);
    } catch (const std::exception&) {
        // An old backup that will not go away is no reason to fail a switch that worked.
    }
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
    auto file = backup_.open(backup);
    auto target = DockPlistReader(*file, clock_).read();
    backUpAndSwap(target);
}

} // namespace corvane
