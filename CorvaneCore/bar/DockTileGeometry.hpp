#pragma once

#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/dock/DockPosition.hpp"

namespace corvane::DockTileGeometry {

/// The share of a tile's square that an icon's visible body fills.
inline constexpr double iconBodyRatio = 0.805;

/// A tile plus its spacing.
double pitch(double tileSize);
/// From the bar's start to its first tile.
double inset(double tileSize);
/// The centre of the tile slot under `pointer`; slot 0 for anything before the first slot.
double iconCenter(double pointer, double dockStart, double tileSize);
/// A tile's drawn frame from its resting frame (top-down view coordinates): scaled about its
/// centre along the bar, moved by `shift` along the bar, and still touching the screen edge.
Rect drawnFrame(const Rect& resting, double scale, double shift, DockPosition position);

} // namespace corvane::DockTileGeometry
