#pragma once

#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/dock/DockPosition.hpp"

#include <vector>

namespace corvane::DockVisibility {

/// Everything the decision looks at, in global screen coordinates (y up).
struct Input {
    /// The whole screen that holds the bar.
    Rect screenFrame;
    /// The bar's frame while shown.
    Rect barFrame;
    /// Other applications' visible windows on that screen.
    std::vector<Rect> windowFrames;
    bool hidesWhenCovered = false;
    /// The front application is full screen on that screen.
    bool isFullScreen = false;
    Point pointer;
    /// The macOS Dock's own automatic hiding preference.
    bool autohidesByPreference = false;
    bool isShown = true;
    DockPosition position = DockPosition::bottom;

    bool operator==(const Input&) const = default;
};

/// `reveal` asks the caller to look again after the reveal delay, showing the bar only if the
/// pointer is still at the edge then.
enum class Decision { show, reveal, hide };

/// Whether a window hides enough of the bar to count: at least half its height and a quarter of
/// its width, so a window that grazes the bar does not send it away.
bool covers(const Rect& window, const Rect& bar);
bool autohides(const Input& input);
Decision decide(const Input& input);

} // namespace corvane::DockVisibility
