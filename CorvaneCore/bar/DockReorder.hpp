#pragma once

// The arithmetic of dragging a tile along the bar. `centers` are the tiles' centres along the
// bar's main axis, in points; `from` is the dragged tile's index. Index 0 is the Finder's.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace corvane::DockReorder {

/// Where a drop at `droppedAt` lands: the number of centres before it.
std::size_t dropIndex(const std::vector<double>& centers, double droppedAt);
/// Where the dragged tile would be inserted with the pointer at `pointerX`; never 0 unless the
/// bar holds only one tile.
std::size_t insertionIndex(double pointerX, const std::vector<double>& centers, std::size_t from);
/// The index the dragged tile occupies once its centre is at `draggedCenter`.
std::size_t target(const std::vector<double>& centers, double draggedCenter, std::size_t from);
/// How far the tile at `position` slides while `from` is dragged toward `to`; `to` is none once
/// the drag has left the bar.
double shift(std::size_t position, std::size_t from, std::optional<std::size_t> to, double step);
/// A target index as the insert-before position of a list move.
std::size_t movePosition(std::size_t from, std::size_t to);

/// The list with the element at `from` moved to `to`; unchanged unless both are valid and differ.
template <typename T> std::vector<T> moving(std::vector<T> list, std::size_t from, std::size_t to) {
    if (from >= list.size() || to >= list.size() || from == to) return list;
    auto element = std::move(list[from]);
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(from));
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(to), std::move(element));
    return list;
}

} // namespace corvane::DockReorder
