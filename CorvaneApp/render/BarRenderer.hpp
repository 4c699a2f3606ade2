#pragma once

#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarScene.hpp"

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

/// Draws one frame of the bar into `cr`, whose user space is the layout's view (top-down points,
/// origin at the view's top left corner). Nothing is drawn outside the view, and `cr`'s state is
/// left as it was found. Pure drawing: no files, no clock.
void drawBar(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
             const BarMoment& moment);

/// Draws the frame into a fresh transparent image of `width` by `height` pixels, one pixel per
/// point (0 means the view's own size, rounded up).
BarImage rasterizeBar(const BarScene& scene, const BarLayout& layout, const BarFrame& frame, const BarMoment& moment,
                      int width = 0, int height = 0);

/// The image as PNG bytes.
std::string encodePNG(const BarImage& image);

} // namespace corvane
