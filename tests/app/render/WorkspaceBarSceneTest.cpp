#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

using Kind = BarTile::Kind;

std::vector<Kind> kindsOf(const std::vector<BarTile>& tiles) {
    std::vector<Kind> kinds;
    for (const auto& tile : tiles) kinds.push_back(tile.kind);
    return kinds;
}

} // namespace

TEST(WorkspaceBarScene, AWorkspaceShowsItsItemsBetweenTheFinderAndTheTrash) {
    auto weather = Uuid::generate();
    WidgetsFile widgets;
    widgets.widgets.push_back(
        DockWidget(weather, "Outside", std::nullopt, DockWidgetKind::defaults(WidgetKind::weather), 2));
    widgets.widgets.push_back(DockWidget(Uuid::generate(), "Tea", 4, DockWidgetKind::defaults(WidgetKind::timer)));

    Profile work;
    work.items = {AppEntry{"file:///System/Library/CoreServices/Finder.app/", "com.apple.finder"},
                  AppEntry{"file:///Applications/Visual%20Studio%20Code.app/", "com.microsoft.VSCode"},
                  SpacerVariant::small,
                  AppEntry{"/Applications/Corvane.app", DockSlot::widgetBundleIdentifier(weather)},
                  AppEntry{"/Applications/Corvane.app", DockSlot::bundleIdentifier(4)},
                  AppEntry{"/Applications/Corvane.app", DockSlot::bundleIdentifier(9)},
                  FileEntry{"/Users/sam/notes.txt"}};
    work.others = {FileEntry{"file:///Users/sam/Downloads/", std::nullopt, true},
                   FileEntry{"/Users/sam/Projects", "Projects", true, std::nullopt, "#22C55E"},
                   FileEntry{"/Users/sam/Report.pdf"}, URLEntry{"https://example.com", "Example"}};

    auto tiles = workspaceBarTiles(&work, widgets, DockStyle{});
    EXPECT_EQ(kindsOf(tiles), (std::vector<Kind>{Kind::app, Kind::app, Kind::spacer, Kind::widget, Kind::widget,
                                                 Kind::widget, Kind::separator, Kind::downloads, Kind::folder,
                                                 Kind::file, Kind::link, Kind::trash}));
    // The Finder comes first, once, and is the one application known to run.
    EXPECT_EQ(tiles[0].label, "Finder");
    EXPECT_TRUE(tiles[0].isRunning);
    EXPECT_EQ(tiles[1].label, "Visual Studio Code");
    EXPECT_FALSE(tiles[1].isRunning);
    EXPECT_EQ(tiles[2].spacer, SpacerVariant::small);
    // Widgets by id and by slot; a slot nobody holds still keeps its place.
    EXPECT_EQ(tiles[3].widgetKind, WidgetKind::weather);
    EXPECT_EQ(tiles[3].span, 2);
    EXPECT_EQ(tiles[3].label, "Outside");
    EXPECT_EQ(tiles[4].widgetKind, WidgetKind::timer);
    EXPECT_FALSE(tiles[5].widgetKind);
    EXPECT_EQ(tiles[8].badgeColorHex, "#22C55E");
    EXPECT_EQ(tiles[8].badgeText, "P");
    EXPECT_EQ(tiles[9].label, "Report.pdf");
    EXPECT_EQ(tiles[10].label, "Example");

    // The style decides on Downloads and the Trash; with neither and no documents there is no
    // separator either.
    DockStyle plain;
    plain.showsTrash = false;
    plain.showsDownloads = false;
    work.others.clear();
    EXPECT_EQ(kindsOf(workspaceBarTiles(&work, widgets, plain)).back(), Kind::widget);
    EXPECT_EQ(kindsOf(workspaceBarTiles(nullptr, widgets, DockStyle{})),
              (std::vector<Kind>{Kind::app, Kind::separator, Kind::downloads, Kind::trash}));
}

TEST(WorkspaceBarScene, TheIndicatorFollowsTheWorkspaceUnlessTheStyleHasItsOwn) {
    Profile work;
    work.color = ProfileColor::green;
    DockStyle style;
    style.themeID = "neon";
    auto scene = makeBarScene({}, style, style.applied(DockAppearance{}), &work);
    EXPECT_EQ(scene.indicatorHex, std::string(hex(ProfileColor::green)));
    EXPECT_EQ(scene.theme.id, "neon");
    EXPECT_EQ(scene.metrics.iconSize, 48);
    style.indicatorFollowsWorkspace = false;
    style.iconSize = 64;
    scene = makeBarScene({}, style, style.applied(DockAppearance{}), &work);
    EXPECT_EQ(scene.indicatorHex, "#00E5FF");
    EXPECT_EQ(scene.metrics.iconSize, 64);
}
