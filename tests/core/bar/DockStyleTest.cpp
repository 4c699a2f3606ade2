#include "CorvaneCore/bar/DockStyle.hpp"
#include "CorvaneCore/bar/DockMagnification.hpp"
#include "CorvaneCore/bar/DockStyleCoding.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;

TEST(DockStyleCoding, MissingKeysTakeDefaultsAndEverythingRoundTrips) {
    EXPECT_EQ(decodeDockStyle(nlohmann::json::object()), DockStyle::defaultStyle());
    EXPECT_EQ(dockStyleFromText("{}"), DockStyle::defaultStyle());
    EXPECT_EQ(dockStyleFromText("not json"), DockStyle::defaultStyle());

    const DockStyle style{.hoverEffect = HoverEffect::magnify,
                          .hoverScale = 1.3,
                          .launchAnimation = LaunchAnimation::shake,
                          .indicatorStyle = IndicatorStyle::dash,
                          .indicatorColorHex = "#FF0000",
                          .iconSize = 56,
                          .bottomSpace = 8,
                          .position = DockPosition::right,
                          .showsTrash = false,
                          .trashIcon = TrashIcon::recycle,
                          .showsDownloads = false,
                          .showsRunningApps = false,
                          .showsLauncher = true,
                          .windowPreviews = {false, 1.2, true},
                          .dropZone = {false, true},
                          .savesEnergy = true,
                          .themeID = "christmas",
                          .themeCustomizations = {{"christmas", {.showsLights = false}}},
                          .indicatorFollowsWorkspace = false};
    EXPECT_EQ(dockStyleFromText(dockStyleText(style)), style);

    auto json = encodeDockStyle(DockStyle::defaultStyle());
    EXPECT_FALSE(json.contains("iconSize"));
    EXPECT_EQ(json["themeID"], "native");
    EXPECT_EQ(json["windowPreviews"]["delay"], 0.4);
}

TEST(DockStyleCoding, UnreadableValuesFallBackOneKeyAtATime) {
    auto style = dockStyleFromText(R"({
        "hoverEffect": "wobble", "hoverScale": "big", "launchAnimation": "pulse",
        "position": "top", "trashIcon": "neon", "showsTrash": "no",
        "windowPreviews": {"delay": 2}, "dropZone": 3,
        "themeCustomizations": {"neon": {"showsGlow": false}, "paper": "plain"},
        "futureSetting": true})");
    DockStyle expected;
    expected.launchAnimation = LaunchAnimation::pulse;
    expected.trashIcon = TrashIcon::neon;
    expected.windowPreviews.delay = 2;
    expected.themeCustomizations["neon"] = {.showsGlow = false};
    EXPECT_EQ(style, expected);
}

TEST(DockStyle, AppliedClampsTheStylesSizes) {
    const DockAppearance dock{.tileSize = 48, .magnifies = false, .largeSize = 100};
    DockStyle style;
    EXPECT_EQ(style.applied(dock), dock);

    style.iconSize = 200;
    style.bottomSpace = -5;
    auto applied = style.applied(dock);
    EXPECT_EQ(applied.tileSize, 128);
    EXPECT_EQ(applied.bottomMarginOverride, 0);
    style.bottomSpace = 30;
    EXPECT_EQ(style.applied(dock).bottomMarginOverride, 24);
    style.iconSize = 4;
    EXPECT_EQ(style.applied(dock).tileSize, 16);
}

TEST(DockStyle, MagnifyChosenHereGetsAProportionalLargeSize) {
    DockStyle style;
    style.hoverEffect = HoverEffect::magnify;
    const DockAppearance plain{.tileSize = 48, .magnifies = false, .largeSize = 100};
    auto applied = style.applied(plain);
    EXPECT_TRUE(applied.magnifies);
    EXPECT_DOUBLE_EQ(applied.largeSize, 76.8);
    style.iconSize = 90;
    EXPECT_EQ(style.applied(plain).largeSize, 128);

    const DockAppearance magnifying{.tileSize = 48, .magnifies = true, .largeSize = 100};
    EXPECT_EQ(style.applied(magnifying).largeSize, 100);
    style.hoverEffect = HoverEffect::scale;
    EXPECT_FALSE(style.applied(magnifying).magnifies);
    EXPECT_EQ(style.applied(magnifying).largeSize, 100);
}

TEST(DockStyle, IconScaleByEffectAndEdge) {
    auto metrics = DockAppearance{.tileSize = 48, .magnifies = true, .largeSize = 96}.metrics();
    DockStyle style;
    style.hoverScale = 2;
    EXPECT_EQ(style.iconScale(0.0, true, metrics), 1.5);
    EXPECT_EQ(style.iconScale(0.0, false, metrics), 1);
    EXPECT_EQ(style.cardScale(true), 1.5);
    EXPECT_EQ(style.cardScale(false), 1);

    style.hoverEffect = HoverEffect::magnify;
    EXPECT_EQ(style.iconScale(0.0, false, metrics), 2);
    EXPECT_EQ(style.iconScale(30.0, true, metrics), DockMagnification::scale(30, metrics));
    EXPECT_EQ(style.iconScale(std::nullopt, true, metrics), 1);
    style.position = DockPosition::left;
    EXPECT_EQ(style.iconScale(0.0, false, metrics), 1);
    EXPECT_EQ(style.iconScale(0.0, true, metrics), 1.5);

    style.hoverEffect = HoverEffect::none;
    EXPECT_EQ(style.iconScale(0.0, true, metrics), 1);
    EXPECT_EQ(style.cardScale(true), 1);
}

TEST(DockStyle, DraggingTheSeparatorResizes) {
    struct Case {
        double dx, dy;
        DockPosition position;
        double expected;
    };
    const Case cases[] = {
        {0, -20, DockPosition::bottom, 32}, {0, 60, DockPosition::bottom, 96},
        {0, 0.4, DockPosition::bottom, 48}, {0, -15.6, DockPosition::bottom, 32},
        {10, 0, DockPosition::left, 58},    {10, 0, DockPosition::right, 38},
        {10, 99, DockPosition::right, 38},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DockStyle::iconSizeDragging(48, c.dx, c.dy, c.position), c.expected) << c.dx << "," << c.dy;
}

TEST(DockStyle, IndicatorColourPrefersTheWorkspaceThenTheStyleThenTheTheme) {
    Profile profile;
    profile.color = ProfileColor::green;
    DockStyle style;
    style.themeID = "rocket";
    EXPECT_EQ(style.indicatorHex(&profile), "#22C55E");
    profile.indicatorColorHex = "#010203";
    EXPECT_EQ(style.indicatorHex(&profile), "#010203");
    EXPECT_EQ(style.indicatorHex(nullptr), "#7FB2FF");
    style.indicatorColorHex = "#ABCDEF";
    EXPECT_EQ(style.indicatorHex(nullptr), "#ABCDEF");
    style.indicatorFollowsWorkspace = false;
    EXPECT_EQ(style.indicatorHex(&profile), "#ABCDEF");
    style.indicatorColorHex.reset();
    style.themeID = "native";
    EXPECT_FALSE(style.indicatorHex(&profile));
}

TEST(DockStyle, ThemeUsesTheCustomizationOfTheChosenThemeOnly) {
    DockStyle style;
    style.themeID = "midnight";
    style.themeCustomizations["rocket"] = {.showsBorder = false};
    EXPECT_EQ(style.theme(), DockTheme::named("midnight"));
    style.themeCustomizations["midnight"] = {.showsBorder = false};
    EXPECT_FALSE(style.theme().borderHex);
    EXPECT_EQ(style.baseTheme().borderHex, "#FFFFFF");
    style.themeID = "gone";
    EXPECT_EQ(style.theme(), DockTheme::native());
}
