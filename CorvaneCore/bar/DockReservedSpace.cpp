#include "CorvaneCore/bar/DockReservedSpace.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::DockReservedSpace {

namespace {

constexpr double kZoomTolerance = 2;
// Moves this small are left undone: window servers round frames, and chasing the rounding would
// correct the same window forever.
constexpr double kSmallestMove = 1;

double clampedThickness(double thickness, double span) {
    return std::clamp(thickness, 0.0, std::max(span - 1, 0.0));
}

bool isWithin(const Rect& a, const Rect& b, double tolerance) {
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance &&
           std::abs(a.width - b.width) <= tolerance && std::abs(a.height - b.height) <= tolerance;
}

} // namespace

Rect usableFrame(const Rect& visible, const Rect& screen, DockPosition position, double thickness) {
    switch (position) {
    case DockPosition::bottom: {
        double t = clampedThickness(thickness, visible.height);
        double bottom = std::max(visible.minY(), screen.minY() + t);
        return {visible.x, bottom, visible.width, visible.maxY() - bottom};
    }
    case DockPosition::left: {
        double t = clampedThickness(thickness, visible.width);
        double left = std::max(visible.minX(), screen.minX() + t);
        return {left, visible.y, visible.maxX() - left, visible.height};
    }
    case DockPosition::right: {
        double t = clampedThickness(thickness, visible.width);
        double right = std::min(visible.maxX(), screen.maxX() - t);
        return {visible.x, visible.y, right - visible.minX(), visible.height};
    }
    }
    return visible;
}

bool fillsVisible(const Rect& window, const Rect& visible, DockPosition position) {
    if (position == DockPosition::bottom)
        return window.minY() <= visible.minY() + kZoomTolerance &&
               window.maxY() >= visible.maxY() - kZoomTolerance;
    return window.minX() <= visible.minX() + kZoomTolerance &&
           window.maxX() >= visible.maxX() - kZoomTolerance;
}

double intrusion(const Rect& window, const Rect& usable, DockPosition position) {
    switch (position) {
    case DockPosition::bottom:
        return usable.minY() - window.minY();
    case DockPosition::left:
        return usable.minX() - window.minX();
    case DockPosition::right:
        return window.maxX() - usable.maxX();
    }
    return 0;
}

std::optional<Rect> adjusted(const Rect& window, const Rect& usable, DockPosition position, Nudge nudge) {
    if (usable.width <= 0 || usable.height <= 0) return std::nullopt;
    if (window.width < minimumWindowSide || window.height < minimumWindowSide) return std::nullopt;
    double depth = intrusion(window, usable, position);
    if (depth <= 0) return std::nullopt;
    if (nudge == Nudge::drag && depth > magnetSlack) return std::nullopt;

    Rect moved = window;
    switch (position) {
    case DockPosition::bottom:
        moved.y += depth;
        if (moved.maxY() > usable.maxY()) {
            moved.y = usable.y;
            moved.height = usable.height;
        }
        break;
    case DockPosition::left:
        moved.x += depth;
        if (moved.maxX() > usable.maxX()) {
            moved.x = usable.x;
            moved.width = usable.width;
        }
        break;
    case DockPosition::right:
        moved.x -= depth;
        if (moved.minX() < usable.minX()) {
            moved.x = usable.x;
            moved.width = usable.width;
        }
        break;
    }
    if (isWithin(moved, window, kSmallestMove)) return std::nullopt;
    return moved;
}

} // namespace corvane::DockReservedSpace
