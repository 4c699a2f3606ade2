#include "CorvaneCore/looks/DockTheme.hpp"
#include "CorvaneCore/looks/RGBColor.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <set>

using namespace corvane;

namespace {

std::vector<std::string> everyHex(const DockTheme& theme) {
    std::vector<std::string> hexes;
    auto add = [&](const std::optional<std::string>& hex) {
        if (hex) hexes.push_back(*hex);
    };
    if (auto colors = theme.background.colors()) {
        hexes.push_back(colors->topHex);
        add(colors->bottomHex);
    }
    add(theme.borderHex);
    add(theme.glowHex);
    add(theme.indicatorHex);
    add(theme.separatorHex);
    if (theme.decoration) {
        for (const auto& hex : theme.decoration->lightHexes)
            hexes.push_back(hex);
        if (theme.decoration->outline) add(theme.decoration->outline->hex);
    }
    return hexes;
}

} // namespace

TEST(DockTheme, NamedFindsExactIdsAndFallsBackToNative) {
    EXPECT_EQ(DockTheme::named("candy-corn").name, "Candy Corn");
    EXPECT_EQ(DockTheme::named("rocket").name, "Rocket");
    for (auto id : {std::optional<std::string_view>("Candy-Corn"), std::optional<std::string_view>(""),
                    std::optional<std::string_view>("removed-theme"), std::optional<std::string_view>()})
        EXPECT_EQ(&DockTheme::named(id), &DockTheme::native());
    EXPECT_EQ(DockTheme::native().id, "native");
    EXPECT_EQ(&DockTheme::all().front(), &DockTheme::native());
}

TEST(DockTheme, IdsAreUniqueAndEveryColourIsReadable) {
    std::set<std::string> ids;
    for (const auto* list : {&DockTheme::all(), &DockTheme::seasonal()})
        for (const auto& theme : *list) {
            EXPECT_TRUE(ids.insert(theme.id).second) << theme.id;
            for (const auto& hex : everyHex(theme))
                EXPECT_TRUE(RGBColor::parseHex(hex)) << theme.id << " " << hex;
            EXPECT_EQ(theme.decoration.has_value(), list == &DockTheme::seasonal()) << theme.id;
        }
    EXPECT_EQ(ids.size(), 15u);
}

TEST(DockThemeCustomized, BackgroundFollowsItsCase) {
    using Background = DockTheme::Background;
    DockThemeCustomization tint{.topHex = "#112233"};
    EXPECT_EQ(DockTheme::named("native").customized(tint).background,
              Background(Background::Frosted{"#112233", 0.55}));
    tint.opacity = 0.3;
    EXPECT_EQ(DockTheme::named("native").customized(tint).background,
              Background(Background::Frosted{"#112233", 0.3}));
    EXPECT_EQ(DockTheme::named("floating").customized(tint).background.kind(), Background::Kind::none);

    DockThemeCustomization both{.topHex = "#010101", .bottomHex = "#020202"};
    EXPECT_EQ(DockTheme::named("rocket").customized(both).background,
              Background(Background::Gradient{"#010101", "#020202", 0.82}));
    EXPECT_EQ(DockTheme::named("aqua").customized(both).background,
              Background(Background::Shelf{"#010101", "#020202", 0.72}));
    EXPECT_EQ(DockTheme::named("liquid").customized(both).background,
              Background(Background::Liquid{"#010101", 0.25}));
    EXPECT_EQ(DockTheme::named("midnight").customized(DockThemeCustomization{.opacity = 0.9}).background,
              Background(Background::Frosted{"#0B1020", 0.9}));

    // Only tinted backgrounds have colours to fill with.
    EXPECT_EQ(Background(Background::Frosted{"#111111", 0.4}).colors(),
              (Background::Colors{"#111111", std::nullopt, 0.4}));
    EXPECT_FALSE(DockTheme::named("liquid").background.colors());
    EXPECT_FALSE(DockTheme::named("native").background.colors());
}

TEST(DockThemeCustomized, BorderAndGlowDefaultsWhenTurnedOn) {
    DockThemeCustomization thinBorder{.showsBorder = true, .borderWidth = 0.2};
    auto midnight = DockTheme::named("midnight").customized(thinBorder);
    EXPECT_EQ(midnight.borderHex, "#FFFFFF");
    EXPECT_EQ(midnight.borderWidth, 0.5);

    auto native = DockTheme::native().customized(DockThemeCustomization{.showsBorder = true});
    EXPECT_EQ(native.borderHex, "#FFFFFF");
    EXPECT_EQ(native.borderWidth, 0.5);

    auto rocket = DockTheme::named("rocket");
    auto noBorder = rocket.customized(DockThemeCustomization{.showsBorder = false, .borderHex = "#123456"});
    EXPECT_FALSE(noBorder.borderHex);
    EXPECT_EQ(noBorder.borderWidth, 0);
    auto recoloured = rocket.customized(DockThemeCustomization{.borderHex = "#123456", .borderWidth = 3});
    EXPECT_EQ(recoloured.borderHex, "#123456");
    EXPECT_EQ(recoloured.borderWidth, 3);

    EXPECT_EQ(DockTheme::named("paper").customized(DockThemeCustomization{.showsGlow = true}).glowHex,
              "#00E5FF");
    EXPECT_FALSE(rocket.customized(DockThemeCustomization{.showsGlow = false}).glowHex);
    EXPECT_EQ(rocket.customized(DockThemeCustomization{.glowHex = "#ABCDEF"}).glowHex, "#ABCDEF");
}

TEST(DockThemeCustomized, KeepsIdentityAndNeverAddsDecoration) {
    const auto& rocket = DockTheme::named("rocket");
    EXPECT_EQ(rocket.customized(DockThemeCustomization{}), rocket);
    DockThemeCustomization everything{"#000001", "#000002", 0.1,   true,      "#000003", 2,     true,
                                      "#000004", 0.2,       false, "#000005", false,     false, false};
    auto changed = rocket.customized(everything);
    EXPECT_EQ(changed.id, rocket.id);
    EXPECT_EQ(changed.name, rocket.name);
    EXPECT_EQ(changed.indicatorHex, rocket.indicatorHex);
    EXPECT_EQ(changed.separatorHex, "#000005");
    EXPECT_EQ(changed.cornerRadiusScale, 0.2);
    EXPECT_FALSE(changed.showsReflections);
    EXPECT_FALSE(changed.decoration);

    const auto& liquid = DockTheme::named("liquid");
    EXPECT_EQ(liquid.customized(DockThemeCustomization{.showsSnowfall = false}), liquid);
}

TEST(DockThemeCustomized, SeasonalExtrasTurnOffOneByOne) {
    const auto& christmas = DockTheme::named("christmas");
    auto noLights = christmas.customized(DockThemeCustomization{.showsLights = false});
    ASSERT_TRUE(noLights.decoration);
    EXPECT_TRUE(noLights.decoration->lightHexes.empty());
    EXPECT_EQ(noLights.decoration->particles, DockTheme::Particles::snow);
    EXPECT_EQ(noLights.decoration->edgeCover, DockTheme::EdgeCover::snow);

    auto bare = DockTheme::named("candy-cane")
                    .customized(DockThemeCustomization{
                        .showsSnowfall = false, .showsSnowCap = false, .showsLights = true});
    ASSERT_TRUE(bare.decoration);
    EXPECT_FALSE(bare.decoration->particles);
    EXPECT_FALSE(bare.decoration->edgeCover);
    EXPECT_EQ(bare.decoration->lightHexes.size(), 4u);
    EXPECT_EQ(bare.decoration->outline, DockTheme::Outline::stripes("#D7263D"));
}

TEST(DockThemeCustomization, JsonKeepsSetFieldsAndIgnoresMistypedOnes) {
    DockThemeCustomization customization{.topHex = "#112233", .opacity = 0.4, .showsLights = false};
    auto json = encodeDockThemeCustomization(customization);
    EXPECT_EQ(json, nlohmann::json::parse(R"({"topHex": "#112233", "opacity": 0.4, "showsLights": false})"));
    EXPECT_EQ(decodeDockThemeCustomization(json), customization);
    EXPECT_TRUE(encodeDockThemeCustomization({}).empty());

    auto mistyped =
        nlohmann::json::parse(R"({"topHex": 7, "opacity": "0.4", "showsBorder": 1, "borderWidth": 2})");
    EXPECT_EQ(decodeDockThemeCustomization(mistyped), (DockThemeCustomization{.borderWidth = 2}));
    EXPECT_TRUE(decodeDockThemeCustomization(nlohmann::json::array()).isEmpty());
}
