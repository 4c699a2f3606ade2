#include "CorvaneCore/bar/DockTitleBarZoom.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::DockTitleBarZoom {

Action action(std::optional<std::string_view> preference) {
    if (preference == "Minimize") return Action::minimize;
    if (preference == "None") return Action::none;
    return Action::fill;
}

bool isControlRole(std::string_view role) {
    return std::find(controlRoles.begin(), controlRoles.end(), role) != controlRoles.end();
}

double titleBarDepth(const Rect& window, const std::optional<Rect>& closeButton) {
    if (!closeButton) return 0;
    return std::max(2 * (closeButton->midY() - window.minY()), 0.0);
}

bool isTitleBarHit(Point point, const Rect& window, const std::optional<Rect>& closeButton,
                   std::optional<std::string_view> role) {
    if (role && isControlRole(*role)) return false;
    double depth = titleBarDepth(window, closeButton);
    if (depth <= 0) return false;
    return point.x >= window.minX() && point.x <= window.maxX() && point.y >= window.minY() &&
           point.y <= window.minY() + depth;
}

bool isNear(const Rect& a, const Rect& b) {
    constexpr double tolerance = 2;
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance &&
           std::abs(a.width - b.width) <= tolerance && std::abs(a.height - b.height) <= tolerance;
}

std::optional<Rect> target(const Rect& current, const Rect& usable, const std::optional<Rect>& restore) {
    if (!isNear(current, usable)) return usable;
    if (!restore || isNear(*restore, usable)) return std::nullopt;
    return restore;
}

} // namespace corvane::DockTitleBarZoom
