#pragma once

#include "CorvaneCore/dock/DockSnapshot.hpp"
#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"

#include <filesystem>

namespace corvane {

/// Turns the Dock's tile arrays into workspace items.
class DockPlistReader {
public:
    enum class Section { apps, others };
    /// `full` keeps each tile's dictionary in its item, so that writing the item back restores
    /// the tile as the Dock had it; `layout` leaves it out, for comparing layouts, where
    /// encoding every tile again would be wasted work.
    enum class Detail { full, layout };

    DockPlistReader(DockPreferencesBackend& backend, const Clock& clock) : backend_(backend), clock_(clock) {}

    /// Both sections, stamped with the current time. The first tile that cannot be decoded ends
    /// the read with its `DockError`; no tile is skipped.
    DockSnapshot read(Detail detail = Detail::full) const;
    /// The tiles as the Dock keeps them, undecoded. Throws `DockError`.
    DockTiles readTiles() const { return backend_.readTiles(); }

    /// The tile at `index` (0-based) of `section`. With `full` detail its `tile` blob is the
    /// whole dictionary as a binary property list. A failure names the tile's section, position
    /// and label, and what is wrong with it.
    static DockItem decodeItem(const PlistDictionary& tile, Section section, std::size_t index,
                               const std::filesystem::path& url, Detail detail = Detail::full);

private:
    DockPreferencesBackend& backend_;
    const Clock& clock_;
};

} // namespace corvane
