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

    /// One tile. With `full` detail its `tile` blob is the whole dictionary as a binary property
    /// list.
    static DockItem decodeItem(const PlistDictionary& tile, Section section, const std::filesystem::path& url,
                               Detail detail = Detail::full);

private:
    DockPreferencesBackend& backend_;
    const Clock& clock_;
};

} // namespace corvane
