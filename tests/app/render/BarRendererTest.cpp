#include "app/render/Pixels.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

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
        Drawing bar(sceneOf(apps(4), style));
        const auto& frame = bar.frame;
        double x = (frame.tiles[1].resting.maxX() + frame.tiles[2].resting.minX()) / 2;
        return std::pair{pixelAt(bar.image, x, frame.bar.y + share * frame.bar.height), frame.bar};
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
        Drawing bar(scene, lensAt(BarLayout(scene).centers()[3]));
        int hovered = topOfInk(bar.image, bar.frame.tiles[3].drawn.midX());
        for (std::size_t i : {1, 2, 4, 5})
            EXPECT_LT(hovered + 4, topOfInk(bar.image, bar.frame.tiles[i].drawn.midX()))
                << rawValue(effect) << " tile " << i;
        // Every tile still stands on the same base line.
        EXPECT_DOUBLE_EQ(bar.frame.tiles[3].drawn.maxY(), bar.frame.tiles[0].drawn.maxY());
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
        Drawing bar(scene);
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
        auto running = markOf(bar.frame.tiles[1].resting), idle = markOf(bar.frame.tiles[2].resting);
        expectColor(pixelAt(bar.image, running.x, running.y), {1, 0, 0}, 1, rawValue(position).data());
        auto background = pixelAt(bar.image, idle.x, idle.y);
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
    Drawing bar(scene);
    const auto& r = bar.frame.tiles[1].drawn;
    expectColor(pixelAt(bar.image, r.midX(), r.midY()), {0, 0, 1}, 1, "image");
    // The image fills its whole tile, while a placeholder leaves air around its body.
    expectColor(pixelAt(bar.image, r.minX() + 2, r.minY() + 2), {0, 0, 1}, 1, "image corner");
    const auto& placeholder = bar.frame.tiles[0].drawn;
    EXPECT_EQ(pixelAt(bar.image, placeholder.minX() + 2, placeholder.minY() + 2).alpha, 0);
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

namespace {

int differingPixels(const BarImage& a, const BarImage& b) {
    EXPECT_EQ(a.pixels.size(), b.pixels.size());
    int count = 0;
    for (std::size_t i = 0; i < std::min(a.pixels.size(), b.pixels.size()); ++i) count += a.pixels[i] != b.pixels[i];
    return count;
}

BarImage draw(const BarScene& scene, double seconds = 0) { return Drawing(scene, {}, seconds).image; }

BarScene themed(const std::string& id, const DockThemeCustomization& customization = {}) {
    DockStyle style;
    style.themeID = id;
    if (!customization.isEmpty()) style.themeCustomizations[id] = customization;
    return sceneOf(apps(6), style);
}

} // namespace

TEST(BarRenderer, ThemeCustomizationsReachTheDrawing) {
    // Each override, when it takes a part away, changes the picture; turning a part off that the
    // theme does not have changes nothing.
    struct Case {
        std::string theme;
        DockThemeCustomization off;
        bool changes;
    };
    std::vector<Case> cases = {
        {"christmas", {.showsLights = false}, true},
        {"christmas", {.showsSnowCap = false}, true},
        {"christmas", {.showsSnowfall = false}, true},
        {"halloween", {.showsBorder = false}, true},
        {"neon", {.showsGlow = false}, true},
        {"rocket", {.showsReflections = false}, true},
        {"paper", {.showsGlow = false}, false},
        {"liquid", {.showsSnowfall = false}, false},
    };
    for (const auto& c : cases) {
        int changed = differingPixels(draw(themed(c.theme)), draw(themed(c.theme, c.off)));
        if (c.changes)
            EXPECT_GT(changed, 20) << c.theme;
        else
            EXPECT_EQ(changed, 0) << c.theme;
    }

    // The glow lies outside the bar, in its colour.
    Drawing neon(themed("neon"));
    const auto& frame = neon.frame;
    auto halo = pixelAt(neon.image, frame.bar.midX() + 0.5, frame.bar.minY() - 3);
    EXPECT_GT(halo.alpha, 0.05);
    EXPECT_GT(halo.blue, 0.8);
    EXPECT_LT(halo.red, 0.2);
    EXPECT_EQ(pixelAt(draw(themed("neon", {.showsGlow = false})), frame.bar.midX() + 0.5, frame.bar.minY() - 3).alpha,
              0);
}

TEST(BarRenderer, OnlyAnimatedDecorationsChangeWithTime) {
    for (const char* id : {"christmas", "halloween", "haunted-night", "candy-corn", "candy-cane"})
        EXPECT_GT(differingPixels(draw(themed(id), 0), draw(themed(id), 1.5)), 20) << id;
    for (const char* id : {"native", "rocket", "floating"})
        EXPECT_EQ(differingPixels(draw(themed(id), 0), draw(themed(id), 1.5)), 0) << id;
}

TEST(BarRenderer, TilesShowTheirOwnMarks) {
    std::vector<BarTile> tiles = {
        {.kind = BarTile::Kind::folder, .label = "Projects", .badgeColorHex = "#22C55E", .badgeText = "P"},
        {.kind = BarTile::Kind::separator},
        {.kind = BarTile::Kind::trash, .label = "Trash"},
        {.kind = BarTile::Kind::trash, .label = "Trash", .isFull = true},
    };
    auto scene = sceneOf(tiles);
    scene.theme = DockTheme::named("paper");
    scene.theme.separatorHex = "#0000FF";
    Drawing bar(scene);
    const auto& frame = bar.frame;
    const auto& image = bar.image;

    // The folder's badge sits at its lower right in the badge colour, around a white letter.
    const auto& folder = frame.tiles[0].drawn;
    double body = folder.width * 0.805;
    double badgeX = folder.midX() + body * 0.30, badgeY = folder.midY() + body * 0.28;
    auto badge = pixelAt(image, badgeX + body * 0.1, badgeY);
    // Shaded from a lighter top, so only near the colour.
    expectColor(badge, RGBColor::fromHex("#22C55E"), 1, "badge", 0.08);

    // The separator is drawn across the bar in the theme's separator colour.
    const auto& separator = frame.tiles[1].drawn;
    auto line = pixelAt(image, separator.midX(), frame.bar.midY());
    auto beside = pixelAt(image, separator.minX() + 1, frame.bar.midY());
    EXPECT_GT(line.blue, line.red + 0.5);
    EXPECT_NEAR(beside.blue, beside.red, 0.05);

    // A full Trash shows paper above its rim; an empty one shows the bar there.
    const auto &empty = frame.tiles[2].drawn, &full = frame.tiles[3].drawn;
    int differing = 0;
    for (double dy = 0; dy < empty.height * 0.2; ++dy)
        for (double dx = 0; dx < empty.width; ++dx) {
            auto a = pixelAt(image, empty.minX() + dx, empty.minY() + dy);
            auto b = pixelAt(image, full.minX() + dx, full.minY() + dy);
            differing += std::abs(a.red - b.red) + std::abs(a.blue - b.blue) > 0.1;
        }
    EXPECT_GT(differing, 20);
}

TEST(BarRenderer, TheHoveredTileIsNamedAboveIt) {
    auto scene = sceneOf(apps(5));
    scene.theme = bare();
    BarLayout layout(scene);
    auto frame = layout.frame(lensAt(layout.centers()[2]));
    auto named = rasterizeBar(scene, layout, frame, {});
    scene.tiles[2].label.clear();
    auto unnamed = rasterizeBar(scene, layout, frame, {});
    const auto& tile = frame.tiles[2].drawn;
    int labelInk = 0;
    for (double y = 0; y < tile.minY() - 2; ++y)
        for (double x = tile.minX(); x < tile.maxX(); ++x)
            labelInk += pixelAt(named, x, y).alpha > 0.5 && pixelAt(unnamed, x, y).alpha == 0;
    EXPECT_GT(labelInk, 100);
    EXPECT_GE(topOfInk(unnamed, tile.midX()), static_cast<int>(tile.minY()));
}

TEST(BarLayout, TilesTakeTheirLengthAlongTheBar) {
    DockAppearance dock;
    auto metrics = dock.metrics();
    EXPECT_EQ(tileLength({.kind = BarTile::Kind::app}, metrics), 48);
    EXPECT_EQ(tileLength({.kind = BarTile::Kind::spacer, .spacer = SpacerVariant::small}, metrics), 24);
    EXPECT_EQ(tileLength({.kind = BarTile::Kind::spacer, .spacer = SpacerVariant::flex}, metrics), 48);
    EXPECT_EQ(tileLength({.kind = BarTile::Kind::separator}, metrics), 12);
    // A widget three tiles wide covers the spacing between them too.
    EXPECT_EQ(tileLength({.kind = BarTile::Kind::widget, .span = 3}, metrics), 3 * 48 + 2 * 3);

    auto scene = sceneOf(apps(3));
    BarLayout layout(scene);
    EXPECT_EQ(layout.barLength(), 3 * 48 + 2 * 3 + 2 * 7);
    EXPECT_DOUBLE_EQ(layout.centers()[1] - layout.centers()[0], 51);
    // Centred in its view, and without the lens every tile rests.
    EXPECT_DOUBLE_EQ(layout.centers()[1], layout.length() / 2);
    for (const auto& tile : layout.frame(DockLens{}).tiles) EXPECT_EQ(tile.drawn, tile.resting);
    EXPECT_EQ(BarLayout(sceneOf({})).barLength(), 48 + 2 * 7);
}
