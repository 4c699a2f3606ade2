#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

DockItem app(std::string path, std::optional<std::string> bundle = std::nullopt) {
    return AppEntry{std::move(path), std::move(bundle), std::nullopt, std::nullopt};
}

RunningApp running(std::int32_t pid, std::optional<std::string> bundle,
                   std::optional<std::string> path = std::nullopt, std::set<std::uint64_t> desktops = {}) {
    return RunningApp{pid, std::move(bundle), std::move(path), "app " + std::to_string(pid),
                      std::move(desktops)};
}

Uuid uuid(int n) {
    return *Uuid::parse("00000000-0000-0000-0000-" + std::string(12 - std::to_string(n).size(), '0') +
                        std::to_string(n));
}

std::vector<std::string> ids(const std::vector<DockTileModel>& tiles) {
    std::vector<std::string> result;
    for (const auto& tile : tiles)
        result.push_back(tile.id);
    return result;
}

std::optional<std::int32_t> litBy(const DockTileModel& tile) {
    auto model = tile.app();
    if (!model || !model->running) return std::nullopt;
    return model->running->pid;
}

auto never = [](const std::string&) { return false; };

} // namespace

TEST(WorkspaceDockLayout, WithoutAWorkspaceEveryOtherRunningAppShows) {
    std::vector<RunningApp> apps{
        running(1, "com.apple.finder", "/System/Library/CoreServices/Finder.app"),
        running(2, "com.example.mail", "/Applications/Mail.app", {7}),
        running(3, "dev.tessik.Corvane", "/Applications/Corvane.app"),
        running(4, "dev.tessik.Corvane.Slot3"),
        running(5, "com.spotify.client"),
        running(6, std::nullopt, "/opt/tool"),
        running(7, "dev.tessik.CorvaneHelper"),
    };
    WorkspaceDockLayout layout(
        {.running = apps,
         .currentDesktop = 9,
         .filterByDesktop = true,
         .addsLauncher = true,
         .replacing = {"com.spotify.client"},
         .ownApp = "/Applications/Corvane.app",
         .fileExists = [](const std::string& path) { return path == "/System/Applications/Launchpad.app"; }});
    EXPECT_EQ(ids(layout.apps),
              (std::vector<std::string>{"finder", "launcher", "pid-2", "pid-6", "pid-7", "own"}));
    EXPECT_EQ(layout.runningStart, 2u);
    EXPECT_EQ(litBy(layout.apps[0]), 1);
    EXPECT_EQ(layout.apps[1].app()->entry, WorkspaceDockLayout::launchpad());
    EXPECT_FALSE(layout.apps[2].app()->entry);
    // The own tile has no pinned entry and is lit by the app's own process.
    EXPECT_FALSE(layout.apps.back().app()->entry);
    EXPECT_EQ(litBy(layout.apps.back()), 3);
    EXPECT_TRUE(layout.others.empty());

    EXPECT_EQ(WorkspaceDockLayout::finder().path, "file:///System/Library/CoreServices/Finder.app/");
    EXPECT_EQ(ids(WorkspaceDockLayout({.addsLauncher = true, .fileExists = never}).apps),
              std::vector<std::string>{"finder"});
}

TEST(WorkspaceDockLayout, WorkspaceItemsKeepTheirIndicesInTheirIds) {
    Profile profile{.id = uuid(1), .name = "Work"};
    profile.items = {app("/Applications/Safari.app", "com.apple.Safari"),
                     SpacerVariant::flex,
                     app("/System/Library/CoreServices/Finder.app", "com.apple.finder"),
                     FileEntry{.path = "/Users/me/notes.txt"},
                     app("/Applications/Safari.app", "com.apple.Safari"),
                     app("/Applications/Mail.app")};
    profile.others = {FileEntry{.path = "/Users/me/Downloads", .isDirectory = true}, SpacerVariant::small,
                      app("/Applications/Notes.app"), URLEntry{.url = "https://example.com"}};
    std::vector<RunningApp> apps{running(10, "com.apple.Safari"), running(11, "com.apple.Safari"),
                                 running(12, std::nullopt, "/Applications/Mail.app")};
    WorkspaceOwnership ownership;
    WorkspaceDockLayout layout({.active = &profile, .running = apps, .ownership = &ownership});

    EXPECT_EQ(ids(layout.apps), (std::vector<std::string>{"finder", "pinned-0-/Applications/Safari.app",
                                                          "spacer-1", "pinned-4-/Applications/Safari.app",
                                                          "pinned-5-/Applications/Mail.app"}));
    EXPECT_EQ(layout.runningStart, layout.apps.size());
    // One process lights one tile, the earliest; the second Safari process lights the copy.
    EXPECT_EQ(litBy(layout.apps[1]), 10);
    EXPECT_EQ(litBy(layout.apps[3]), 11);
    EXPECT_EQ(litBy(layout.apps[4]), 12);
    auto oneSafari = WorkspaceDockLayout({.active = &profile, .running = std::span(apps).first(1)});
    EXPECT_EQ(litBy(oneSafari.apps[1]), 10);
    EXPECT_FALSE(litBy(oneSafari.apps[3]));
    EXPECT_EQ(ids(layout.others),
              (std::vector<std::string>{"other-0-/Users/me/Downloads", "other-3-https://example.com"}));

    // A pinned launcher (found by bundle identifier or by path) leaves no room for another.
    profile.items.push_back(app("/System/Applications/Launchpad.app"));
    auto always = [](const std::string&) { return true; };
    EXPECT_EQ(
        WorkspaceDockLayout({.active = &profile, .addsLauncher = true, .fileExists = always}).apps[1].id,
        "pinned-0-/Applications/Safari.app");
    profile.items.pop_back();
    AppEntry chosen{"/Applications/Raycast.app", "com.raycast.macos", std::nullopt, std::nullopt};
    auto withLauncher = WorkspaceDockLayout({.active = &profile, .addsLauncher = true, .launcher = chosen});
    EXPECT_EQ(withLauncher.apps[1].app()->entry, chosen);
}

TEST(WorkspaceDockLayout, RunningAppsShowWhenTheActiveWorkspaceOwnsThemOnAShownDesktop) {
    Profile profile{.id = uuid(1), .name = "Work"};
    std::vector<RunningApp> apps{
        running(1, "a.owned"),                    // no desktops known: always shown
        running(2, "a.elsewhere"),                // owned by another workspace only
        running(3, "a.nobody"),                   // owned by nobody
        running(4, "a.here", std::nullopt, {5}),  // on the current desktop
        running(5, "a.other", std::nullopt, {6}), // on a desktop shown on another display
        running(6, "a.hidden", std::nullopt, {7}),
    };
    WorkspaceOwnership ownership;
    for (int pid : {1, 4, 5, 6})
        ownership.assign(pid, uuid(1));
    ownership.assign(2, uuid(2));
    ownership.owners[3] = {};

    WorkspaceDockLayout::Inputs inputs{.active = &profile,
                                       .running = apps,
                                       .ownership = &ownership,
                                       .currentDesktop = 5,
                                       .visibleDesktops = {5, 6}};
    EXPECT_EQ(ids(WorkspaceDockLayout(inputs).apps),
              (std::vector<std::string>{"finder", "pid-1", "pid-4", "pid-5", "pid-6"}));
    inputs.filterByDesktop = true;
    EXPECT_EQ(ids(WorkspaceDockLayout(inputs).apps),
              (std::vector<std::string>{"finder", "pid-1", "pid-4", "pid-5"}));
    inputs.currentDesktop = std::nullopt;
    EXPECT_EQ(WorkspaceDockLayout(inputs).apps.size(), 5u);
}

TEST(WorkspaceDockLayout, PlaceholdersBecomeWidgetAndStackTiles) {
    auto slot = [](std::string tail) {
        return app("/Applications/Corvane Slot.app", "dev.tessik.Corvane.Slot" + tail);
    };
    auto widget = [](const Uuid& id) {
        return app("/Applications/Helper.app", DockSlot::widgetBundleIdentifier(id));
    };
    Profile profile{.id = uuid(1), .name = "Widgets"};
    profile.items = {slot("0"),        slot("13"),
                     slot("x"),        slot("1"),
                     slot("12"),       widget(uuid(20)),
                     widget(uuid(21)), app("/a.app", "dev.tessik.Corvane.Widget.not-a-uuid")};
    WorkspaceDockLayout::Inputs inputs{.active = &profile};
    EXPECT_EQ(ids(WorkspaceDockLayout(inputs).apps),
              (std::vector<std::string>{"finder", "pinned-0-/Applications/Corvane Slot.app",
                                        "pinned-1-/Applications/Corvane Slot.app",
                                        "pinned-2-/Applications/Corvane Slot.app", "widget-3-slot1",
                                        "widget-4-slot12", "widget-5-" + uuid(20).string(),
                                        "widget-6-" + uuid(21).string(), "pinned-7-/a.app"}));

    // Slot 12 is held by widget 22; 20, 21 and 22 stack together; a one-widget stack is ignored.
    profile.stacks = {{uuid(90), {uuid(21), uuid(22), uuid(20), uuid(23)}}, {uuid(91), {uuid(30)}}};
    profile.items.push_back(widget(uuid(30)));
    inputs.slotOwners = {{12, uuid(22)}};
    auto layout = WorkspaceDockLayout(inputs);
    EXPECT_EQ(ids(layout.apps),
              (std::vector<std::string>{"finder", "pinned-0-/Applications/Corvane Slot.app",
                                        "pinned-1-/Applications/Corvane Slot.app",
                                        "pinned-2-/Applications/Corvane Slot.app", "widget-3-slot1",
                                        "stack-4-" + uuid(90).string(), "pinned-7-/a.app",
                                        "widget-8-" + uuid(30).string()}));
    auto stack = layout.apps[5].stack();
    ASSERT_TRUE(stack);
    EXPECT_EQ(ids(stack->members),
              (std::vector<std::string>{"widget-6-" + uuid(21).string(), "widget-4-slot12",
                                        "widget-5-" + uuid(20).string()}));
    EXPECT_EQ(stack->members[1].widget()->address, WidgetAddress::slot(12));

    // With only one member placed, that member shows as a plain widget.
    profile.items.erase(profile.items.begin() + 4, profile.items.begin() + 6);
    EXPECT_EQ(WorkspaceDockLayout(inputs).apps[5].id, "widget-4-" + uuid(21).string());
}
