#include "CorvaneCore/dock/DockPosition.hpp"

#include "CorvaneCore/support/RawValue.hpp"

namespace corvane {

std::string_view rawValue(DockPosition position) {
    switch (position) {
    case DockPosition::bottom: return "bottom";
    case DockPosition::left: return "left";
    case DockPosition::right: return "right";
    }
    return "bottom";
}

std::optional<DockPosition> dockPositionFromRaw(std::string_view raw) {
    return caseWithRawValue({DockPosition::bottom, DockPosition::left, DockPosition::right}, raw);
}

DockPosition dockPositionFromNativeOrientation(std::optional<std::string_view> orientation) {
    if (orientation == "left") return DockPosition::left;
    if (orientation == "right") return DockPosition::right;
    return DockPosition::bottom;
}

} // namespace corvane
