#pragma once

#include "CorvaneCore/bar/Geometry.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// The windows other applications show on screen, as the window server lists them. Main thread.
class WindowList {
public:
    struct Window {
        std::int32_t ownerPid = 0;
        /// The window server's level: 0 for ordinary document windows; menus, panels and
        /// overlays sit above.
        std::int32_t layer = 0;
        /// Top-down global coordinates, from the top left of the screen with the menu bar.
        Rect bounds;

        bool operator==(const Window&) const = default;
    };

    virtual ~WindowList() = default;
    /// The on-screen windows of every process but this one that show anything (not fully
    /// transparent), front to back.
    virtual std::vector<Window> windows() = 0;
    /// The process of the application in front; none when the system names none.
    virtual std::optional<std::int32_t> frontApplication() = 0;
    /// The handler runs on the main thread when another application comes to the front or
    /// another desktop slides in: what covers the screen may have changed. Replaces any earlier
    /// handler.
    virtual void onArrangementChange(std::function<void()> handler) = 0;
};

} // namespace corvane
