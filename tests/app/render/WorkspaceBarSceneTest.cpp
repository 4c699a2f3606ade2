#include "CorvaneApp/looks/IconOverrides.hpp"
#include "CorvaneApp/render/BarIcons.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "app/render/Pixels.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include "CorvaneApp/render/Cairo.hpp"
#include <gtest/gtest.h>


using namespace corvane;

namespace {

using Kind = BarTile::Kind;

std::vector<Kind> kindsOf(const std::vector<BarTile>& tiles) {
    std::vector<Kind> kinds;
    for (const auto& tile : tiles) kinds.push_back(tile.kind);
    return kinds;
}

const std::string downloads = "/Users/sam/Downloads";

// A PNG of one opaque colour, as an icon pack holds them.
void writeSquarePNG(const std::filesystem::path& file, double red, double green, double blue) {
    std::filesystem::create_directories(file.parent_path());
    auto* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 16, 16);
    auto* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, red, green, blue);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(surface, file.c_str());
    cairo_surface_destroy(surface);
}

Drawing draw(std::vector<BarTile> tiles) {
    DockStyle style;
    style.themeID = "floating";
    return Drawing(sceneOf(std::move(tiles), style));
}

} // namespace

TEST(WorkspaceBarScene, TheLayoutsTilesAreDrawnWithTheirRunningStateAndDocumentsBehindASeparator) {
    auto weather = Uuid::generate(), tea = Uuid::generate(), clock = Uuid::generate();
    WidgetsFile widgets;
    widgets.widgets.push_back(
        DockWidget(weather, "Outside", std::nullopt, DockWidgetKind::defaults(WidgetKind::weather), 2));
    widgets.widgets.push_back(DockWidget(tea, "Tea", 4, DockWidgetKind::defaults(WidgetKind::timer)));
    widgets.widgets.push_back(DockWidget(clock, "Clock", std::nullopt, DockWidgetKind::defaults(WidgetKind::clock)));

    Profile work;
    work.items = {AppEntry{"file:///System/Library/CoreServices/Finder.app/", "com.apple.finder"},
                  AppEntry{"file:///Applications/Visual%20Studio%20Code.app/", "com.microsoft.VSCode"},
                  SpacerVariant::small,
                  AppEntry{"/Applications/Corvane.app", DockSlot::widgetBundleIdentifier(weather)},
                  AppEntry{"/Applications/Corvane.app", DockSlot::bundleIdentifier(4)},
                  AppEntry{"/Applications/Corvane.app", DockSlot::widgetBundleIdentifier(clock)},
                  AppEntry{"/Applications/Mail.app", "com.apple.mail"}};
    work.stacks = {WidgetStack{Uuid::generate(), {tea, clock}}};
    work.others = {FileEntry{"file:///Users/sam/Downloads/", std::nullopt, true},
                   FileEntry{"/Users/sam/Projects", "Projects", true, std::nullopt, "#22C55E"},
                   FileEntry{"/Users/sam/Report.pdf"}, URLEntry{"https://example.com", "Example"}};
    std::vector<RunningApp> running = {
        {.pid = 10, .bundleIdentifier = "com.apple.finder", .name = "Finder"},
        {.pid = 11, .bundleIdentifier = "com.apple.mail", .name = "Mail"},
        {.pid = 12, .bundleIdentifier = "com.apple.Notes", .path = "/System/Applications/Notes.app", .name = "Notes"}};
    WorkspaceDockLayout layout({.active = &work, .running = running, .slotOwners = slotOwners(widgets)});

    std::vector<std::string> asked;
    auto icon = std::make_shared<const BarImage>(BarImage{1, 1, {0xff00ff00U}});
    DockStyle style;
    BarTileSources sources{.widgets = widgets,
                           .style = style,
                           .downloads = downloads,
                           .trashIsFull = true,
                           .icons = [&](const std::string& path) {
                               asked.push_back(path);
                               return path.ends_with("Mail.app") ? icon : nullptr;
                           },
                           .captions = [&](const Uuid& id) -> std::optional<std::string> {
                               if (id == weather) return "21°";
                               if (id == tea) return "4:59";
                               return std::nullopt;
                           }};
    auto tiles = workspaceBarTiles(layout, sources);
    ASSERT_EQ(kindsOf(tiles), (std::vector<Kind>{Kind::app, Kind::app, Kind::spacer, Kind::widget, Kind::widget,
                                                 Kind::app, Kind::separator, Kind::downloads, Kind::folder,
                                                 Kind::file, Kind::link, Kind::trash}));
    EXPECT_EQ(tiles[0].label, "Finder");
    EXPECT_TRUE(tiles[0].isRunning);
    EXPECT_EQ(tiles[1].label, "Visual Studio Code");
    EXPECT_FALSE(tiles[1].isRunning);
    EXPECT_EQ(tiles[2].spacer, SpacerVariant::small);
    EXPECT_EQ(tiles[3].label, "Outside");
    EXPECT_EQ(tiles[3].span, 2);
    // The slot's timer and the clock stand as one stack, where the first placeholder was.
    EXPECT_EQ(tiles[4].widgetKind, WidgetKind::timer);
    // Each widget card shows its live reading; a stack shows its front member's.
    EXPECT_EQ(tiles[3].caption, "21°");
    EXPECT_EQ(tiles[4].caption, "4:59");
    EXPECT_EQ(tiles[5].label, "Mail");
    EXPECT_TRUE(tiles[5].isRunning);
    EXPECT_EQ(tiles[5].image, icon);
    EXPECT_FALSE(tiles[1].image);
    // Notes runs without belonging to the workspace, so it is not shown while one is active.
    EXPECT_EQ(asked, (std::vector<std::string>{"/System/Library/CoreServices/Finder.app",
                                               "/Applications/Visual Studio Code.app", "/Applications/Mail.app"}));
    // Downloads stays where the workspace keeps it, even written as a URL with a slash.
    EXPECT_EQ(tiles[7].label, "Downloads");
    EXPECT_EQ(tiles[8].badgeColorHex, "#22C55E");
    EXPECT_EQ(tiles[8].badgeText, "P");
    EXPECT_EQ(tiles[9].label, "Report.pdf");
    EXPECT_EQ(tiles[10].label, "Example");
    EXPECT_TRUE(tiles[11].isFull);

    // Without a workspace every running application shows, unless the style hides them.
    WorkspaceDockLayout bare({.running = running});
    EXPECT_EQ(kindsOf(workspaceBarTiles(bare, sources)),
              (std::vector<Kind>{Kind::app, Kind::app, Kind::app, Kind::separator, Kind::trash}));
    sources.trashIsFull = false;
    EXPECT_FALSE(workspaceBarTiles(bare, sources).back().isFull);
    style.showsRunningApps = false;
    style.showsTrash = false;
    EXPECT_EQ(kindsOf(workspaceBarTiles(bare, sources)), (std::vector<Kind>{Kind::app}));

    // The style hides Downloads where the workspace holds it; it is never made up.
    style.showsDownloads = false;
    auto hidden = workspaceBarTiles(layout, sources);
    EXPECT_EQ(std::count(hidden.begin(), hidden.end(), BarTile{.kind = Kind::separator}), 1);
    EXPECT_EQ(kindsOf(hidden)[7], Kind::folder);
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

TEST(WorkspaceBarScene, AnIconPacksImageIsDrawnForTheAppItMatches) {
    TemporaryDirectory data;
    writeSquarePNG(data / "IconPacks/Mono/Safari.png", 1, 0, 0);
    writeSquarePNG(data / "IconPacks/Flat/com.apple.Safari.png", 0, 0, 1);
    IconOverrides overrides(data.path());
    overrides.useForAllApps("Mono");

    // A bundle on disk, so that its identifier is read as on a Mac.
    auto safariApp = data / "Applications/Safari.app";
    writeText(safariApp / "Contents/Info.plist",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
              "<key>CFBundleIdentifier</key><string>com.apple.Safari</string></dict></plist>\n");
    Profile work;
    work.items = {AppEntry{safariApp.string(), "com.apple.Safari"},
                  AppEntry{"file:///Applications/Notes.app/", "com.apple.Notes"}};
    WorkspaceDockLayout layout({.active = &work});
    WidgetsFile widgets;
    DockStyle style;
    style.showsTrash = false;
    auto drawn = [&](BarIconSource icons) {
        return draw(workspaceBarTiles(layout, {.widgets = widgets, .style = style, .icons = std::move(icons)}));
    };

    auto centre = [](const Drawing& bar, std::size_t tile) {
        const auto& r = bar.frame.tiles[tile].drawn;
        return pixelAt(bar.image, r.midX(), r.midY());
    };
    auto chosen = drawn(barIcons(overrides));
    expectColor(centre(chosen, 1), {1, 0, 0}, 1, "Safari from the pack", 0.02);
    // The pack has nothing for Notes: its placeholder is drawn, in no colour of the pack.
    auto notes = centre(chosen, 2);
    EXPECT_LT(notes.red - notes.blue, 0.5);

    // A pack named for the picture stands in for the user's choice.
    expectColor(centre(drawn(barIcons(overrides, overrides.pack("Flat"))), 1), {0, 0, 1}, 1, "previewed pack", 0.02);
}
