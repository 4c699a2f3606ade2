#pragma once

#include "CorvaneCore/dock/DockSnapshot.hpp"
#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"

#include <optional>
#include <string_view>

namespace corvane {

/// Turns workspace items back into the Dock's tile arrays. An item read from the Dock carries
/// its original tile, so every key the Dock stored (except "GUID") is written back unchanged.
class DockPlistWriter {
public:
    explicit DockPlistWriter(DockPreferencesBackend& backend) : backend_(backend) {}

    /// Encodes every item first, then replaces both arrays at once. Throws `DockError`.
    void write(const DockSnapshot& snapshot) const;

    /// Puts tiles back as they were kept, less their "GUID" (the Dock assigns fresh ones).
    /// Throws `DockError`.
    void writeTiles(DockTiles tiles) const;

    static DockTiles encode(const DockSnapshot& snapshot);
    static PlistDictionary encodeItem(const DockItem& item);

    /// The stored tile to start from: the blob parsed, when it is a dictionary whose file URL (or,
    /// lacking one, its bookmark) leads to `path`, without its "GUID"; otherwise an empty tile, so an edited path starts clean.
    static PlistDictionary originalTile(const std::optional<Bytes>& tile, std::string_view path);

private:
    DockPreferencesBackend& backend_;
};

} // namespace corvane
