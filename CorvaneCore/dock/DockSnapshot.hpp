#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <vector>

namespace corvane {

/// A Dock layout at one moment.
struct DockSnapshot {
    std::vector<DockItem> apps;
    std::vector<DockItem> others;
    Date capturedAt;

    std::vector<DockItem> allItems() const {
        auto all = apps;
        all.insert(all.end(), others.begin(), others.end());
        return all;
    }

    bool operator==(const DockSnapshot&) const = default;
};

} // namespace corvane
