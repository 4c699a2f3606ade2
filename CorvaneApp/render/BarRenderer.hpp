#pragma once

#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarScene.hpp"

#include <cstddef>
#include <functional>
#include <string>

// Cairo's own declaration of its context, so that callers need not include cairo.
typedef struct _cairo cairo_t;

namespace corvane {

/// What a drawing of the bar needs beyond the scene and the frame.
struct BarMoment {
    /// Seconds from any fixed origin; the seasonal decorations move with it.
    double seconds = 0;
    /// Paints a plain desktop behind the bar, for pictures of it; the bar's own view stays clear.
    bool backdrop = false;
};

/// The parts of a drawing, bottom to top, for a compositor that keeps some of them between
/// frames: the bar's chrome (backdrop, glow, background, border), what moves with the tiles
/// (reflections, separators, edge decorations, the icons), and what lies over them (running
/// indicators, particles, the hovered tile's name).
namespace BarLayer {
inline constexpr unsigned chrome = 1, tiles = 2, overlay = 4, all = 7;
}

/// A tile's icon, or its mirror image on the bar's floor.
enum class TileArtRole { icon, reflection };

/// Draws the art of scene tile `index` at `drawn` (view coordinates) into `cr`.
using TileArtPainter = std::function<void(cairo_t* cr, std::size_t index, const Rect& drawn, TileArtRole role)>;

/// Draws the tile's art afresh each time, as `drawBar` does. The scene must outlive the painter.
TileArtPainter directTileArt(const BarScene& scene);
/// Draws the mirror image of one tile's art as the bar's floor shows it.
void drawTileReflection(cairo_t* cr, const BarTile& tile, const Rect& drawn, TrashIcon trashIcon);
/// The chrome moves with time (an animated outline), so it cannot be kept between frames.
bool animatesChrome(const BarScene& scene);

/// Draws the chosen `layers` of one frame, the tiles' art through `paint`.
void drawBarLayers(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
                   const BarMoment& moment, unsigned layers, const TileArtPainter& paint);

/// Draws one frame of the bar into `cr`, whose user space is the layout's view (top-down points,
/// origin at the view's top left corner). Nothing is drawn outside the view, and `cr`'s state is
/// left as it was found. Pure drawing: no files, no clock.
void drawBar(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
             const BarMoment& moment);

/// Draws the frame into a fresh transparent image of `width` by `height` pixels, one pixel per
/// point (0 means the view's own size, rounded up).
BarImage rasterizeBar(const BarScene& scene, const BarLayout& layout, const BarFrame& frame, const BarMoment& moment,
                      int width = 0, int height = 0);

/// One tile's art, as the bar draws it, filling a fresh `size` × `size` image.
BarImage rasterizeTile(const BarTile& tile, int size, TrashIcon trashIcon);

/// The image as PNG bytes.
std::string encodePNG(const BarImage& image);

} // namespace corvane
