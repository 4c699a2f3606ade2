#include "CorvaneCore/bar/DockTileGeometry.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(DockTileGeometry, IconCenterSnapsToTheSlotUnderThePointer) {
    EXPECT_EQ(DockTileGeometry::pitch(48), 51);
    EXPECT_EQ(DockTileGeometry::inset(48), 6);
    // Slots start at 100 + 6 and are 51 wide.
    EXPECT_EQ(DockTileGeometry::iconCenter(0, 100, 48), 131.5);
    EXPECT_EQ(DockTileGeometry::iconCenter(106, 100, 48), 131.5);
    EXPECT_EQ(DockTileGeometry::iconCenter(156.9, 100, 48), 131.5);
    EXPECT_EQ(DockTileGeometry::iconCenter(157, 100, 48), 182.5);
    EXPECT_EQ(DockTileGeometry::iconCenter(400, 100, 48), 386.5); // slot 5
}

TEST(DockTileGeometry, DrawnFrameStaysOnTheScreenEdge) {
    const Rect resting{10, 20, 48, 48};
    EXPECT_EQ(DockTileGeometry::drawnFrame(resting, 2, 5, DockPosition::bottom), (Rect{-9, -28, 96, 96}));
    EXPECT_EQ(DockTileGeometry::drawnFrame(resting, 2, 5, DockPosition::left), (Rect{10, 1, 96, 96}));
    EXPECT_EQ(DockTileGeometry::drawnFrame(resting, 2, 5, DockPosition::right), (Rect{-38, 1, 96, 96}));
    EXPECT_EQ(DockTileGeometry::drawnFrame(resting, 1, 0, DockPosition::bottom), resting);
}
