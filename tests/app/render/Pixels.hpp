#pragma once

// Reading the renderer's pictures back in tests.

#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarRenderer.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "CorvaneCore/looks/RGBColor.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane {

struct Pixel {
    double red = 0, green = 0, blue = 0, alpha = 0;
};

// Cairo keeps premultiplied alpha; the colour is taken back out of it.
inline Pixel pixelAt(const BarImage& image, double x, double y) {
    auto px = static_cast<int>(std::floor(x)), py = static_cast<int>(std::floor(y));
    EXPECT_TRUE(px >= 0 && py >= 0 && px < image.width && py < image.height) << x << ", " << y;
    std::uint32_t value = image.pixels[static_cast<std::size_t>(py) * image.width + px];
    double a = ((value >> 24) & 0xff) / 255.0;
    if (a == 0) return {};
    return {((value >> 16) & 0xff) / 255.0 / a, ((value >> 8) & 0xff) / 255.0 / a, (value & 0xff) / 255.0 / a, a};
}

inline void expectColor(const Pixel& pixel, RGBColor color, double alpha, const char* where,
                        double tolerance = 0.03) {
    EXPECT_NEAR(pixel.red, color.red, tolerance) << where;
    EXPECT_NEAR(pixel.green, color.green, tolerance) << where;
    EXPECT_NEAR(pixel.blue, color.blue, tolerance) << where;
    EXPECT_NEAR(pixel.alpha, alpha, 0.02) << where;
}

inline BarScene sceneOf(std::vector<BarTile> tiles, const DockStyle& style = {}) {
    return makeBarScene(std::move(tiles), style, style.applied(DockAppearance{}), nullptr);
}

/// A scene laid out and drawn, the lens at `lens`.
struct Drawing {
    explicit Drawing(BarScene drawnScene, const DockLens& lens = {}, double seconds = 0)
        : scene(std::move(drawnScene)), layout(scene), frame(layout.frame(lens)),
          image(rasterizeBar(scene, layout, frame, {.seconds = seconds})) {}

    BarScene scene;
    BarLayout layout;
    BarFrame frame;
    BarImage image;
};

} // namespace corvane
