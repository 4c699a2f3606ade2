#pragma once

#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/platform/WindowList.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane::ScreenWindows {

/// What the windows of other applications do to one screen, in global coordinates (y up).
struct Reading {
    /// A window of the application in front covers the whole screen.
    bool isFullScreen = false;
    /// The ordinary windows that reach onto the screen, front to back.
    std::vector<Rect> windowFrames;

    bool operator==(const Reading&) const = default;
};

/// Window-server bounds (top-down, from the top left of the screen with the menu bar) in the
/// global coordinates the bar works in. `primaryTop` is that screen's maximum y there.
Rect fromWindowServer(const Rect& bounds, double primaryTop);

/// Reads `windows` for the screen at `screen` (y up). Only layer-0 windows count: menus,
/// panels, the menu bar and overlays sit on other layers and come and go with no bearing on the
/// bar. `front` is the process of the application in front.
Reading read(const Rect& screen, double primaryTop, const std::vector<WindowList::Window>& windows,
             std::optional<std::int32_t> front);

} // namespace corvane::ScreenWindows
