#pragma once

#include "CorvaneCore/support/Uuid.hpp"

#include <vector>

namespace corvane {

/// Several widgets shown in one place of a workspace, in display order.
struct WidgetStack {
    Uuid id;
    std::vector<Uuid> members;

    bool operator==(const WidgetStack&) const = default;
};

} // namespace corvane
