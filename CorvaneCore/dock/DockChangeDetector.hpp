#pragma once

#include "CorvaneCore/dock/DockSnapshot.hpp"

#include <string>
#include <vector>

namespace corvane {

/// What differs between two Dock layouts, by tile identity: labels, badges and stored tiles do
/// not count.
namespace DockChangeDetector {

struct Report {
    std::vector<DockItem> added;
    std::vector<DockItem> removed;
    bool reordered = false;

    bool hasChanges() const { return !added.empty() || !removed.empty() || reordered; }
    bool operator==(const Report&) const = default;
};

inline const Report noChange{};

/// `added`: items of `current` with no counterpart in `previous`; `removed`: the reverse;
/// `reordered`: the items both hold are not in the same relative order.
Report diff(const DockSnapshot& previous, const DockSnapshot& current);

/// One key per item of `allItems`, in order: section, the kind of tile the Dock stores, and the
/// identity. Repeated keys (two alike spacers) are numbered so that each stands for one tile.
std::vector<std::string> keys(const DockSnapshot& snapshot);

} // namespace DockChangeDetector

} // namespace corvane
