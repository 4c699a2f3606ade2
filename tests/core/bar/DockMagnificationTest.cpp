#include "CorvaneCore/bar/DockMagnification.hpp"
#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/bar/DockLens.hpp"
#include "CorvaneCore/bar/SpringValue.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

using namespace corvane;

namespace {

// s = 48, spacing 3, M = 128: pitch 51, reach R = 127.5, extra factor 5/3.
DockMetrics magnifying() {
    return DockAppearance{.tileSize = 48, .magnifies = true, .largeSize = 128}.metrics();
}
constexpr double kReach = 127.5;

DockLens lensAt(double x, double amount) {
    DockLens lens;
    lens.x.value = x;
    lens.amount.value = amount;
    return lens;
}

} // namespace

TEST(DockMagnification, ScaleIsABellFromTheMagnifiedSizeToOneAtTheReach) {
    auto m = magnifying();
    EXPECT_DOUBLE_EQ(DockMagnification::scale(0, m) * m.iconSize, 128);
    EXPECT_DOUBLE_EQ(DockMagnification::scale(kReach / 2, m), 1 + 5.0 / 3 / 2);
    EXPECT_DOUBLE_EQ(DockMagnification::scale(-kReach / 2, m), DockMagnification::scale(kReach / 2, m));
    EXPECT_EQ(DockMagnification::scale(kReach, m), 1);
    EXPECT_EQ(DockMagnification::scale(-500, m), 1);
}

TEST(DockMagnification, DisplacementIsTheGrowthOfTheTilesInBetween) {
    auto m = magnifying();
    EXPECT_EQ(DockMagnification::displacement(0, m), 0);
    EXPECT_DOUBLE_EQ(DockMagnification::displacement(kReach, m), 5.0 / 3 * kReach / 2);
    EXPECT_DOUBLE_EQ(DockMagnification::displacement(-400, m), -5.0 / 3 * kReach / 2);
    // Its slope is the extra size at each distance, so neighbours never overlap or part.
    for (double d : {-100.0, -20.0, 5.0, 60.0, 120.0}) {
        double h = 1e-4;
        double slope =
            (DockMagnification::displacement(d + h, m) - DockMagnification::displacement(d - h, m)) / (2 * h);
        EXPECT_NEAR(slope, DockMagnification::scale(d, m) - 1, 1e-6) << d;
    }
}

TEST(DockMagnification, NothingHappensUnlessTheMagnifiedSizeIsLarger) {
    auto off = DockAppearance{.tileSize = 64, .magnifies = true, .largeSize = 32}.metrics();
    EXPECT_EQ(off.magnifiedIconSize, 64);
    EXPECT_EQ(DockMagnification::scale(0, off), 1);
    EXPECT_EQ(DockMagnification::displacement(30, off), 0);
    std::array<double, 3> centers{10, 60, 110};
    EXPECT_EQ(DockMagnification::scales(centers, 60.0, off), std::vector<double>(3, 1.0));
    auto m = magnifying();
    EXPECT_EQ(DockMagnification::scales(centers, std::nullopt, m), std::vector<double>(3, 1.0));
    auto scales = DockMagnification::scales(centers, 60.0, m);
    EXPECT_DOUBLE_EQ(scales[1], 128.0 / 48);
    EXPECT_DOUBLE_EQ(scales[0], DockMagnification::scale(-50, m));
}

TEST(SpringValue, StepsInShortSubstepsAndSnapsWhenStill) {
    SpringValue oneFrame(0, 1, 0.16, 0.82);
    SpringValue quarters = oneFrame;
    oneFrame.step(1.0 / 60);
    for (int i = 0; i < 4; ++i)
        quarters.step(1.0 / 240);
    EXPECT_NEAR(oneFrame.value, quarters.value, 1e-12);
    EXPECT_NEAR(oneFrame.velocity, quarters.velocity, 1e-12);
    EXPECT_GT(oneFrame.value, 0);

    // A long stall is integrated stably instead of flinging the value away.
    SpringValue stalled(0, 100, 0.16, 0.82);
    stalled.step(5);
    EXPECT_TRUE(stalled.isSettled());
    EXPECT_EQ(stalled.value, 100);
    EXPECT_EQ(stalled.velocity, 0);
    SpringValue woken(0, 100, 0.16, 0.82);
    woken.step(std::numeric_limits<double>::infinity());
    EXPECT_EQ(woken.value, 100);

    SpringValue nearlyThere(0.9995, 1, 0.2, 1);
    nearlyThere.velocity = 0.005;
    EXPECT_TRUE(nearlyThere.isSettled());
    nearlyThere.step(0);
    EXPECT_EQ(nearlyThere.value, 1);
    EXPECT_EQ(nearlyThere.velocity, 0);

    SpringValue far(0, 1, 0.2, 1);
    far.step(0);
    EXPECT_EQ(far.value, 0);
    EXPECT_FALSE(far.isSettled());
    EXPECT_EQ(SpringValue(3, std::nullopt, 0.2, 1).target, 3);
}

TEST(DockLens, JumpsToThePointerWhenOffAndGlidesWhenOn) {
    DockLens lens;
    EXPECT_TRUE(lens.isSettled());
    lens.follow(200.0);
    EXPECT_EQ(lens.x.value, 200);
    EXPECT_EQ(lens.amount.target, 1);
    for (int frame = 0; frame < 120; ++frame)
        lens.step(1.0 / 60);
    EXPECT_TRUE(lens.isSettled());
    EXPECT_EQ(lens.amount.value, 1);

    lens.follow(300.0);
    EXPECT_EQ(lens.x.value, 200);
    lens.step(1.0 / 60);
    EXPECT_GT(lens.x.value, 200);
    EXPECT_LT(lens.x.value, 300);

    lens.follow(std::nullopt);
    EXPECT_EQ(lens.x.target, 300);
    EXPECT_EQ(lens.amount.target, 0);
}

TEST(DockLens, ScaleAndDisplacementFollowTheAmount) {
    auto m = magnifying();
    EXPECT_DOUBLE_EQ(lensAt(100, 0.5).scale(100, m), 1 + 0.5 * (128.0 / 48 - 1));
    // An undershooting spring never shrinks icons or pulls them inwards.
    EXPECT_EQ(lensAt(100, -0.2).scale(100, m), 1);
    EXPECT_EQ(lensAt(100, -0.2).rawDisplacement(150, m), 0);
}

TEST(DockLens, AnchorHoldsTheNearestBoundary) {
    auto m = magnifying();
    std::array<double, 3> separators{600, 0, 300}; // any order
    auto left = lensAt(-20, 1);
    EXPECT_EQ(left.anchor(separators, m), left.rawDisplacement(0, m));
    EXPECT_EQ(left.displacement(0, separators, m), 0);
    auto right = lensAt(600, 1);
    EXPECT_EQ(right.anchor(separators, m), right.rawDisplacement(600, m));
    EXPECT_EQ(right.displacement(600, separators, m), 0);

    auto between = lensAt(75, 1); // a quarter of the way from 0 to 300
    double k = 0.25 * 0.25 * (3 - 0.5);
    EXPECT_DOUBLE_EQ(between.anchor(separators, m),
                     (1 - k) * between.rawDisplacement(0, m) + k * between.rawDisplacement(300, m));

    std::array<double, 2> close{100, 100.5};
    auto narrow = lensAt(100.25, 1); // the span counts as 1 point, not 0.5
    double kNarrow = 0.25 * 0.25 * (3 - 0.5);
    EXPECT_DOUBLE_EQ(narrow.anchor(close, m), (1 - kNarrow) * narrow.rawDisplacement(100, m) +
                                                  kNarrow * narrow.rawDisplacement(100.5, m));

    EXPECT_EQ(between.anchor({}, m), 0);
}
