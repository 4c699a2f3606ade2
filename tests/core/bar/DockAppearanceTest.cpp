#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/bar/DockFit.hpp"
#include "CorvaneCore/dock/PlistValue.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

DockAppearance fromPreferences(const PlistValue* tileSize, const PlistValue* indicators = nullptr,
                               const PlistValue* magnification = nullptr,
                               const PlistValue* largeSize = nullptr) {
    return DockAppearance::fromDockPreferences(tileSize, indicators, magnification, largeSize);
}

} // namespace

TEST(DockAppearance, DockPreferencesAreClampedAndNonNumbersTakeDefaults) {
    PlistValue huge = 200, tiny = 4, real = 64.5, text = "big";
    EXPECT_EQ(fromPreferences(&huge).tileSize, 128);
    EXPECT_EQ(fromPreferences(&tiny).tileSize, 16);
    EXPECT_EQ(fromPreferences(&real).tileSize, 64.5);
    EXPECT_EQ(fromPreferences(&text).tileSize, 48);
    EXPECT_EQ(fromPreferences(nullptr), DockAppearance::systemDefault());

    PlistValue yes = true, one = 1, zero = 0, truthText = "1";
    auto appearance = fromPreferences(nullptr, &zero, &yes, &tiny);
    EXPECT_FALSE(appearance.showsProcessIndicators);
    EXPECT_TRUE(appearance.magnifies);
    EXPECT_EQ(appearance.largeSize, 16);
    EXPECT_TRUE(fromPreferences(nullptr, nullptr, &one).magnifies);
    EXPECT_FALSE(fromPreferences(nullptr, nullptr, &truthText).magnifies);
    EXPECT_FALSE(appearance.bottomMarginOverride);
}

TEST(DockAppearance, MetricsRoundHalvesAwayFromZero) {
    auto m48 = DockAppearance{.tileSize = 48}.metrics();
    EXPECT_EQ(m48, (DockMetrics{48, 3, 7, 7, 19, 3, 3, 48}));
    EXPECT_EQ(m48.barHeight(), 62);
    EXPECT_EQ(m48.reservedHeight(), 68);
    EXPECT_EQ(m48.hiddenSlide(), 74);
    EXPECT_EQ(m48.windowHeight(), 133); // half an icon of growth room even without magnification

    auto m16 = DockAppearance{.tileSize = 16}.metrics();
    EXPECT_EQ(m16.iconSpacing, 1);
    EXPECT_EQ(m16.indicatorSize, 3);

    // 2.5 would go down under banker's rounding.
    auto m40 = DockAppearance{.tileSize = 40.4}.metrics();
    EXPECT_EQ(m40.iconSize, 40);
    EXPECT_EQ(m40.iconSpacing, 3);
    EXPECT_EQ(m40.horizontalPadding, 6);

    auto magnified =
        DockAppearance{.tileSize = 48, .magnifies = true, .largeSize = 127.6, .bottomMarginOverride = 10};
    auto m = magnified.metrics();
    EXPECT_EQ(m.magnifiedIconSize, 128);
    EXPECT_EQ(m.bottomMargin, 10);
    EXPECT_EQ(m.windowHeight(), 80 + 10 + 48 + 14 + 44);
}

TEST(DockAppearance, FittedOnlyShrinksAndNeverBelowSixteen) {
    DockAppearance appearance{.tileSize = 48, .magnifies = true, .largeSize = 90, .bottomMarginOverride = 4};
    EXPECT_EQ(appearance.fitted(std::nullopt), appearance);
    EXPECT_EQ(appearance.fitted(60), appearance);
    auto smaller = appearance.fitted(30);
    EXPECT_EQ(smaller.tileSize, 30);
    EXPECT_EQ(smaller.largeSize, 90);
    EXPECT_EQ(smaller.bottomMarginOverride, 4);
    EXPECT_EQ(appearance.fitted(10).tileSize, 16);
}

TEST(DockFit, ShrinksToFitAndGrowsBackWithAMargin) {
    struct Case {
        double current, preferred, barLength, available, expected;
    };
    const Case cases[] = {
        {48, 48, 1000, 800, 38}, // floor(48 × 0.8)
        {48, 48, 1000, 100, 16}, // never below the minimum
        {48, 30, 1000, 900, 30}, // shrinking never passes the preferred size
        {38, 48, 800, 1000, 46}, // floor(38 × 1000 × 0.97 / 800)
        {38, 48, 800, 2000, 48}, // room enough: straight back to preferred
        {38, 48, 800, 810, 38},  // within the margin: never shrinks while it fits
        {48, 48, 800, 800, 48},  // exactly fits
        {40, 32, 800, 1000, 32}, // fits at a size above preferred
        {48, 48, 0, 800, 48},    // nothing measured yet
        {48, 48, 1000, -1, 48},  {0, 48, 1000, 800, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DockFit::iconSize(c.current, c.preferred, c.barLength, c.available), c.expected)
            << c.current << " " << c.preferred << " " << c.barLength << " " << c.available;
}
