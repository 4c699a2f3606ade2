#include "CorvaneCore/bar/DockReservedSpace.hpp"

#include <gtest/gtest.h>

using namespace corvane;
using DockReservedSpace::Nudge;

namespace {

const Rect kScreen{0, 0, 1440, 900};
// Without the menu bar; with no system Dock at the bottom.
const Rect kVisible{0, 0, 1440, 875};
// The usable frame of a bottom bar reserving 68 points.
const Rect kUsable{0, 68, 1440, 807};

} // namespace

TEST(DockReservedSpace, UsableFrameMeasuresTheStripFromTheScreenEdge) {
    using DockReservedSpace::usableFrame;
    EXPECT_EQ(usableFrame(kVisible, kScreen, DockPosition::bottom, 68), kUsable);
    // A 70-point system Dock already keeps the bottom clear; 68 more is not added on top.
    const Rect aboveSystemDock{0, 70, 1440, 805};
    EXPECT_EQ(usableFrame(aboveSystemDock, kScreen, DockPosition::bottom, 68), aboveSystemDock);
    EXPECT_EQ(usableFrame(aboveSystemDock, kScreen, DockPosition::bottom, 100), (Rect{0, 100, 1440, 775}));
    EXPECT_EQ(usableFrame(kVisible, kScreen, DockPosition::bottom, 5000), (Rect{0, 874, 1440, 1}));
    EXPECT_EQ(usableFrame(kVisible, kScreen, DockPosition::bottom, -10), kVisible);
    EXPECT_EQ(usableFrame(kVisible, kScreen, DockPosition::left, 80), (Rect{80, 0, 1360, 875}));
    EXPECT_EQ(usableFrame(kVisible, kScreen, DockPosition::right, 80), (Rect{0, 0, 1360, 875}));
}

TEST(DockReservedSpace, FillsVisibleAllowsTwoPoints) {
    using DockReservedSpace::fillsVisible;
    EXPECT_TRUE(fillsVisible({0, 2, 800, 871}, kVisible, DockPosition::bottom));
    EXPECT_FALSE(fillsVisible({0, 3, 800, 872}, kVisible, DockPosition::bottom));
    EXPECT_FALSE(fillsVisible({0, 0, 800, 872}, kVisible, DockPosition::bottom));
    EXPECT_TRUE(fillsVisible({2, 100, 1436, 200}, kVisible, DockPosition::left));
    EXPECT_FALSE(fillsVisible({0, 100, 1437, 200}, kVisible, DockPosition::right));
}

TEST(DockReservedSpace, AdjustedPushesWindowsOutOfTheStrip) {
    const Rect leftUsable{80, 0, 1360, 875};
    const Rect rightUsable{0, 0, 1360, 875};
    struct Case {
        const char* name;
        DockPosition position;
        Rect usable;
        Rect window;
        Nudge nudge;
        std::optional<Rect> expected;
    };
    const auto bottom = DockPosition::bottom, left = DockPosition::left, right = DockPosition::right;
    const Case cases[] = {
        {"clear of the strip", bottom, kUsable, {100, 68, 600, 400}, Nudge::placement, std::nullopt},
        {"placed into it", bottom, kUsable, {100, 20, 600, 400}, Nudge::placement, Rect{100, 68, 600, 400}},
        {"dragged 28 in snaps", bottom, kUsable, {100, 40, 600, 400}, Nudge::drag, Rect{100, 68, 600, 400}},
        {"dragged 29 in stays", bottom, kUsable, {100, 39, 600, 400}, Nudge::drag, std::nullopt},
        {"too narrow", bottom, kUsable, {100, 20, 79, 400}, Nudge::placement, std::nullopt},
        {"too low", bottom, kUsable, {100, 20, 600, 79}, Nudge::placement, std::nullopt},
        {"one point is not worth it", bottom, kUsable, {100, 67, 600, 400}, Nudge::placement, std::nullopt},
        {"too tall is fitted",
         bottom,
         kUsable,
         {100, 0, 600, 860},
         Nudge::placement,
         Rect{100, 68, 600, 807}},
        {"no usable room", bottom, {0, 68, 1440, 0}, {100, 20, 600, 400}, Nudge::placement, std::nullopt},
        {"left", left, leftUsable, {60, 100, 500, 500}, Nudge::placement, Rect{80, 100, 500, 500}},
        {"left, too wide", left, leftUsable, {0, 100, 1400, 500}, Nudge::placement, Rect{80, 100, 1360, 500}},
        {"right", right, rightUsable, {1000, 100, 400, 400}, Nudge::placement, Rect{960, 100, 400, 400}},
        {"right, dragged deep", right, rightUsable, {1000, 100, 400, 400}, Nudge::drag, std::nullopt},
        {"right, too wide",
         right,
         rightUsable,
         {-10, 100, 1400, 400},
         Nudge::placement,
         Rect{0, 100, 1360, 400}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DockReservedSpace::adjusted(c.window, c.usable, c.position, c.nudge), c.expected) << c.name;
}
