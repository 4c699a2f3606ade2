#include "CorvaneCore/dock/DockSwapper.hpp"

#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockTileFacts.hpp"

namespace corvane {

bool DockSwapper::attempt(const DockSnapshot& target) {
    reloader_.waitUntilSettled();
    writer_.write(target);
    reloader_.reload();
    return !DockChangeDetector::diff(target, reader_.read(DockPlistReader::Detail::layout)).hasChanges();
}

bool DockSwapper::attempt(const DockTiles& target) {
    reloader_.waitUntilSettled();
    writer_.writeTiles(target);
    reloader_.reload();
    return DockTileFacts::identities(reader_.readTiles()) == DockTileFacts::identities(target);
}

void DockSwapper::restore(const DockTiles& target) {
    if (attempt(target) || attempt(target)) return;
    throw DockError::dockReloadFailed(keptPreviousItemsReason);
}

void DockSwapper::swap(const DockSnapshot& target) {
    // While restarting, the Dock sometimes writes the layout it had in memory over ours; a
    // second write after it has settled wins.
    if (attempt(target) || attempt(target)) return;
    throw DockError::dockReloadFailed(keptPreviousItemsReason);
}

} // namespace corvane
