#pragma once

// The pictures inside the bar's tiles. Included from .cpp files only.

#include "CorvaneApp/render/BarScene.hpp"
#include "CorvaneCore/bar/Geometry.hpp"

#include <cairo.h>

#include <string>
#include <string_view>

namespace corvane::paint {

/// Draws the tile's icon, or a widget's card, filling `frame` (view coordinates, upright).
void drawTileArt(cairo_t* cr, const BarTile& tile, const Rect& frame, TrashIcon trashIcon);

/// The first letter or digit of a label, upper-cased; "?" when it has none.
std::string initialOf(std::string_view label);

} // namespace corvane::paint
