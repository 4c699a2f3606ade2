#include "CorvaneCore/bar/DockVisibility.hpp"

#include <gtest/gtest.h>

using namespace corvane;
using DockVisibility::Decision;

namespace {

// A 1440 × 900 screen with a 640 × 62 bar 4 points above its bottom edge.
DockVisibility::Input hiddenByPreference(Point pointer) {
    DockVisibility::Input input;
    input.screenFrame = {0, 0, 1440, 900};
    input.barFrame = {400, 4, 640, 62};
    input.pointer = pointer;
    input.autohidesByPreference = true;
    input.isShown = false;
    return input;
}

} // namespace

TEST(DockVisibility, CoveringNeedsHalfTheHeightAndAQuarterOfTheWidth) {
    const Rect bar{400, 4, 640, 62};
    struct Case {
        Rect window;
        bool covers;
    };
    const Case cases[] = {
        {{880, 35, 500, 500}, true},                               // exactly 160 × 31
        {{880, 36, 500, 500}, false},                              // one point lower
        {{881, 35, 500, 500}, false},                              // one point narrower
        {{0, 0, 1440, 900}, true},    {{0, 66, 1440, 500}, false}, // touches the top edge only
        {{400, 4, 0, 62}, false},                                  // degenerate window
    };
    for (const auto& c : cases)
        EXPECT_EQ(DockVisibility::covers(c.window, bar), c.covers) << c.window.x << "," << c.window.y;
    EXPECT_FALSE(DockVisibility::covers({0, 0, 1440, 900}, Rect{400, 4, 640, 0}));
}

TEST(DockVisibility, AutohidesForThePreferenceFullScreenOrACoveringWindow) {
    auto input = hiddenByPreference({700, 500});
    input.autohidesByPreference = false;
    EXPECT_FALSE(DockVisibility::autohides(input));
    EXPECT_EQ(DockVisibility::decide(input), Decision::show);

    input.windowFrames = {{0, 0, 1440, 900}};
    EXPECT_FALSE(DockVisibility::autohides(input)); // covered, but the user did not ask
    input.hidesWhenCovered = true;
    EXPECT_TRUE(DockVisibility::autohides(input));
    input.windowFrames = {{0, 300, 1440, 600}};
    EXPECT_FALSE(DockVisibility::autohides(input));
    input.isFullScreen = true;
    EXPECT_TRUE(DockVisibility::autohides(input));
}

TEST(DockVisibility, HiddenBarRevealsOnlyFromTheEdgeBand) {
    struct Case {
        DockPosition position;
        Point pointer;
        Decision expected;
    };
    const Case cases[] = {
        {DockPosition::bottom, {700, 2}, Decision::reveal},
        {DockPosition::bottom, {700, 3}, Decision::hide},
        {DockPosition::bottom, {1440, 0}, Decision::reveal},
        {DockPosition::bottom, {1441, 0}, Decision::hide},
        {DockPosition::bottom, {700, 30}, Decision::hide},
        {DockPosition::left, {2, 450}, Decision::reveal},
        {DockPosition::left, {3, 450}, Decision::hide},
        {DockPosition::left, {0, 901}, Decision::hide},
        {DockPosition::right, {1438, 900}, Decision::reveal},
        {DockPosition::right, {1437, 450}, Decision::hide},
        {DockPosition::right, {700, 0}, Decision::hide},
    };
    for (const auto& c : cases) {
        auto input = hiddenByPreference(c.pointer);
        input.position = c.position;
        EXPECT_EQ(DockVisibility::decide(input), c.expected) << c.pointer.x << "," << c.pointer.y;
    }
}

TEST(DockVisibility, ShownBarStaysWhileThePointerIsOnItOrAtTheEdge) {
    auto input = hiddenByPreference({700, 30});
    input.isShown = true;
    EXPECT_EQ(DockVisibility::decide(input), Decision::show);
    input.pointer = {100, 1};
    EXPECT_EQ(DockVisibility::decide(input), Decision::show);
    input.pointer = {700, 300};
    EXPECT_EQ(DockVisibility::decide(input), Decision::hide);
}
