// The bar window's decisions, driven as the panel would drive them: pointer, presses, drags,
// scrolls and the visibility rules, on a workspace with every kind of tile.

#include "CorvaneApp/bar/BarContent.hpp"
#include "fakes/ManualScheduler.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

AppEntry app(const std::string& name, const std::string& id) { return {"/Applications/" + name + ".app", id, name}; }

class Bar : public ::testing::Test {
protected:
    Bar() {
        profile.id = Uuid::generate();
        profile.items = {app("Safari", "com.apple.Safari"), app("Mail", "com.apple.mail"), app("Xcode", "com.apple.dt.Xcode")};
        profile.others = {FileEntry{.path = "/Users/me/Downloads", .isDirectory = true},
                          FileEntry{.path = "/Users/me/notes.txt"}, URLEntry{.url = "https://example.com/"}};
        running = {{.pid = 42, .bundleIdentifier = "com.apple.mail", .path = "/Applications/Mail.app", .name = "Mail"},
                   {.pid = 7, .bundleIdentifier = "com.apple.Notes", .path = "/Applications/Notes.app", .name = "Notes"}};
        rebuild();
    }
    void rebuild(DockPosition position = DockPosition::bottom, double screenLength = 0) {
        ownership.owners[7] = {profile.id}; // Notes was opened in this workspace
        style.position = position;
        style.hoverEffect = HoverEffect::magnify;
        bar.show(barContent(&profile, widgets, style,
                            {.running = running, .ownership = &ownership, .screenLength = screenLength}));
    }
    std::size_t tileNamed(const std::string& label) const {
        for (std::size_t i = 0; i < bar.scene().tiles.size(); ++i)
            if (bar.scene().tiles[i].label == label) return i;
        ADD_FAILURE() << "no tile " << label;
        return 0;
    }
    Point centre(std::size_t tile) const {
        const auto& drawn = bar.frame().tiles[tile].drawn;
        return {drawn.midX(), drawn.midY()};
    }
    void settle() {
        for (int i = 0; i < 600 && bar.tick(1.0 / 120); ++i) {}
    }
    std::vector<std::string> itemNames(const std::vector<DockItem>& items) const {
        std::vector<std::string> names;
        for (const auto& item : items) names.push_back(item.displayName());
        return names;
    }

    ManualClock clock;
    ManualScheduler scheduler{clock};
    Profile profile;
    std::vector<RunningApp> running;
    WorkspaceOwnership ownership;
    WidgetsFile widgets;
    DockStyle style;
    std::vector<BarClick> clicks;
    std::vector<std::vector<DockItem>> edits;
    std::vector<int> steps;
    std::vector<bool> visibility;
    BarWindowController bar{scheduler,
                            {.onClick = [this](const BarClick& click) { clicks.push_back(click); },
                             .onItemsChanged = [this](std::vector<DockItem> items) { edits.push_back(std::move(items)); },
                             .onStep = [this](int step) { steps.push_back(step); },
                             .onVisibilityChange = [this](bool shown) { visibility.push_back(shown); }}};
};

} // namespace

TEST_F(Bar, AClickOnEachKindOfTileAsksForWhatThatTileIs) {
    using Kind = BarClick::Kind;
    struct Case {
        std::string tile;
        BarClick expected;
    };
    for (const auto& [tile, expected] : std::vector<Case>{
             {"Safari", {.kind = Kind::launchApp, .target = "/Applications/Safari.app"}},
             {"Mail", {.kind = Kind::activateApp, .target = "/Applications/Mail.app", .pid = 42}},
             {"Notes", {.kind = Kind::activateApp, .target = "/Applications/Notes.app", .pid = 7}},
             {"Downloads", {.kind = Kind::openStack, .target = "/Users/me/Downloads"}},
             {"notes.txt", {.kind = Kind::openFile, .target = "/Users/me/notes.txt"}},
             {"https://example.com/", {.kind = Kind::openLink, .target = "https://example.com/"}},
             {"Trash", {.kind = Kind::openTrash}}}) {
        clicks.clear();
        auto at = centre(tileNamed(tile));
        bar.pressed(at);
        bar.released({at.x + 1, at.y});
        ASSERT_EQ(clicks.size(), 1u) << tile;
        EXPECT_EQ(clicks[0], expected) << tile;
    }
    clicks.clear();
    bar.pressed(centre(tileNamed("Safari")));
    bar.released(centre(tileNamed("Xcode")));
    bar.pressed({-50, -50});
    bar.released({-50, -50});
    EXPECT_TRUE(clicks.empty()) << "a press and a release on different tiles, or on none, click nothing";
    EXPECT_EQ(bar.tileAt({0, 0}), std::nullopt);
}

TEST_F(Bar, ThePointerMagnifiesTheTileUnderItUntilItLeaves) {
    auto safari = tileNamed("Safari");
    auto resting = bar.frame().tiles[safari].drawn;
    bar.pointerMoved(centre(safari));
    EXPECT_TRUE(bar.tick(1.0 / 120)) << "the lens is on its way";
    settle();
    EXPECT_FALSE(bar.tick(1.0 / 120));
    EXPECT_EQ(bar.frame().hovered, safari);
    EXPECT_GT(bar.frame().tiles[safari].drawn.width, resting.width * 1.3);
    EXPECT_EQ(bar.tileAt(centre(safari)), safari);
    bar.pointerExited();
    settle();
    EXPECT_EQ(bar.frame().hovered, std::nullopt);
    EXPECT_EQ(bar.frame().tiles[safari].drawn, resting);
}

TEST_F(Bar, DragsReorderPinAndRemoveButOnlyPastTheThreshold) {
    auto safari = centre(tileNamed("Safari"));
    bar.pressed(safari);
    bar.dragged({safari.x + 2, safari.y});
    EXPECT_EQ(bar.draggedTile(), std::nullopt) << "a small slip is still a click";
    auto xcode = centre(tileNamed("Xcode"));
    bar.dragged({xcode.x + 10, xcode.y});
    EXPECT_EQ(bar.draggedTile(), tileNamed("Safari"));
    bar.released({xcode.x + 10, xcode.y});
    ASSERT_EQ(edits.size(), 1u);
    EXPECT_EQ(itemNames(edits[0]), (std::vector<std::string>{"Mail", "Xcode", "Safari"}));
    EXPECT_TRUE(clicks.empty());

    // A running application dragged among the pinned ones is pinned there.
    auto notes = centre(tileNamed("Notes"));
    auto mail = centre(tileNamed("Mail"));
    bar.pressed(notes);
    bar.dragged({mail.x - 10, mail.y});
    bar.released({mail.x - 10, mail.y});
    ASSERT_EQ(edits.size(), 2u);
    EXPECT_EQ(itemNames(edits[1]), (std::vector<std::string>{"Safari", "Notes", "Mail", "Xcode"}));

    // Dropped away from the bar, a pinned tile goes; the Finder never moves.
    bar.pressed(mail);
    bar.dragged({mail.x, -200});
    bar.released({mail.x, -200});
    ASSERT_EQ(edits.size(), 3u);
    EXPECT_EQ(itemNames(edits[2]), (std::vector<std::string>{"Safari", "Xcode"}));
    auto finder = centre(0);
    bar.pressed(finder);
    bar.dragged({xcode.x, xcode.y});
    bar.released({xcode.x, xcode.y});
    bar.pressed(centre(tileNamed("Downloads"))); // the documents are not reordered
    bar.dragged(xcode);
    bar.released(xcode);
    EXPECT_EQ(edits.size(), 3u);
}

TEST_F(Bar, ScrollsStepOncePerGestureAndTheWheelOncePerTurn) {
    for (int i = 0; i < 10; ++i) bar.scrolled(8, i * 0.01, true);
    EXPECT_EQ(steps, std::vector{1});
    for (int i = 0; i < 5; ++i) bar.scrolled(-8, 1 + i * 0.01, true);
    EXPECT_EQ(steps, (std::vector{1, -1}));
    bar.scrolled(-4, 3, false);
    bar.scrolled(-4, 3.05, false);
    EXPECT_EQ(steps, (std::vector{1, -1, -1}));
}

TEST_F(Bar, AnAutoHidingBarHidesAndComesBackOnlyWhenThePointerWaitsAtTheEdge) {
    DockVisibility::Input input{.screenFrame = {0, 0, 1440, 900}, .barFrame = bar.panelFrame({0, 0, 1440, 900}),
                                .pointer = {700, 500}, .autohidesByPreference = true};
    bar.updateVisibility(input, 0.5);
    EXPECT_FALSE(bar.isShown());
    input.pointer = {700, 1};
    bar.updateVisibility(input, 0.5);
    scheduler.advance(0.4);
    EXPECT_FALSE(bar.isShown());
    scheduler.advance(0.1);
    EXPECT_TRUE(bar.isShown());

    input.pointer = {700, 500};
    bar.updateVisibility(input, 0.5);
    input.pointer = {700, 1};
    bar.updateVisibility(input, 0.5);
    input.pointer = {700, 400}; // gone again before the delay ran out
    bar.updateVisibility(input, 0.5);
    scheduler.advance(1);
    EXPECT_EQ(visibility, (std::vector{false, true, false}));
    input.autohidesByPreference = false;
    bar.updateVisibility(input, 0.5);
    EXPECT_TRUE(bar.isShown());
}

TEST_F(Bar, ThePanelSitsCentredOnItsEdgeOfTheMenuBarScreen) {
    // The system lists the menu-bar screen first, wherever the key window is.
    EXPECT_EQ(BarWindowController::home({}), std::nullopt);
    auto home = BarWindowController::home({{.frame = {0, 0, 1440, 900}, .scale = 2}, {.frame = {1440, 0, 1920, 1080}}});
    EXPECT_EQ(home, (BarScreen{.frame = {0, 0, 1440, 900}, .scale = 2}));
    EXPECT_EQ(BarWindowController::home({{.frame = {0, 0, 800, 600}, .scale = 0}})->scale, 1) << "an unknown density";

    Rect screen{100, 50, 1440, 900};
    auto bottom = bar.panelFrame(screen);
    EXPECT_DOUBLE_EQ(bottom.midX(), screen.midX());
    EXPECT_DOUBLE_EQ(bottom.minY(), screen.minY());
    EXPECT_DOUBLE_EQ(bottom.width, bar.layout().width());
    rebuild(DockPosition::left);
    auto left = bar.panelFrame(screen);
    EXPECT_DOUBLE_EQ(left.minX(), screen.minX());
    EXPECT_DOUBLE_EQ(left.midY(), screen.midY());
    rebuild(DockPosition::right);
    EXPECT_DOUBLE_EQ(bar.panelFrame(screen).maxX(), screen.maxX());
}

TEST_F(Bar, ANarrowScreenShrinksTheIconsUntilTheBarFitsAndNoWorkspaceEditsNothing) {
    auto wide = bar.scene().metrics.iconSize;
    rebuild(DockPosition::bottom, 300);
    EXPECT_LT(bar.scene().metrics.iconSize, wide);
    EXPECT_LE(bar.layout().width(), 300);

    bar.show(barContent(nullptr, widgets, style, {.running = running}));
    auto first = centre(1), second = centre(2);
    bar.pressed(first);
    bar.dragged({second.x + 20, second.y});
    bar.released({second.x + 20, second.y});
    EXPECT_TRUE(edits.empty());
}
