#pragma once

// Edits made on the own bar (drag to reorder, drop to insert, remove) work on its tiles and come
// back as a new `items` list for the workspace, which the caller stores. An id that does not
// parse, an unknown tile or an index outside the items leaves the items as they are.

#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct Profile;

namespace DockEditing {

/// The index into the workspace's items that a "pinned-", "spacer-", "widget-" or "stack-"
/// tile stands for; none for every other tile.
std::optional<std::size_t> pinnedIndex(const DockTileModel& tile);
std::optional<std::size_t> pinnedIndex(std::string_view tileID);
/// Only tiles that stand for a stored item can be removed.
bool isRemovable(const DockTileModel& tile);

/// The items after dragging tile `tileID` to position `to` of `layout.apps`. The Finder never
/// moves and nothing stays in front of it; a running application dragged in gets pinned.
std::vector<DockItem> itemsAfterMoving(std::string_view tileID, std::ptrdiff_t to,
                                       const WorkspaceDockLayout& layout, const Profile& profile);
/// The items after dropping `entries` before tile `at`; applications already pinned are skipped.
std::vector<DockItem> itemsAfterInserting(const std::vector<AppEntry>& entries, std::ptrdiff_t at,
                                          const WorkspaceDockLayout& layout, const Profile& profile);
/// The items without the one item the tile stands for.
std::vector<DockItem> itemsAfterRemoving(std::string_view tileID, const WorkspaceDockLayout& layout,
                                         const Profile& profile);

/// Brings the placeholders of one stack (their bundle identifiers, in stack order) together,
/// where the first of them stands; fewer than two present leave the list unchanged.
std::vector<DockItem> gathering(const std::vector<std::string>& members, const std::vector<DockItem>& items);

} // namespace DockEditing

} // namespace corvane
