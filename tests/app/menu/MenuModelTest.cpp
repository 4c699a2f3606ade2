// The menu-bar menu as a model: what it shows for a state, and what each of its actions does to
// a running application state.

#include "CorvaneApp/menu/MenuActions.hpp"
#include "CorvaneApp/automation/WantedHotkeys.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "app/shell/HostingFixture.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

using Kind = MenuAction::Kind;

Profile workspace(std::string name, ProfileColor color = ProfileColor::blue) {
    return Profile{.id = Uuid::generate(), .name = std::move(name), .color = color};
}

const MenuItem& titled(const std::vector<MenuItem>& menu, const std::string& title) {
    for (const auto& item : menu)
        if (item.title == title) return item;
    ADD_FAILURE() << "no item " << title;
    static const MenuItem none;
    return none;
}

std::vector<std::string> titles(const std::vector<MenuItem>& menu) {
    std::vector<std::string> result;
    for (const auto& item : menu) result.push_back(item.isSeparator ? "-" : item.title);
    return result;
}

const FixedOffsetCalendar utc;

} // namespace

TEST(MenuModel, ShowsTheWorkspacesWithTheirHotkeysAndEveryCommandInItsState) {
    auto work = workspace("Work"), play = workspace("Play", ProfileColor::green), third = workspace("Third");
    play.hotkey = Hotkey{18, HotkeyModifiers{HotkeyModifiers::control | HotkeyModifiers::option}}; // the first's digit
    MenuSnapshot snapshot{.profiles = {work, play, third}, .activeProfileId = play.id, .lastError = "Dock is busy"};
    snapshot.settings.nextWorkspaceHotkey = Hotkey{45, HotkeyModifiers{HotkeyModifiers::command}};
    snapshot.settings.launchAtLogin = true;
    DockWidget timer(Uuid::generate(), "Tea", std::nullopt, DockWidgetKind::defaults(WidgetKind::timer));
    DockWidget water(Uuid::generate(), "", std::nullopt, DockWidgetKind::defaults(WidgetKind::water));
    snapshot.profiles[0] = WidgetPlacement::setting(timer, true, snapshot.profiles[0], "/Helper.app");
    snapshot.widgets = {timer, water};
    snapshot.hotkeys = HotkeyRegistry::build(snapshot.profiles, wantedHotkeys(snapshot.settings, snapshot.widgets)).bindings;
    for (int i = 0; i < 14; ++i)
        snapshot.backups.push_back({.url = "/b" + std::to_string(i), .date = Date{86400.0 * 9000 - 3600.0 * i}});
    snapshot.hasDockBackup = true;
    snapshot.hasWindow = true;

    auto menu = MenuModel::build(snapshot, utc);
    EXPECT_EQ(titles(menu),
              (std::vector<std::string>{"\u26A0\uFE0E Dock is busy", "-", "Work", "Play", "Third", "-", "Next Workspace",
                                        "Previous Workspace", "-", "Save the Dock into \u201CPlay\u201D",
                                        "Undo Last Dock Change", "New Workspace\u2026", "Edit Workspaces\u2026", "-",
                                        "Backups", "Export Workspaces\u2026", "Import Workspaces\u2026", "-",
                                        "Use Corvane\u2019s Own Dock", "Widgets", "Start at Login", "Settings\u2026", "-",
                                        "Quit Corvane"}));
    EXPECT_FALSE(menu[0].isEnabled);

    // Play's own hotkey takes the first digit, so Work gets none and Third keeps its own digit.
    const auto& workItem = titled(menu, "Work");
    EXPECT_FALSE(workItem.isChecked);
    EXPECT_EQ(workItem.keyEquivalent, std::nullopt);
    EXPECT_EQ(workItem.action, (MenuAction{.kind = Kind::switchWorkspace, .target = work.id}));
    const auto& playItem = titled(menu, "Play");
    EXPECT_TRUE(playItem.isChecked);
    EXPECT_EQ(playItem.colorHex, std::string(hex(ProfileColor::green)));
    EXPECT_EQ(playItem.keyEquivalent, (MenuKey{"1", play.hotkey->modifiers}));
    EXPECT_EQ(titled(menu, "Third").keyEquivalent, (MenuKey{"3", play.hotkey->modifiers}));
    EXPECT_EQ(titled(menu, "Next Workspace").keyEquivalent, (MenuKey{"N", HotkeyModifiers{HotkeyModifiers::command}}));
    EXPECT_EQ(titled(menu, "Previous Workspace").keyEquivalent, std::nullopt);
    EXPECT_TRUE(titled(menu, "Previous Workspace").isEnabled);
    EXPECT_TRUE(titled(menu, "Undo Last Dock Change").isEnabled);
    EXPECT_TRUE(titled(menu, "Use Corvane\u2019s Own Dock").isChecked);
    EXPECT_TRUE(titled(menu, "Start at Login").isChecked);
    EXPECT_EQ(titled(menu, "Quit Corvane").keyEquivalent, (MenuKey{"Q", HotkeyModifiers{HotkeyModifiers::command}}));

    const auto& backups = titled(menu, "Backups").submenu;
    ASSERT_EQ(backups.size(), 3 + MenuModel::listedBackups) << "the newest twelve, under a note";
    EXPECT_EQ(backups[0].action->kind, Kind::takeBackup);
    EXPECT_EQ(backups[3].title, "2025-08-23 00:00 \u00B7 launch");
    EXPECT_EQ(backups[4].title, "2025-08-22 23:00 \u00B7 launch");
    EXPECT_EQ(backups[4].action->backup, snapshot.backups[1]);

    const auto& widgets = titled(menu, "Widgets").submenu;
    EXPECT_EQ(titles(widgets), (std::vector<std::string>{"Tea \u2014 in Work", "water (not shown)", "-",
                                                         "Widget Gallery\u2026"}));
    EXPECT_EQ(widgets[1].action, (MenuAction{.kind = Kind::editWidget, .target = water.id}));
}

TEST(MenuModel, AnEmptyOrDegradedStateOffersOnlyWhatCanWork) {
    MenuSnapshot snapshot{.profiles = {workspace("Only")}, .isDegraded = true};
    auto menu = MenuModel::build(snapshot, utc);
    EXPECT_EQ(menu[0].title, "The data folder cannot be used: nothing is being saved");
    for (const auto* title : {"Next Workspace", "Previous Workspace", "Save the Dock into a Workspace",
                              "Undo Last Dock Change", "New Workspace\u2026", "Import Workspaces\u2026"})
        EXPECT_FALSE(titled(menu, title).isEnabled) << title;
    EXPECT_TRUE(titled(menu, "Export Workspaces\u2026").isEnabled);
    EXPECT_EQ(titles(titled(menu, "Backups").submenu), (std::vector<std::string>{"Back Up Now", "-", "No Backups to Restore"}));
    EXPECT_FALSE(titled(menu, "Backups").submenu[0].isEnabled);
    EXPECT_EQ(titled(menu, "Widgets").submenu[0].title, "No Widgets Yet");

    auto empty = MenuModel::build(MenuSnapshot{}, utc);
    EXPECT_EQ(empty[0].title, "No Workspaces Yet");
    EXPECT_FALSE(titled(empty, "Export Workspaces\u2026").isEnabled);
}

TEST(MenuModel, WithoutTheWindowNoItemLeadsNowhere) {
    DockWidget water(Uuid::generate(), "", std::nullopt, DockWidgetKind::defaults(WidgetKind::water));
    MenuSnapshot snapshot{.profiles = {workspace("Work")}, .widgets = {water}};
    auto menu = MenuModel::build(snapshot, utc);
    for (const auto& item : menu)
        for (const auto* title : {"Edit Workspaces\u2026", "Settings\u2026"}) EXPECT_NE(item.title, title);
    EXPECT_TRUE(titled(menu, "New Workspace\u2026").isEnabled) << "it asks for a name in an alert of its own";
    const auto& widgets = titled(menu, "Widgets").submenu;
    EXPECT_EQ(titles(widgets), std::vector<std::string>{"water (not shown)"});
    EXPECT_FALSE(widgets[0].isEnabled);
    EXPECT_EQ(widgets[0].action, std::nullopt);
}

TEST(MenuModel, ThePermissionsLineTellsWhetherFocusBoundWorkspacesCanSeeTheFocus) {
    auto focusLines = [](std::optional<FocusAuthorization> access) {
        auto menu = MenuModel::build(MenuSnapshot{.profiles = {workspace("Work")}, .focusAccess = access}, utc);
        std::vector<MenuItem> lines;
        for (const auto& item : menu)
            if (item.title.find("Focus") != std::string::npos) lines.push_back(item);
        return lines;
    };
    EXPECT_TRUE(focusLines(std::nullopt).empty()) << "no workspace is bound to a Focus";
    auto ask = focusLines(FocusAuthorization::notDetermined);
    ASSERT_EQ(ask.size(), 1u);
    EXPECT_EQ(ask[0].action, MenuAction{.kind = Kind::allowFocusAccess});
    auto refused = focusLines(FocusAuthorization::denied);
    ASSERT_EQ(refused.size(), 1u);
    EXPECT_EQ(refused[0].action, MenuAction{.kind = Kind::openFocusSettings});
    auto allowed = focusLines(FocusAuthorization::authorized);
    ASSERT_EQ(allowed.size(), 1u);
    EXPECT_TRUE(allowed[0].isChecked);
    EXPECT_FALSE(allowed[0].isEnabled);
}

TEST(MenuModel, KeyEquivalentsHoldTheCharactersAppKitExpects) {
    using MenuModel::keyEquivalentCharacter;
    EXPECT_EQ(keyEquivalentCharacter("Q"), "q");
    EXPECT_EQ(keyEquivalentCharacter(","), ",");
    EXPECT_EQ(keyEquivalentCharacter("Space"), " ");
    EXPECT_EQ(keyEquivalentCharacter("Return"), "\r");
    EXPECT_EQ(keyEquivalentCharacter("Tab"), "\t");
    EXPECT_EQ(keyEquivalentCharacter("Delete"), "\b");
    EXPECT_EQ(keyEquivalentCharacter("Escape"), "\x1b");
    EXPECT_EQ(keyEquivalentCharacter("\u2191"), "\uF700");
    EXPECT_EQ(keyEquivalentCharacter("\u2190"), "\uF702");
    EXPECT_EQ(keyEquivalentCharacter("Key105"), std::nullopt);
    // Every key a hotkey can name becomes exactly one character.
    for (std::uint16_t code = 0; code < 128; ++code) {
        auto label = Hotkey::label(code);
        if (label.starts_with("Key")) continue;
        auto character = keyEquivalentCharacter(label);
        ASSERT_TRUE(character) << label;
        auto leading = static_cast<unsigned char>((*character)[0]);
        auto length = leading < 0x80 ? 1u : leading < 0xE0 ? 2u : leading < 0xF0 ? 3u : 4u;
        EXPECT_EQ(character->size(), length) << label;
    }
}

namespace {

class MenuOnState : public Hosting {
protected:
    MenuOnState() {
        auto& running = start().state();
        state = &running;
        running.callbacks.onShowPage = [this](const std::string& page) { asked.push_back("page " + page); };
        running.callbacks.onShowSettings = [this] { asked.push_back("settings"); };
        running.callbacks.onNewProfile = [this] { asked.push_back("new"); };
        running.callbacks.onShowWorkspaces = [this] { asked.push_back("workspaces"); };
        running.callbacks.onEditWidget = [this](const Uuid&) { asked.push_back("widget"); };
        panels.chooseExportFile = [this](const std::string& name) -> std::optional<std::filesystem::path> {
            suggested = name;
            return exportTo;
        };
        panels.chooseImportFile = [this] { return importFrom; };
        panels.confirmRestore = [this](const std::string& title) {
            asked.push_back("restore " + title.substr(title.find("\u00B7")));
            return confirms;
        };
        panels.terminate = [this] { asked.push_back("terminate"); };
    }
    void choose(MenuAction::Kind kind, std::optional<Uuid> target = std::nullopt,
                std::optional<WorkspaceBackup> backup = std::nullopt) {
        MenuActions::perform(*state, {kind, target, backup}, panels, utc);
    }
    MenuSnapshot now() { return MenuModel::snapshot(*state); }

    AppState* state = nullptr;
    MenuPanels panels;
    std::vector<std::string> asked;
    std::string suggested;
    std::optional<std::filesystem::path> exportTo, importFrom;
    bool confirms = false;
};

} // namespace

TEST_F(MenuOnState, WorkspaceActionsReachTheState) {
    auto seeded = state->profiles()[0].id;
    state->createProfile(workspace("Play"));
    auto play = state->profiles()[1].id;
    choose(Kind::switchWorkspace, play);
    EXPECT_EQ(state->activeProfileId(), play);
    choose(Kind::nextWorkspace);
    EXPECT_EQ(state->activeProfileId(), seeded);
    choose(Kind::previousWorkspace);
    EXPECT_EQ(state->activeProfileId(), play);

    EXPECT_FALSE(now().hasDockBackup);
    choose(Kind::undoLastChange);
    EXPECT_EQ(state->lastError(), "Cannot undo because there is no Dock backup yet");
    choose(Kind::captureDock);
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(state->profiles()[1].items.size(), 1u) << "Play now holds the Dock's Safari";

    choose(Kind::takeBackup);
    auto snapshot = now();
    EXPECT_TRUE(snapshot.hasDockBackup);
    ASSERT_EQ(snapshot.backups.size(), 2u);
    EXPECT_EQ(snapshot.backups[0].reason, WorkspaceBackup::Reason::manual);
    state->deleteProfile(play);
    choose(Kind::restoreBackup, std::nullopt, snapshot.backups[0]);
    EXPECT_EQ(state->profiles().size(), 1u) << "not confirmed";
    confirms = true;
    choose(Kind::restoreBackup, std::nullopt, snapshot.backups[0]);
    EXPECT_EQ(state->profiles().size(), 2u);

    choose(Kind::exportWorkspaces);
    EXPECT_EQ(suggested, "Corvane Workspaces.json");
    exportTo = dir / "out.json";
    choose(Kind::exportWorkspaces);
    EXPECT_NE(readText(dir / "out.json").find("\"Play\""), std::string::npos);
    choose(Kind::importWorkspaces); // cancelled
    EXPECT_EQ(state->profiles().size(), 2u);
    importFrom = dir / "out.json";
    choose(Kind::importWorkspaces);
    EXPECT_EQ(state->profiles().size(), 4u);
    EXPECT_EQ(asked, (std::vector<std::string>{"restore \u00B7 manual", "restore \u00B7 manual"}));
}

TEST_F(MenuOnState, SettingsWindowsAndQuitGoWhereTheyBelong) {
    choose(Kind::toggleOwnDock);
    EXPECT_FALSE(state->settings().usesOwnDock);
    EXPECT_FALSE(AppPreferences(defaults).load().usesOwnDock);
    choose(Kind::toggleLaunchAtLogin);
    EXPECT_EQ(loginItem, std::vector{true});

    auto widget = state->widgetStore().create(
        DockWidget(Uuid::generate(), "", std::nullopt, DockWidgetKind::defaults(WidgetKind::water)));
    choose(Kind::editWidget, Uuid::generate()); // gone meanwhile: nothing opens
    choose(Kind::editWidget, widget.id);
    choose(Kind::showWidgetGallery);
    choose(Kind::showSettings);
    choose(Kind::newWorkspace);
    choose(Kind::editWorkspaces);
    choose(Kind::quit);
    EXPECT_EQ(asked, (std::vector<std::string>{"widget", "page widgets", "settings", "new", "workspaces", "terminate"}));
}

TEST_F(MenuOnState, ANewWorkspaceIsNamedInAnAlertAndFocusAccessIsAskedForOnce) {
    std::optional<NewWorkspaceAnswer> answer;
    panels.askNewWorkspace = [&] { return answer; };
    choose(Kind::newWorkspace); // cancelled
    ASSERT_EQ(state->profiles().size(), 1u);
    answer = NewWorkspaceAnswer{.name = "  Deep Work ", .fromDock = true};
    choose(Kind::newWorkspace);
    ASSERT_EQ(state->profiles().size(), 2u);
    const auto deep = state->profiles()[1];
    EXPECT_EQ(deep.name, "Deep Work");
    EXPECT_EQ(deep.items.size(), 1u) << "the Dock's Safari";
    EXPECT_NE(deep.color, state->profiles()[0].color) << "the next colour of the palette";
    answer = NewWorkspaceAnswer{.name = " ", .fromDock = false};
    choose(Kind::newWorkspace);
    EXPECT_EQ(state->lastError(), "a workspace needs a name that is not blank");
    answer = NewWorkspaceAnswer{.name = "Empty", .fromDock = false};
    choose(Kind::newWorkspace);
    ASSERT_EQ(state->profiles().size(), 3u);
    EXPECT_TRUE(state->profiles()[2].items.empty());

    // Access is asked for when a workspace is first bound to a Focus, not before, and only once.
    focus.access = FocusAuthorization::notDetermined;
    EXPECT_EQ(now().focusAccess, std::nullopt);
    auto bound = deep;
    bound.focusModeBinding = "Work";
    state->updateProfile(bound);
    EXPECT_EQ(focus.requests, 1);
    EXPECT_EQ(now().focusAccess, FocusAuthorization::notDetermined);
    bound.name = "Deep";
    state->updateProfile(bound);
    EXPECT_EQ(focus.requests, 1);
    choose(Kind::allowFocusAccess);
    EXPECT_EQ(focus.requests, 2) << "the menu's line asks again";
    std::vector<std::string> panes;
    panels.openPrivacySettings = [&](const std::string& pane) { panes.push_back(pane); };
    choose(Kind::openFocusSettings);
    EXPECT_EQ(panes, std::vector<std::string>{"Privacy_Focus"});
}
