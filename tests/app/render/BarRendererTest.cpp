#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarRenderer.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "CorvaneCore/looks/RGBColor.hpp"

#include <gtest/gtest.h>

#include <cmath>

using namespace corvane;

namespace {

struct Pixel {
    double red = 0, green = 0, blue = 0, alpha = 0;
};

// Cairo keeps premultiplied alpha; the colour is taken back out of it.
Pixel pixelAt(const BarImage& image, double x, double y) {
    auto px = static_cast<int>(std::floor(x)), py = static_cast<int>(std::floor(y));
    EXPECT_TRUE(px >= 0 && py >= 0 && px < image.width && py < image.height) << x << ", " << y;
    std::uint32_t value = image.pixels[static_cast<std::size_t>(py) * image.width + px];
    double a = ((value >> 24) & 0xff) / 255.0;
    if (a == 0) return {};
    return {((value >> 16) & 0xff) / 255.0 / a, ((value >> 8) & 0xff) / 255.0 / a, (value & 0xff) / 255.0 / a, a};
}

void expectColor(const Pixel& pixel, RGBColor color, double alpha, const char* where) {
    EXPECT_NEAR(pixel.red, color.red, 0.03) << where;
    EXPECT_NEAR(pixel.green, color.green, 0.03) << where;
    EXPECT_NEAR(pixel.blue, color.blue, 0.03) << where;
    EXPECT_NEAR(pixel.alpha, alpha, 0.02) << where;
}

BarScene sceneOf(std::vector<BarTile> tiles, const DockStyle& style = {}) {
    DockAppearance dock;
    return makeBarScene(std::move(tiles), style, style.applied(dock), nullptr);
}

std::vector<BarTile> apps(int count) {
    std::vector<BarTile> tiles(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) tiles[static_cast<std::size_t>(i)].label = std::string(1, static_cast<char>('A' + i));
    return tiles;
}

DockTheme bare() {
    DockTheme theme = DockTheme::named("floating");
    theme.showsReflections = false;
    return theme;
}

DockLens lensAt(double x) {
    DockLens lens;
    lens.follow(x);
    for (int i = 0; i < 100 && !lens.isSettled(); ++i) lens.step(0.1);
    return lens;
}

// The first row from the top, in a column, that holds anything.
int topOfInk(const BarImage& image, double x) {
    for (int y = 0; y < image.height; ++y)
        if (pixelAt(image, x, y).alpha > 0.5) return y;
    return image.height;
}

} // namespace

TEST(BarRenderer, ThemeBackgroundsFillTheBarWithTheirColours) {
    // Between two icons, where nothing but the background is drawn.
    auto probe = [](const char* themeID, double share) {
        DockStyle style;
        style.themeID = themeID;
        auto scene = sceneOf(apps(4), style);
        BarLayout layout(scene);
        auto frame = layout.frame(DockLens{});
        auto image = rasterizeBar(scene, layout, frame, {});
        double x = (frame.tiles[1].resting.maxX() + frame.tiles[2].resting.minX()) / 2;
        return std::pair{pixelAt(image, x, frame.bar.y + share * frame.bar.height), frame.bar};
    };
    auto [frosted, midnightBar] = probe("midnight", 0.6);
    expectColor(frosted, RGBColor::fromHex("#0B1020"), 0.55, "midnight");

    // A vertical gradient: yellow at the top edge, green at the bottom.
    for (double share : {0.2, 0.5, 0.8}) {
        auto [pixel, bar] = probe("canarinho", share);
        double t = (std::floor(bar.y + share * bar.height) + 0.5 - bar.y) / bar.height;
        auto top = RGBColor::fromHex("#FFDF00"), bottom = RGBColor::fromHex("#009C3B");
        RGBColor expected{top.red + (bottom.red - top.red) * t, top.green + (bottom.green - top.green) * t,
                          top.blue + (bottom.blue - top.blue) * t};
        expectColor(pixel, expected, 0.85, "canarinho");
    }

    // No background at all: the view stays clear there.
    auto [clear, floatingBar] = probe("floating", 0.5);
    EXPECT_EQ(clear.alpha, 0);
}

TEST(BarRenderer, TheTileUnderThePointerIsDrawnLargerThanItsNeighbours) {
    for (auto effect : {HoverEffect::magnify, HoverEffect::scale}) {
        DockStyle style;
        style.hoverEffect = effect;
        style.hoverScale = 1.5;
        auto tiles = apps(7);
        for (auto& tile : tiles) tile.label.clear(); // no name label over the icons
        auto scene = sceneOf(tiles, style);
        scene.theme = bare();
        BarLayout layout(scene);
        auto frame = layout.frame(lensAt(layout.centers()[3]));
        auto image = rasterizeBar(scene, layout, frame, {});
        int hovered = topOfInk(image, frame.tiles[3].drawn.midX());
        for (std::size_t i : {1, 2, 4, 5})
            EXPECT_LT(hovered + 4, topOfInk(image, frame.tiles[i].drawn.midX()))
                << rawValue(effect) << " tile " << i;
        // Every tile still stands on the same base line.
        EXPECT_DOUBLE_EQ(frame.tiles[3].drawn.maxY(), frame.tiles[0].drawn.maxY());
    }
}

TEST(BarRenderer, TheIndicatorSitsBetweenARunningAppAndTheScreenEdge) {
    for (auto position : {DockPosition::bottom, DockPosition::left, DockPosition::right}) {
        DockStyle style;
        style.position = position;
        auto tiles = apps(3);
        tiles[1].isRunning = true;
        auto scene = sceneOf(tiles, style);
        scene.indicatorHex = "#FF0000";
        BarLayout layout(scene);
        auto frame = layout.frame(DockLens{});
        auto image = rasterizeBar(scene, layout, frame, {});
        // Halfway through the padding between each icon and the edge the bar stands on.
        double gap = scene.metrics.verticalPadding / 2;
        auto markOf = [&](const Rect& r) {
            switch (position) {
            case DockPosition::left: return Point{r.minX() - gap, r.midY()};
            case DockPosition::right: return Point{r.maxX() + gap, r.midY()};
            case DockPosition::bottom: break;
            }
            return Point{r.midX(), r.maxY() + gap};
        };
        auto running = markOf(frame.tiles[1].resting), idle = markOf(frame.tiles[2].resting);
        expectColor(pixelAt(image, running.x, running.y), {1, 0, 0}, 1, rawValue(position).data());
        auto background = pixelAt(image, idle.x, idle.y);
        EXPECT_FALSE(background.red > 0.9 && background.green < 0.1) << rawValue(position);
    }
}

TEST(BarRenderer, NothingIsDrawnBeyondTheWindowHeight) {
    // The busiest picture: a magnified bar with lights, a snow cap, snowfall and a name label.
    for (auto position : {DockPosition::bottom, DockPosition::left}) {
        DockStyle style;
        style.themeID = "christmas";
        style.hoverEffect = HoverEffect::magnify;
        style.position = position;
        auto scene = sceneOf(apps(6), style);
        BarLayout layout(scene);
        auto frame = layout.frame(lensAt(layout.centers()[2]));
        int across = static_cast<int>(scene.metrics.windowHeight());
        bool bottom = position == DockPosition::bottom;
        int width = static_cast<int>(std::ceil(layout.width())) + (bottom ? 0 : 80);
        int height = static_cast<int>(std::ceil(layout.height())) + (bottom ? 80 : 0);
        for (double seconds : {0.0, 1.7, 9.3}) {
            auto image = rasterizeBar(scene, layout, frame, {.seconds = seconds}, width, height);
            int outside = 0, inside = 0;
            for (int y = 0; y < image.height; ++y)
                for (int x = 0; x < image.width; ++x) {
                    bool beyond = (bottom ? y : x) >= across;
                    bool inked = (image.pixels[static_cast<std::size_t>(y) * image.width + x] >> 24) != 0;
                    (beyond ? outside : inside) += inked;
                }
            EXPECT_EQ(outside, 0) << rawValue(position) << " at " << seconds;
            EXPECT_GT(inside, 1000);
        }
    }
}

TEST(BarRenderer, AnImageIsDrawnInPlaceOfThePlaceholder) {
    auto tiles = apps(2);
    auto blue = std::make_shared<BarImage>(BarImage{48, 48, std::vector<std::uint32_t>(48 * 48, 0xff0000ffU)});
    tiles[1].image = blue;
    auto scene = sceneOf(tiles);
    scene.theme = bare();
    BarLayout layout(scene);
    auto frame = layout.frame(DockLens{});
    auto image = rasterizeBar(scene, layout, frame, {});
    const auto& r = frame.tiles[1].drawn;
    expectColor(pixelAt(image, r.midX(), r.midY()), {0, 0, 1}, 1, "image");
    // The image fills its whole tile, while a placeholder leaves air around its body.
    expectColor(pixelAt(image, r.minX() + 2, r.minY() + 2), {0, 0, 1}, 1, "image corner");
    const auto& placeholder = frame.tiles[0].drawn;
    EXPECT_EQ(pixelAt(image, placeholder.minX() + 2, placeholder.minY() + 2).alpha, 0);
}

TEST(BarLayout, SideBarsHoldTheirEdgeAndOnlyTheHoveredTileGrows) {
    for (auto position : {DockPosition::left, DockPosition::right}) {
        DockStyle style;
        style.position = position;
        style.hoverEffect = HoverEffect::magnify;
        auto scene = sceneOf(apps(5), style);
        BarLayout layout(scene);
        EXPECT_EQ(layout.width(), scene.metrics.windowHeight());
        auto frame = layout.frame(lensAt(layout.centers()[2]));
        ASSERT_EQ(frame.hovered, 2u);
        for (std::size_t i = 0; i < frame.tiles.size(); ++i) {
            const auto& tile = frame.tiles[i];
            EXPECT_EQ(tile.shift, 0);
            EXPECT_DOUBLE_EQ(tile.scale, i == 2 ? 1.1 : 1.0);
            if (position == DockPosition::left)
                EXPECT_DOUBLE_EQ(tile.drawn.minX(), tile.resting.minX());
            else
                EXPECT_DOUBLE_EQ(tile.drawn.maxX(), tile.resting.maxX());
        }
    }
}

TEST(BarLayout, AMagnifiedBarGrowsAwayFromTheEndNearestTheLens) {
    DockStyle style;
    style.hoverEffect = HoverEffect::magnify;
    auto scene = sceneOf(apps(12), style);
    BarLayout layout(scene);
    auto resting = layout.frame(DockLens{});
    auto nearStart = layout.frame(lensAt(layout.centers()[0]));
    EXPECT_NEAR(nearStart.bar.minX(), resting.bar.minX(), 0.5);
    EXPECT_GT(nearStart.bar.maxX(), resting.bar.maxX() + 20);
    auto nearEnd = layout.frame(lensAt(layout.centers()[11]));
    EXPECT_NEAR(nearEnd.bar.maxX(), resting.bar.maxX(), 0.5);
    EXPECT_LT(nearEnd.bar.minX(), resting.bar.minX() - 20);
    // The view leaves room for either.
    EXPECT_GE(nearStart.bar.maxX(), 0);
    EXPECT_LE(nearStart.bar.maxX(), layout.length());
    EXPECT_GE(nearEnd.bar.minX(), 0);
}
