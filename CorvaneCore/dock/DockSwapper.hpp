#pragma once

#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/platform/DockReloader.hpp"

namespace corvane {

/// Puts a layout into the Dock and confirms that the Dock shows it. Blocks its caller for up to
/// two restarts of the Dock.
class DockSwapper {
public:
    DockSwapper(DockPlistReader reader, DockPlistWriter writer, DockReloader& reloader)
        : reader_(reader), writer_(writer), reloader_(reloader) {}

    /// The Dock's current layout. Throws `DockError`.
    DockSnapshot snapshot() const { return reader_.read(); }
    /// The Dock's tiles as it keeps them, undecoded. Throws `DockError`.
    DockTiles tiles() const { return reader_.readTiles(); }

    /// Writes `target`, restarts the Dock and reads it back; tries once more when the Dock came
    /// back with other items. Throws `DockError`; a failed attempt is not undone.
    void swap(const DockSnapshot& target);
    /// The same for tiles kept as the Dock had them (a backup): written back less "GUID" and
    /// verified by each tile's section, type and path, URL or label, never decoded, so a tile
    /// this system cannot read still goes back where it was.
    void restore(const DockTiles& target);

    static constexpr const char* keptPreviousItemsReason = "the Dock kept its previous items; try again";

private:
    bool attempt(const DockSnapshot& target);
    bool attempt(const DockTiles& target);

    DockPlistReader reader_;
    DockPlistWriter writer_;
    DockReloader& reloader_;
};

} // namespace corvane
