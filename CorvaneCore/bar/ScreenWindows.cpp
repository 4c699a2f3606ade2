#include "CorvaneCore/bar/ScreenWindows.hpp"

namespace corvane::ScreenWindows {

namespace {

// Window servers round frames to whole pixels; on a screen of half points a full-screen window
// may miss an edge by that much.
constexpr double kEdgeSlack = 1;

bool spans(const Rect& window, const Rect& screen) {
    return window.minX() <= screen.minX() + kEdgeSlack && window.minY() <= screen.minY() + kEdgeSlack &&
           window.maxX() >= screen.maxX() - kEdgeSlack && window.maxY() >= screen.maxY() - kEdgeSlack;
}

} // namespace

Rect fromWindowServer(const Rect& bounds, double primaryTop) {
    return {bounds.x, primaryTop - bounds.y - bounds.height, bounds.width, bounds.height};
}

Reading read(const Rect& screen, double primaryTop, const std::vector<WindowList::Window>& windows,
             std::optional<std::int32_t> front) {
    Reading reading;
    if (screen.isEmpty()) return reading;
    for (const auto& window : windows) {
        if (window.layer != 0) continue;
        auto frame = fromWindowServer(window.bounds, primaryTop);
        if (frame.intersection(screen).isEmpty()) continue;
        reading.windowFrames.push_back(frame);
        if (front && window.ownerPid == *front && spans(frame, screen)) reading.isFullScreen = true;
    }
    return reading;
}

} // namespace corvane::ScreenWindows
