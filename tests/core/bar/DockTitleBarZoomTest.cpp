#include "CorvaneCore/bar/DockTitleBarZoom.hpp"

#include <gtest/gtest.h>

using namespace corvane;
TEST(DockTitleBarZoom, HitsTheTitleBarBackgroundOnly) {
    // Top-down: the close button's centre is 13 points below the top edge, so the bar is 26 deep.
    const Rect window{100, 50, 800, 600};
    const Rect closeButton{107, 56, 14, 14};
    EXPECT_EQ(DockTitleBarZoom::titleBarDepth(window, closeButton), 26);
    EXPECT_EQ(DockTitleBarZoom::titleBarDepth(window, Rect{107, 20, 14, 14}), 0);

    struct Case {
        Point point;
        std::optional<std::string_view> role;
        bool hit;
    };
    const Case cases[] = {
        {{500, 76}, std::nullopt, true}, {{500, 77}, std::nullopt, false}, {{500, 50}, "AXGroup", true},
        {{900, 60}, std::nullopt, true}, {{901, 60}, std::nullopt, false}, {{500, 49}, std::nullopt, false},
        {{500, 60}, "AXButton", false},  {{500, 60}, "AXSplitter", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DockTitleBarZoom::isTitleBarHit(c.point, window, closeButton, c.role), c.hit)
            << c.point.x << "," << c.point.y << " " << c.role.value_or("-");
    EXPECT_FALSE(DockTitleBarZoom::isTitleBarHit({500, 60}, window, std::nullopt, std::nullopt));
}

TEST(DockTitleBarZoom, FillTogglesBetweenTheUsableFrameAndTheRestoreFrame) {
    const Rect usable{0, 25, 1440, 807};
    const Rect small{200, 200, 600, 400};
    EXPECT_EQ(DockTitleBarZoom::target(small, usable, std::nullopt), usable);
    EXPECT_EQ(DockTitleBarZoom::target(Rect{2, 23, 1438, 809}, usable, small), small);
    EXPECT_FALSE(DockTitleBarZoom::target(usable, usable, std::nullopt));
    EXPECT_FALSE(DockTitleBarZoom::target(usable, usable, Rect{1, 26, 1440, 806}));
    EXPECT_FALSE(DockTitleBarZoom::isNear(Rect{3, 25, 1440, 807}, usable));
}
