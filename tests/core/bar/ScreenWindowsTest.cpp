// The window server's list read for one screen: its top-down frames turned into the bar's
// coordinates, which windows reach the screen, and whether the front application fills it.

#include "CorvaneCore/bar/DockVisibility.hpp"
#include "CorvaneCore/bar/ScreenWindows.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

// The menu-bar screen is 1440 × 900 at the origin; a 2560 × 1440 screen stands above it, its
// left edge 560 points to the left, so its window-server y is negative.
const Rect primary{0, 0, 1440, 900};
const Rect above{-560, 900, 2560, 1440};
constexpr double primaryTop = 900;

WindowList::Window window(std::int32_t pid, Rect bounds, std::int32_t layer = 0) { return {pid, layer, bounds}; }

} // namespace

TEST(ScreenWindows, FramesTurnOverAtTheMenuBarScreensTop) {
    EXPECT_EQ(ScreenWindows::fromWindowServer({100, 50, 800, 600}, primaryTop), (Rect{100, 250, 800, 600}));
    EXPECT_EQ(ScreenWindows::fromWindowServer({-560, -1440, 2560, 1440}, primaryTop), above);

    // A window at the top of the screen stays clear of a bar at the bottom; one at the bottom
    // covers it.
    DockVisibility::Input input{.screenFrame = primary, .barFrame = {400, 4, 640, 62}, .hidesWhenCovered = true};
    input.windowFrames = ScreenWindows::read(primary, primaryTop, {window(7, {0, 25, 1440, 500})}, 7).windowFrames;
    EXPECT_FALSE(DockVisibility::autohides(input));
    input.windowFrames = ScreenWindows::read(primary, primaryTop, {window(7, {0, 400, 1440, 500})}, 7).windowFrames;
    EXPECT_TRUE(DockVisibility::autohides(input));
}

TEST(ScreenWindows, OnlyOrdinaryWindowsOnTheScreenCountAndOnlyTheFrontAppsFillIt) {
    const std::vector<WindowList::Window> windows{
        window(7, {0, 25, 700, 500}),               // on the menu-bar screen
        window(8, {-560, -1440, 2560, 1440}),       // fills the screen above, but 8 is not in front
        window(7, {0, 0, 1440, 900}, 25),           // an overlay over everything
        window(9, {1440, 0, 300, 300}),             // beside the menu-bar screen, on neither
        window(7, {-500, -1000, 800, 600}),         // on the screen above
        window(7, {-100, -100, 300, 300}),          // straddles both screens
    };
    auto below = ScreenWindows::read(primary, primaryTop, windows, 7);
    EXPECT_FALSE(below.isFullScreen) << "the overlay is on another layer";
    EXPECT_EQ(below.windowFrames, (std::vector<Rect>{{0, 375, 700, 500}, {-100, 700, 300, 300}}));
    auto top = ScreenWindows::read(above, primaryTop, windows, 7);
    EXPECT_FALSE(top.isFullScreen);
    EXPECT_EQ(top.windowFrames.size(), 3u);

    EXPECT_TRUE(ScreenWindows::read(above, primaryTop, windows, 8).isFullScreen);
    EXPECT_FALSE(ScreenWindows::read(primary, primaryTop, windows, 8).isFullScreen);
    EXPECT_FALSE(ScreenWindows::read(above, primaryTop, windows, std::nullopt).isFullScreen);
    // A zoomed window leaves the menu bar showing; a window rounded half a point short still fills.
    EXPECT_FALSE(ScreenWindows::read(primary, primaryTop, {window(7, {0, 25, 1440, 875})}, 7).isFullScreen);
    EXPECT_TRUE(ScreenWindows::read(primary, primaryTop, {window(7, {0.5, 0, 1439, 899.5})}, 7).isFullScreen);
    EXPECT_EQ(ScreenWindows::read(Rect{}, primaryTop, windows, 7), ScreenWindows::Reading{});
}
