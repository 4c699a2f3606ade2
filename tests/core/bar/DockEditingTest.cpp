#include "CorvaneCore/bar/DockEditing.hpp"
#include "CorvaneCore/bar/DockReorder.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

DockItem app(std::string path, std::optional<std::string> bundle = std::nullopt) {
    return AppEntry{std::move(path), std::move(bundle), std::nullopt, std::nullopt};
}

Uuid uuid(int n) {
    return *Uuid::parse("00000000-0000-0000-0000-0000000000" + std::to_string(10 + n));
}

std::vector<std::string> paths(const std::vector<DockItem>& items) {
    std::vector<std::string> result;
    for (const auto& item : items)
        result.push_back(item.app()    ? item.app()->path
                         : item.file() ? item.file()->path
                                       : item.displayName());
    return result;
}

struct Bar {
    Profile profile{.id = uuid(1), .name = "Work"};
    std::vector<RunningApp> running;
    WorkspaceOwnership ownership;

    Bar() {
        auto widget = [](int n) { return app("/W.app", DockSlot::widgetBundleIdentifier(uuid(n))); };
        profile.items = {
            app("/A.app", "a"), app("/System/Library/CoreServices/Finder.app", "com.apple.finder"),
            widget(5),          app("/B.app", "b"),
            widget(6),          FileEntry{.path = "/notes.txt"}};
        profile.stacks = {{uuid(9), {uuid(5), uuid(6)}}};
        running = {RunningApp{42, "c", "file:///Applications/C%20D.app/", "C D", {}}};
        ownership.assign(42, profile.id);
    }
    WorkspaceDockLayout layout() const {
        return WorkspaceDockLayout({.active = &profile,
                                    .running = running,
                                    .ownership = &ownership,
                                    .addsLauncher = true,
                                    .ownApp = "/Corvane.app",
                                    .fileExists = [](const std::string&) { return true; }});
    }
};

} // namespace

TEST(DockEditing, PinnedIndexReadsOnlyStoredItemTiles) {
    const std::vector<std::pair<std::string, std::optional<std::size_t>>> cases = {
        {"pinned-3-/Applications/Safari-Beta.app", 3},
        {"spacer-0", 0},
        {"widget-12-slot4", 12},
        {"stack-2-ABC", 2},
        {"pinned--7-/x", 7},
        {"pinned-+4-/x", 4},
        {"finder", std::nullopt},
        {"launcher", std::nullopt},
        {"pid-42", std::nullopt},
        {"own", std::nullopt},
        {"other-0-/Users/me", std::nullopt},
        {"pinned-x-/a", std::nullopt},
        {"pinned", std::nullopt},
        {"spacer--1", 1},
        {"spacer-1x", std::nullopt}};
    for (const auto& [id, index] : cases) {
        EXPECT_EQ(DockEditing::pinnedIndex(id), index) << id;
        EXPECT_EQ(DockEditing::isRemovable(DockTileModel{id, SpacerVariant::small}), index.has_value()) << id;
    }
}

TEST(DockEditing, RemovingTakesOutOnlyTheOneStoredItem) {
    Bar bar;
    auto layout = bar.layout();
    for (std::string id : {"finder", "launcher", "pid-42", "own", "pinned-9-/A.app", "nothing"})
        EXPECT_EQ(DockEditing::itemsAfterRemoving(id, layout, bar.profile), bar.profile.items) << id;
    EXPECT_EQ(paths(DockEditing::itemsAfterRemoving("pinned-3-/B.app", layout, bar.profile)),
              (std::vector<std::string>{"/A.app", "/System/Library/CoreServices/Finder.app", "/W.app",
                                        "/W.app", "/notes.txt"}));
    // A stack tile names its first placeholder only.
    auto withoutStack = DockEditing::itemsAfterRemoving("stack-2-" + uuid(9).string(), layout, bar.profile);
    EXPECT_EQ(withoutStack.size(), 5u);
    EXPECT_EQ(withoutStack[3].app()->bundleIdentifier, DockSlot::widgetBundleIdentifier(uuid(6)));
}

TEST(DockEditing, MovingReordersKeepsEverythingAndPinsARunningApp) {
    Bar bar;
    auto layout = bar.layout();
    ASSERT_EQ(layout.apps.size(), 7u); // finder launcher A stack B pid-42 own

    // Nothing goes in front of the Finder, and the Finder itself never moves.
    EXPECT_EQ(paths(DockEditing::itemsAfterMoving("pinned-3-/B.app", 0, layout, bar.profile)),
              (std::vector<std::string>{"/B.app", "/System/Library/CoreServices/Finder.app", "/A.app",
                                        "/W.app", "/W.app", "/notes.txt"}));
    EXPECT_EQ(DockEditing::itemsAfterMoving("finder", 4, layout, bar.profile), bar.profile.items);
    EXPECT_EQ(DockEditing::itemsAfterMoving("missing", 4, layout, bar.profile), bar.profile.items);
    EXPECT_EQ(DockEditing::itemsAfterMoving("own", 2, layout, bar.profile), bar.profile.items);

    // Dragged right past B, A lands after it; the hidden items return to their old places.
    EXPECT_EQ(paths(DockEditing::itemsAfterMoving("pinned-0-/A.app", 5, layout, bar.profile)),
              (std::vector<std::string>{"/W.app", "/System/Library/CoreServices/Finder.app", "/B.app",
                                        "/A.app", "/W.app", "/notes.txt"}));

    auto pinned = DockEditing::itemsAfterMoving("pid-42", 3, layout, bar.profile);
    ASSERT_EQ(pinned.size(), 7u);
    // Placed after A; the Finder's own item returns to its old index in front of it.
    EXPECT_EQ(pinned[2].app()->path, "/Applications/C D.app");
    EXPECT_EQ(pinned[2].app()->bundleIdentifier, "c");
    EXPECT_EQ(pinned[2].app()->displayName, "C D");
    EXPECT_EQ(paths(pinned)[0], "/A.app");
}

TEST(DockEditing, InsertingGoesAfterThePinnedTilesBeforeTheDropAndSkipsDuplicates) {
    Bar bar;
    auto layout = bar.layout();
    AppEntry c{"/C.app", "c", std::nullopt, std::nullopt};
    AppEntry sameBundleAsA{"/Other/A.app", "a", std::nullopt, std::nullopt};
    AppEntry samePathAsB{"/B.app", std::nullopt, std::nullopt, std::nullopt};
    AppEntry d{"/D.app", std::nullopt, std::nullopt, std::nullopt};
    auto inserted =
        DockEditing::itemsAfterInserting({c, sameBundleAsA, samePathAsB, d, d}, 4, layout, bar.profile);
    EXPECT_EQ(paths(inserted),
              (std::vector<std::string>{"/A.app", "/System/Library/CoreServices/Finder.app", "/W.app",
                                        "/C.app", "/D.app", "/B.app", "/W.app", "/notes.txt"}));
    EXPECT_EQ(paths(DockEditing::itemsAfterInserting({d}, -3, layout, bar.profile)).front(), "/D.app");
    EXPECT_EQ(paths(DockEditing::itemsAfterInserting({d}, 100, layout, bar.profile))[4], "/D.app");
}

TEST(DockEditing, GatheringBringsStackMembersTogetherWhereTheFirstStands) {
    std::vector<DockItem> items{app("/1", "x"),       app("/2", "m2"), app("/3", "y"),
                                SpacerVariant::small, app("/4", "m1"), app("/5", "z")};
    EXPECT_EQ(paths(DockEditing::gathering({"m1", "m2"}, items)),
              (std::vector<std::string>{"/1", "/4", "/2", "/3", "Small spacer", "/5"}));
    EXPECT_EQ(DockEditing::gathering({"m1", "absent"}, items), items);
    EXPECT_EQ(DockEditing::gathering({}, items), items);
}

TEST(DockReorder, DragGeometry) {
    const std::vector<double> centers{10, 20, 30, 40};
    EXPECT_EQ(DockReorder::dropIndex({}, 5), 0u);
    EXPECT_EQ(DockReorder::dropIndex(centers, 30), 2u);
    EXPECT_EQ(DockReorder::dropIndex(centers, 31), 3u);

    EXPECT_EQ(DockReorder::insertionIndex(50, {}, 0), 0u);
    EXPECT_EQ(DockReorder::insertionIndex(50, {10}, 0), 0u);
    EXPECT_EQ(DockReorder::insertionIndex(0, centers, 2), 1u);
    EXPECT_EQ(DockReorder::insertionIndex(25, centers, 3), 2u);
    EXPECT_EQ(DockReorder::insertionIndex(35, centers, 1), 2u);
    EXPECT_EQ(DockReorder::insertionIndex(99, centers, 1), 3u);
    EXPECT_EQ(DockReorder::insertionIndex(99, centers, 9), 3u);

    EXPECT_EQ(DockReorder::target(centers, 25, 9), 9u);
    EXPECT_EQ(DockReorder::target(centers, 15, 3), 1u);
    EXPECT_EQ(DockReorder::target(centers, 5, 3), 0u);
    EXPECT_EQ(DockReorder::target(centers, 35, 1), 2u);
    EXPECT_EQ(DockReorder::target(centers, 99, 0), 3u);
    EXPECT_EQ(DockReorder::target(centers, 20, 1), 1u);

    EXPECT_EQ(DockReorder::shift(2, 2, 4, 50), 0);
    EXPECT_EQ(DockReorder::shift(3, 1, std::nullopt, 50), -50);
    EXPECT_EQ(DockReorder::shift(0, 1, std::nullopt, 50), 0);
    EXPECT_EQ(DockReorder::shift(3, 1, 3, 50), -50);
    EXPECT_EQ(DockReorder::shift(4, 1, 3, 50), 0);
    EXPECT_EQ(DockReorder::shift(1, 3, 1, 50), 50);
    EXPECT_EQ(DockReorder::shift(0, 3, 1, 50), 0);

    EXPECT_EQ(DockReorder::movePosition(3, 1), 1u);
    EXPECT_EQ(DockReorder::movePosition(1, 3), 4u);
    EXPECT_EQ(DockReorder::moving(std::vector<int>{1, 2, 3, 4}, 0, 2), (std::vector<int>{2, 3, 1, 4}));
    EXPECT_EQ(DockReorder::moving(std::vector<int>{1, 2, 3}, 0, 3), (std::vector<int>{1, 2, 3}));
}
