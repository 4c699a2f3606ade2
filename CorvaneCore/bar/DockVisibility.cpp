#include "CorvaneCore/bar/DockVisibility.hpp"

#include <algorithm>

namespace corvane::DockVisibility {

namespace {

// The band at the screen edge that calls a hidden bar.
constexpr double kTriggerBand = 2;

bool isAtEdge(const Input& input) {
    const auto& screen = input.screenFrame;
    const auto& p = input.pointer;
    bool alongX = p.x >= screen.minX() && p.x <= screen.maxX();
    bool alongY = p.y >= screen.minY() && p.y <= screen.maxY();
    switch (input.position) {
    case DockPosition::bottom:
        return p.y <= screen.minY() + kTriggerBand && alongX;
    case DockPosition::left:
        return p.x <= screen.minX() + kTriggerBand && alongY;
    case DockPosition::right:
        return p.x >= screen.maxX() - kTriggerBand && alongY;
    }
    return false;
}

} // namespace

bool covers(const Rect& window, const Rect& bar) {
    if (bar.isEmpty()) return false;
    auto shared = window.intersection(bar);
    if (shared.isEmpty()) return false;
    return shared.height >= bar.height / 2 && shared.width >= bar.width / 4;
}

bool autohides(const Input& input) {
    if (input.autohidesByPreference || input.isFullScreen) return true;
    return input.hidesWhenCovered &&
           std::any_of(input.windowFrames.begin(), input.windowFrames.end(),
                       [&](const Rect& window) { return covers(window, input.barFrame); });
}

Decision decide(const Input& input) {
    if (!autohides(input)) return Decision::show;
    // The bar stays while the pointer is on it, even where it no longer touches the edge band.
    if (input.isShown && input.barFrame.contains(input.pointer)) return Decision::show;
    if (isAtEdge(input)) return input.isShown ? Decision::show : Decision::reveal;
    return Decision::hide;
}

} // namespace corvane::DockVisibility
