#pragma once

#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/dock/DockPosition.hpp"

#include <optional>

namespace corvane::DockReservedSpace {

/// Why a window's frame changed.
enum class Nudge {
    /// Its application placed or resized it.
    placement,
    /// The user is dragging it.
    drag,
};

/// A dragged window this far into the reserved strip snaps back out; deeper, the user meant it.
inline constexpr double magnetSlack = 28;
/// Narrower or lower windows (panels, palettes) are left alone.
inline constexpr double minimumWindowSide = 80;

/// The part of `visible` (the screen without menu bar and system Dock) that windows may use
/// while the bar reserves `thickness` points at its edge. The strip is measured from the
/// physical screen edge, so a system Dock already there is not counted twice.
Rect usableFrame(const Rect& visible, const Rect& screen, DockPosition position, double thickness);
/// The window spans the visible frame across the bar's axis: it was zoomed to fill the screen.
bool fillsVisible(const Rect& window, const Rect& visible, DockPosition position);
/// How far the window reaches into the reserved strip; positive when it intrudes.
double intrusion(const Rect& window, const Rect& usable, DockPosition position);
/// Where to move the window so it clears the strip; none when it should stay.
std::optional<Rect> adjusted(const Rect& window, const Rect& usable, DockPosition position, Nudge nudge);

} // namespace corvane::DockReservedSpace
