// The compositor against the renderer it stands in for: the same pictures, frame after frame,
// from kept tile images and partial repaints.

#include "CorvaneApp/render/BarCompositor.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace corvane;

namespace {

BarScene scene(DockPosition position = DockPosition::bottom, std::string label = "App 3", int apps = 9,
               std::string clock = "10:41") {
    std::vector<BarTile> tiles;
    for (int i = 0; i < apps; ++i)
        tiles.push_back({.label = i == 3 ? label : "App " + std::to_string(i), .isRunning = i % 2 == 0});
    tiles.push_back({.kind = BarTile::Kind::widget, .label = "Clock", .widgetKind = WidgetKind::clock, .caption = clock});
    tiles.push_back({.kind = BarTile::Kind::separator});
    tiles.push_back({.kind = BarTile::Kind::folder, .label = "Projects"});
    tiles.push_back({.kind = BarTile::Kind::trash, .label = "Trash"});
    DockStyle style;
    style.hoverEffect = HoverEffect::magnify;
    style.themeID = "rocket"; // reflections and a glow: the most the chrome draws
    style.position = position;
    return makeBarScene(std::move(tiles), style, style.applied(DockAppearance::systemDefault()), nullptr);
}

/// How far apart two pictures are: the mean difference of a channel (0–255), and the share of
/// pixels with a channel more than a quarter off.
std::pair<double, double> difference(const BarImage& a, const BarImage& b) {
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    double total = 0;
    std::size_t far = 0;
    for (std::size_t i = 0; i < a.pixels.size() && i < b.pixels.size(); ++i) {
        int worst = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            int d = std::abs(static_cast<int>((a.pixels[i] >> shift) & 0xff) - static_cast<int>((b.pixels[i] >> shift) & 0xff));
            total += d;
            worst = std::max(worst, d);
        }
        if (worst > 64) ++far;
    }
    auto count = static_cast<double>(a.pixels.size());
    return {total / (4 * count), static_cast<double>(far) / count};
}

void expectAlike(const BarImage& composited, const BarImage& drawn, const std::string& where) {
    auto [mean, far] = difference(composited, drawn);
    // Kept images sit on whole pixels where the renderer draws between them: edges differ a little.
    EXPECT_LT(mean, 1.0) << where;
    EXPECT_LT(far, 0.01) << where;
}

} // namespace

TEST(BarCompositor, FramesOfAMovingLensMatchTheRendererAndAStillOneRepaintsNothing) {
    for (auto position : {DockPosition::bottom, DockPosition::left}) {
        auto bar = scene(position);
        BarLayout layout(bar);
        BarCompositor compositor(1, 64 << 10); // small enough that images are thrown away and made again
        DockLens lens;
        BarFrame frame;
        const auto& centers = layout.centers();
        int frames = 0;
        for (double along = centers.front(); along <= centers.back(); along += 7, ++frames) {
            lens.follow(along);
            lens.step(1.0 / 60);
            layout.frame(lens, frame);
            compositor.compose(bar, layout, frame);
            if (frames % 9 == 0)
                expectAlike(compositor.image(), rasterizeBar(bar, layout, frame, {}), "frame " + std::to_string(frames));
        }
        EXPECT_LE(compositor.cachedBytes(), std::size_t{64} << 10) << "the budget holds";

        for (int i = 0; i < 200 && !lens.isSettled(); ++i) lens.step(1.0 / 60);
        layout.frame(lens, frame);
        compositor.compose(bar, layout, frame);
        auto misses = compositor.cacheMisses();
        EXPECT_EQ(compositor.compose(bar, layout, frame), std::nullopt) << "nothing moved";
        EXPECT_EQ(compositor.cacheMisses(), misses);

        // Leaving the bar moves every tile home again: the whole picture is the renderer's.
        lens.follow(std::nullopt);
        for (int i = 0; i < 400 && !lens.isSettled(); ++i) lens.step(1.0 / 60);
        layout.frame(lens, frame);
        compositor.compose(bar, layout, frame);
        expectAlike(compositor.image(), rasterizeBar(bar, layout, frame, {}), "at rest");
    }
}

TEST(BarCompositor, ANewSceneRepaintsEverythingAndOnlyTheHoveredNameChangesAStretch) {
    auto bar = scene();
    BarLayout layout(bar);
    BarCompositor compositor(2);
    DockLens lens;
    auto rest = layout.frame(lens);
    auto first = compositor.compose(bar, layout, rest);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->width, layout.width());
    EXPECT_EQ(compositor.pixelWidth(), static_cast<int>(std::ceil(layout.width() * 2)));

    auto hovered = rest;
    hovered.hovered = 4;
    auto label = compositor.compose(bar, layout, hovered);
    ASSERT_TRUE(label);
    EXPECT_LT(label->width, layout.width());
    EXPECT_GT(label->maxX(), rest.tiles[4].drawn.maxX());

    auto renamed = scene(DockPosition::bottom, "Renamed", 10);
    BarLayout longer(renamed);
    auto longerRest = longer.frame(lens);
    auto again = compositor.compose(renamed, longer, longerRest);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->width, longer.width());
    BarCompositor single(2);
    single.compose(renamed, longer, longerRest);
    EXPECT_EQ(compositor.image().pixels, single.image().pixels) << "no image of the old tiles is reused";
    EXPECT_THROW(compositor.compose(renamed, longer, BarFrame{}), std::invalid_argument);
}

TEST(BarCompositor, ALiveTileWithNewTextRepaintsItsOwnStretchOnly) {
    auto bar = scene();
    BarLayout layout(bar);
    BarCompositor compositor(1);
    auto rest = layout.frame(DockLens{});
    compositor.compose(bar, layout, rest);
    auto ticked = scene(DockPosition::bottom, "App 3", 9, "10:42");
    BarLayout same(ticked);
    ASSERT_EQ(same.width(), layout.width());
    auto changed = compositor.compose(ticked, same, rest);
    ASSERT_TRUE(changed);
    const auto& clock = rest.tiles[9].drawn;
    EXPECT_LT(changed->width, layout.width() / 4);
    EXPECT_LE(changed->minX(), clock.minX());
    EXPECT_GE(changed->maxX(), clock.maxX());
    expectAlike(compositor.image(), rasterizeBar(ticked, same, rest, {}), "after the tick");
    EXPECT_EQ(compositor.compose(ticked, same, rest), std::nullopt) << "the same text again draws nothing";
}

TEST(BarCompositor, MovedToADenserScreenItDrawsWhatAFreshOneDrawsThere) {
    auto bar = scene();
    BarLayout layout(bar);
    auto rest = layout.frame(DockLens{});
    BarCompositor moved(1);
    moved.compose(bar, layout, rest);
    moved.setScale(1);
    EXPECT_EQ(moved.compose(bar, layout, rest), std::nullopt) << "the same density keeps the picture";

    moved.setScale(2);
    auto changed = moved.compose(bar, layout, rest);
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->width, layout.width());
    BarCompositor fresh(2);
    fresh.compose(bar, layout, rest);
    EXPECT_EQ(moved.pixelWidth(), fresh.pixelWidth());
    EXPECT_EQ(moved.image().pixels, fresh.image().pixels);
}
