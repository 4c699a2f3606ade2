// The application state over fakes: start-up, the one switch road, hotkeys, desktops, Focus,
// widget notices from other processes and the delayed launch requests, all on a manual clock.

#include "CorvaneApp/render/DownloadsTileAdding.hpp"
#include "CorvaneApp/state/AppState.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "CorvaneCore/workspace/ProfileTransfer.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeDesktopServer.hpp"
#include "fakes/FakeFocusStatusProvider.hpp"
#include "fakes/FakeHotkeyRegistrar.hpp"
#include "fakes/FakeRunningApplications.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

Profile workspace(std::string name, std::optional<std::string> focus = std::nullopt) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = std::move(name);
    profile.focusModeBinding = std::move(focus);
    AppEntry app;
    app.path = "/Applications/" + profile.name + ".app";
    app.bundleIdentifier = "app." + profile.name;
    profile.items.emplace_back(std::move(app));
    return profile;
}

class Launch : public ::testing::Test {
protected:
    Launch() {
        services.widgetHelperPath = [](std::optional<int>) { return std::string("/Applications/Helper.app"); };
        services.notifier = &notifier;
    }

    void dockHolds(std::vector<DockItem> tiles) { DockPlistWriter(dock).write(DockSnapshot{std::move(tiles), {}, clock.now()}); }
    void fileHolds(const std::vector<Profile>& profiles, std::optional<Uuid> active = std::nullopt) {
        ProfileStore store(data / "profiles.json");
        store.file().profiles = profiles;
        store.file().activeProfileId = active;
        store.save();
    }
    AppState& start() {
        launched.reset();
        auto stores = AppStartup::open(data, dock, files, clock, log);
        launched = std::make_unique<AppState>(std::move(stores), swapper, hotkeys, focusMonitor, preferences, services);
        return *launched;
    }
    std::size_t lineOf(const std::string& prefix) const {
        for (std::size_t i = 0; i < log.lines.size(); ++i)
            if (log.lines[i].message.starts_with(prefix)) return i;
        ADD_FAILURE() << "no log line " << prefix;
        return log.lines.size();
    }
    void press(const Hotkey& hotkey) {
        for (const auto& [ref, entry] : registrar.live)
            if (entry.keyCode == hotkey.keyCode &&
                entry.modifiers == GlobalHotkeyManager::carbonModifiers(hotkey.modifiers))
                return registrar.press(entry.id);
        ADD_FAILURE() << "not registered: " << hotkey.displayString();
    }

    TemporaryDirectory dir;
    std::filesystem::path data = dir / "data";
    ManualClock clock;
    ManualScheduler scheduler{clock};
    CapturingLog log;
    InMemoryDockBackend dock;
    NoOpDockReloader reloader;
    BackupManager::FileBackendFactory files = [](const std::filesystem::path& file) {
        return std::make_unique<PlistFileBackend>(file);
    };
    DockSwapper swapper{DockPlistReader(dock, clock), DockPlistWriter(dock), reloader};
    FakeHotkeyRegistrar registrar;
    GlobalHotkeyManager hotkeys{registrar, log};
    FakeFocusStatusProvider focus;
    // The Focus monitor's own queue; one manual clock drives both.
    ManualScheduler focusQueue{clock};
    FocusModeMonitor focusMonitor{focus, focusQueue, log, 5.0};
    InMemoryUserDefaults defaults;
    AppPreferences preferences{defaults};
    FakeRunningApplications apps;
    FakeDesktopServer desktops;
    RecordingNotifier notifier;
    AppServices services{clock, scheduler, scheduler, log, apps, desktops, desktops, desktops};
    std::unique_ptr<AppState> launched;
};

/// A value of the setting's type other than `value`, never none.
bool changed(bool value) { return !value; }
std::optional<bool> changed(std::optional<bool> value) { return !value.value_or(false); }
std::optional<double> changed(std::optional<double> value) { return value.value_or(0) + 0.5; }
std::int64_t changed(std::int64_t value) { return value + 1; }
std::optional<std::int64_t> changed(std::optional<std::int64_t> value) { return value.value_or(0) + 1; }
HotkeyModifiers changed(HotkeyModifiers value) { return HotkeyModifiers{value.rawValue ^ HotkeyModifiers::command}; }
std::optional<Hotkey> changed(std::optional<Hotkey> value) {
    return Hotkey{static_cast<std::uint16_t>(value ? value->keyCode + 1 : 30), HotkeyModifiers{HotkeyModifiers::command}};
}
NativeDockMode changed(NativeDockMode value) {
    return value == NativeDockMode::hidden ? NativeDockMode::unchanged : NativeDockMode::hidden;
}
DockStyle changed(DockStyle value) {
    value.showsTrash = !value.showsTrash;
    return value;
}
JSONValue changed(const JSONValue& value) {
    return value == JSONValue(JSONValue::Object{}) ? JSONValue(JSONValue::Object{{"/Users/me/Downloads", JSONValue::Object{}}})
                                                  : JSONValue(JSONValue::Object{});
}
std::optional<Date> changed(std::optional<Date> value) { return Date{value ? value->sinceReferenceDate + 1 : 42}; }

} // namespace

TEST_F(Launch, AFirstLaunchWithADockSeedsDefaultAndALaterOneKeepsIt) {
    dockHolds({AppEntry{"/Applications/Safari.app", "com.apple.Safari"}, AppEntry{"/Applications/Mail.app", "com.apple.mail"}});
    auto& first = start();
    EXPECT_FALSE(first.isDegraded());
    ASSERT_EQ(first.profiles().size(), 1u);
    EXPECT_EQ(first.profiles()[0].name, "Default");
    EXPECT_EQ(first.profiles()[0].items.size(), 2u);
    EXPECT_EQ(first.activeProfileId(), first.profiles()[0].id);
    EXPECT_NE(readText(data / "profiles.json").find("\"Default\""), std::string::npos);
    EXPECT_LT(lineOf("AppState init: fileExistedOnLoad=false profiles=0 active=nil"),
              lineOf("seed: created Default profile with 2 items"));

    EXPECT_FALSE(focusMonitor.isRunning()) << "no workspace is bound to a Focus";
    EXPECT_EQ(focusQueue.pendingCount(), 0u);

    clock.advance(60);
    auto& second = start();
    EXPECT_EQ(second.profiles().size(), 1u);
    EXPECT_TRUE(log.contains("seed: skip (profiles already non-empty)"));
    auto backups = second.workspaceBackups().list();
    ASSERT_EQ(backups.size(), 2u);
    EXPECT_TRUE(std::filesystem::exists(backups[0].url / "profiles.json")) << "taken before the file was opened";
    EXPECT_FALSE(std::filesystem::exists(backups[1].url / "profiles.json"));
}

TEST_F(Launch, AFileHoldingNoWorkspacesAndAnEmptyDockAreBothRespected) {
    dockHolds({AppEntry{"/Applications/Safari.app", "com.apple.Safari"}});
    fileHolds({});
    EXPECT_TRUE(start().profiles().empty());
    EXPECT_TRUE(log.contains("seed: skip (file existed on load)"));

    std::filesystem::remove(data / "profiles.json");
    dockHolds({});
    EXPECT_TRUE(start().profiles().empty());
    EXPECT_TRUE(log.contains("seed: skip (current dock is empty)"));
    EXPECT_FALSE(std::filesystem::exists(data / "profiles.json"));
}

TEST_F(Launch, TheFirstLaunchWithTheOwnDockGivesTheActiveWorkspaceItsDownloadsTileOnce) {
    services.addingDownloadsTile = downloadsTileAdding({{"HOME", "/Users/me"}});
    auto work = workspace("Work"), play = workspace("Play");
    work.others = {FileEntry{"/Users/me/Projects", std::nullopt, true}};
    // Written as the Dock writes it: the same folder, so no second tile.
    play.others = {FileEntry{"file:///Users/me/Downloads/", std::nullopt, true}};
    fileHolds({work, play}, work.id);

    auto& first = start();
    EXPECT_TRUE(first.settings().downloadsTileMigrated);
    EXPECT_EQ(first.profiles()[0].others,
              (std::vector<DockItem>{FileEntry{"/Users/me/Projects", std::nullopt, true},
                                     FileEntry{"/Users/me/Downloads", std::nullopt, true}}));
    EXPECT_EQ(first.profiles()[1].others, play.others) << "only the active workspace gets one";

    // The user took it away again; later launches respect that.
    auto edited = first.profiles()[0];
    edited.others.pop_back();
    first.updateProfile(edited);
    EXPECT_EQ(start().profiles()[0].others.size(), 1u);

    // A workspace that holds Downloads already keeps its one tile.
    preferences.resetSettings();
    fileHolds({play}, play.id);
    EXPECT_EQ(start().profiles()[0].others, play.others);
}

TEST_F(Launch, AnUnreadableWorkspacesFileGivesTheDegradedStateWhereNothingSurvives) {
    dockHolds({AppEntry{"/Applications/Safari.app", "com.apple.Safari"}});
    writeText(data / "profiles.json", "{ not json");
    auto& state = start();
    EXPECT_TRUE(state.isDegraded());
    lineOf("live state failed");
    EXPECT_TRUE(state.profiles().empty()) << "nothing is seeded into a store that keeps nothing";

    state.createProfile(workspace("Work"));
    EXPECT_EQ(state.lastError(), std::nullopt);
    ASSERT_EQ(state.profiles().size(), 1u) << "the session still works in memory";
    state.switchTo(state.profiles()[0].id);
    EXPECT_EQ(state.activeProfileId(), state.profiles()[0].id);
    state.quit();
    EXPECT_EQ(readText(data / "profiles.json"), "{ not json");
    EXPECT_FALSE(std::filesystem::exists(data / "widgets.json"));
    EXPECT_TRUE(log.contains("seed: skip (file existed on load)"));
}

TEST_F(Launch, AFailingLaunchBackupIsOnlyLoggedAndStartUpKeepsItsOrder) {
    fileHolds({workspace("Home"), workspace("Deep work", "Work")});
    writeText(data / "workspace-backups", "a file where the backups folder should be");
    focus.reading = true;
    auto& state = start();
    EXPECT_FALSE(state.isDegraded());
    EXPECT_EQ(state.profiles().size(), 2u);
    auto backup = lineOf("launch backup failed: ");
    auto init = lineOf("AppState init: fileExistedOnLoad=true profiles=2 active=nil");
    auto seed = lineOf("seed: skip (profiles already non-empty)");
    auto focusStarted = lineOf("focus monitor started (interval=5.000000s)");
    EXPECT_LT(backup, init);
    EXPECT_LT(init, seed);
    EXPECT_LT(seed, focusStarted);
    EXPECT_FALSE(registrar.live.empty()) << "hotkeys are registered during start-up";
}

TEST_F(Launch, ActionsTurnFailuresIntoLastErrorAndTheOwnDockOnlyActivates) {
    fileHolds({workspace("Work"), workspace("Play")});
    auto& state = start();
    state.undoLastChange();
    EXPECT_EQ(state.lastError(), "Cannot undo because there is no Dock backup yet");
    EXPECT_TRUE(log.contains("dock change failed: Cannot undo because there is no Dock backup yet"));

    int switches = 0;
    state.callbacks.onWorkspaceSwitch = [&] { ++switches; };
    auto writes = dock.writeCount;
    auto play = state.profiles()[1];
    state.switchTo(play.id);
    EXPECT_EQ(state.lastError(), std::nullopt) << "a new action clears the last error";
    EXPECT_EQ(state.activeProfileId(), play.id);
    EXPECT_EQ(dock.writeCount, writes) << "with the own Dock the macOS Dock is left alone";
    EXPECT_EQ(switches, 1);

    state.changeSettings([](AppSettings& s) { s.usesOwnDock = false; });
    EXPECT_EQ(defaults.boolValue(AppPreferences::key("usesOwnDock")), false);
    auto work = state.profiles()[0];
    state.switchTo(work.id);
    EXPECT_EQ(state.activeProfileId(), work.id);
    EXPECT_GT(dock.writeCount, writes);
    auto shown = DockPlistReader(dock, clock).read().apps;
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].app()->path, work.items[0].app()->path);
    EXPECT_EQ(state.profileStore().file().activeProfileId, work.id);

    state.exportProfiles(dir / "one.json", {play.id});
    auto exported = ProfileTransfer::profiles(readText(dir / "one.json"));
    ASSERT_EQ(exported.size(), 1u) << "only the chosen workspace";
    EXPECT_EQ(exported[0].id, play.id);

    auto ghost = workspace("Ghost");
    state.updateProfile(ghost);
    EXPECT_EQ(state.lastError(), "Failed to find profile with id " + ghost.id.string());
}

TEST_F(Launch, HotkeysFollowTheirPrecedenceAndDispatch) {
    auto work = workspace("Work"), play = workspace("Play");
    fileHolds({work, play}, work.id);
    Hotkey ctrlOpt1{18, HotkeyModifiers{6}}, ctrlOpt2{19, HotkeyModifiers{6}}, right{124, HotkeyModifiers{4}};
    preferences.setHotkey("nextWorkspaceHotkey", ctrlOpt1); // taken by the first workspace's digit
    preferences.setHotkey("previousWorkspaceHotkey", right);
    ColourPickerSettings pickerSettings;
    pickerSettings.hotkey = Hotkey{8, HotkeyModifiers{5}};
    DockWidget picker(Uuid::generate(), "Picker", std::nullopt, DockWidgetKind(pickerSettings));
    WidgetStore(data / "widgets.json").create(picker);

    auto& state = start();
    std::optional<Uuid> picked;
    state.callbacks.onPickColour = [&](const Uuid& id) { picked = id; };
    // Two digits, the focus default, previous and the picker; "next" lost to the first digit.
    EXPECT_EQ(registrar.live.size(), 5u);
    press(ctrlOpt2);
    EXPECT_EQ(state.activeProfileId(), play.id);
    press(right);
    EXPECT_EQ(state.activeProfileId(), work.id);
    press(*pickerSettings.hotkey);
    EXPECT_EQ(picked, picker.id);

    state.changeSettings([](AppSettings& s) { s.numberedWorkspaceHotkeys = false; });
    EXPECT_EQ(registrar.live.size(), 4u) << "without digits, next gets its combination";
    press(ctrlOpt1);
    EXPECT_EQ(state.activeProfileId(), play.id);
}

TEST_F(Launch, FocusAndDesktopChangesBringTheirWorkspaces) {
    auto home = workspace("Home"), deep = workspace("Deep work", "Work"), desk = workspace("Desk");
    desk.desktopUUIDs = {"DESK-B"};
    fileHolds({home, deep, desk}, home.id);
    desktops.show(1, {11, "DESK-A", 1});
    desktops.active = 11;
    focus.reading = true;
    auto& state = start();
    focusQueue.advance(5);
    EXPECT_EQ(state.activeProfileId(), home.id) << "the report waits for the main queue";
    scheduler.runPending();
    EXPECT_EQ(state.activeProfileId(), deep.id);
    focus.reading = false;
    focusQueue.advance(5);
    scheduler.runPending();
    EXPECT_EQ(state.activeProfileId(), home.id);

    desktops.show(1, {12, "DESK-B", 2});
    desktops.active = 12;
    desktops.notice();
    desktops.notice();
    scheduler.advance(0.3);
    EXPECT_EQ(state.activeProfileId(), home.id);
    scheduler.advance(0.06);
    EXPECT_EQ(state.activeProfileId(), desk.id);
}

TEST_F(Launch, LaunchRequestsNeedAValueAndWaitForTheirDelays) {
    EXPECT_EQ(LaunchRequests::parse({"--stack", "/Users/me/Projects", "--page"}), (LaunchRequests{std::nullopt, "/Users/me/Projects", std::nullopt}));
    EXPECT_EQ(LaunchRequests::parse({"--page", "--widget", "timer"}).page, std::nullopt);

    auto& state = start();
    std::vector<std::string> opened;
    state.callbacks.onShowPage = [&](const std::string& page) { opened.push_back("page " + page); };
    state.callbacks.onOpenStack = [&](const std::filesystem::path& folder) { opened.push_back("stack " + folder.string()); };
    state.callbacks.onShowWidgetPreview = [&](const std::string& kind) { opened.push_back("widget " + kind); };
    state.scheduleLaunchRequests(LaunchRequests::parse({"--page", "themes", "--stack", "/Users/me/Downloads", "--widget", "timer"}));
    state.scheduleLaunchRequests(LaunchRequests::parse({"--page", "nowhere", "--widget", "toaster"}));
    scheduler.advance(0.49);
    EXPECT_TRUE(opened.empty());
    scheduler.advance(0.01);
    EXPECT_EQ(opened, std::vector<std::string>{"page themes"});
    scheduler.advance(1);
    EXPECT_EQ(opened, (std::vector<std::string>{"page themes", "stack /Users/me/Downloads", "widget timer"}));

    state.scheduleLaunchRequests(LaunchRequests::parse({"--page", "general"}));
    launched.reset();
    scheduler.advance(1);
    EXPECT_EQ(opened.size(), 3u) << "requests of a state that is gone are dropped";
}

TEST_F(Launch, AnotherProcessesWidgetChangesReachThePlaceholdersBrokenFilesAndOwnEchoesDoNot) {
    DockWidget timer(Uuid::generate(), "Timer", std::nullopt, DockWidgetKind(TimerSettings{}));
    WidgetStore(data / "widgets.json").create(timer);
    auto work = WidgetPlacement::setting(timer, true, workspace("Work"), "/Applications/Helper.app");
    fileHolds({work}, work.id);
    auto& state = start();
    int reconciles = 0;
    state.callbacks.onReconcileWidgetHelpers = [&] { ++reconciles; };
    auto placeholderName = [&] { return state.profiles()[0].items.back().app()->displayName; };
    ASSERT_EQ(placeholderName(), "Timer");

    WidgetStore elsewhere(data / "widgets.json");
    timer.name = "Tea";
    elsewhere.update(timer);
    notifier.deliver("dev.tessik.corvane.widgetsChanged");
    EXPECT_EQ(placeholderName(), "Tea");
    EXPECT_EQ(readText(data / "profiles.json").find("\"Timer\""), std::string::npos);
    EXPECT_EQ(reconciles, 1);

    // A file broken elsewhere, half written, keeps the widgets known so far.
    const auto whole = readText(data / "widgets.json");
    writeText(data / "widgets.json", "{ half written");
    notifier.deliver("dev.tessik.corvane.widgetsChanged");
    lineOf("widgets file unreadable: ");
    EXPECT_EQ(placeholderName(), "Tea");
    EXPECT_NE(state.widgetStore().widget(WidgetAddress::id(timer.id)), nullptr);
    writeText(data / "widgets.json", whole);

    // This process's own save heard back after it was synchronised changes nothing more.
    timer.name = "Kettle";
    state.widgetStore().update(timer);
    state.syncWidgets();
    auto profilesFile = readText(data / "profiles.json");
    notifier.deliver("dev.tessik.corvane.widgetsChanged");
    EXPECT_EQ(reconciles, 1);
    EXPECT_EQ(readText(data / "profiles.json"), profilesFile);
    EXPECT_EQ(placeholderName(), "Kettle");

    // A save of this process nobody synchronised is still brought to the workspaces by its echo.
    state.widgetStore().remove(timer.id);
    notifier.deliver("dev.tessik.corvane.widgetsChanged");
    EXPECT_EQ(state.profiles()[0].items.size(), 1u) << "the removed widget's placeholder goes";
    EXPECT_EQ(reconciles, 2);
}

TEST_F(Launch, EditRequestsOpenKnownWidgetsOnlyAndStopWithTheState) {
    DockWidget timer(Uuid::generate(), "Timer", 4, DockWidgetKind(TimerSettings{}));
    WidgetStore(data / "widgets.json").create(timer);
    auto& state = start();
    std::vector<Uuid> edited;
    state.callbacks.onEditWidget = [&](const Uuid& id) { edited.push_back(id); };

    notifier.deliver("dev.tessik.corvane.editWidget", timer.id.string());
    notifier.deliver("dev.tessik.corvane.editWidget", "dev.tessik.Corvane.Slot4");
    EXPECT_EQ(edited, (std::vector<Uuid>{timer.id, timer.id}));
    notifier.deliver("dev.tessik.corvane.editWidget", Uuid::generate().string());
    notifier.deliver("dev.tessik.corvane.editWidget", "dev.tessik.Corvane.Slot5");
    notifier.deliver("dev.tessik.corvane.editWidget", "not a widget");
    notifier.deliver("dev.tessik.corvane.editWidget");
    EXPECT_EQ(edited.size(), 2u);

    EXPECT_EQ(notifier.observerCount(), 2u);
    launched.reset();
    EXPECT_EQ(notifier.observerCount(), 0u);
}

TEST_F(Launch, TheFirstPreferredLanguageIsTheLanguageSettingAndWritingItWritesTheList) {
    std::vector<std::string> appleLanguages = {"de-CH", "en-GB"};
    std::vector<std::vector<std::string>> written;
    services.preferredLanguages = [&] { return appleLanguages; };
    services.setPreferredLanguages = [&](const std::vector<std::string>& list) { written.push_back(list); };
    auto& state = start();
    EXPECT_EQ(state.language(), "de");

    state.setLanguage("de");
    EXPECT_TRUE(written.empty()) << "the language in use is not written again";
    state.setLanguage("zh-Hant-TW");
    EXPECT_EQ(state.language(), "zh-Hant");
    state.setLanguage(std::nullopt);
    EXPECT_EQ(state.language(), std::nullopt);
    EXPECT_EQ(written, (std::vector<std::vector<std::string>>{{"zh-Hant"}, {}}));

    appleLanguages.clear();
    EXPECT_EQ(start().language(), std::nullopt);
}

TEST_F(Launch, EveryUserSettingHasAMirrorWhoseWritesReachTheUserDefaults) {
    std::vector<std::string_view> names;
    for (const auto& field : AppPreferences::fields()) names.push_back(field.name);
    EXPECT_EQ(names, (std::vector<std::string_view>{
                         "usesOwnDock", "filtersByDesktop", "hidesDockWhenCovered", "showsAppDockMenuItems",
                         "widgetsFollowIconPack", "reservesDockSpace", "autoHidesDock", "dockRevealDelay",
                         "usesPrivateDockSpace", "showsDockOnEveryDisplay", "dockStyle", "stackOptions",
                         "showsWorkspaceSwitcherInDock", "numberedWorkspaceHotkeys", "workspaceHotkeyModifiers",
                         "focusDockHotkey", "nextWorkspaceHotkey", "previousWorkspaceHotkey",
                         "switchesWorkspaceByGesture", "nativeDockMode", "launchAtLogin", "onboardingVersion",
                         "onboardingPage", "downloadsTileMigrated", "downloadsSeenAt"}));

    auto& state = start();
    for (const auto& field : AppPreferences::fields()) {
        auto before = state.settings();
        state.changeSettings([&](AppSettings& settings) {
            std::visit([&](auto member) { settings.*member = changed(settings.*member); }, field.member);
        });
        EXPECT_NE(state.settings(), before) << field.name;
        EXPECT_TRUE(defaults.value(AppPreferences::key(field.name))) << field.name;
        EXPECT_EQ(AppPreferences(defaults).load(), state.settings()) << field.name << " is read back as written";
    }
    EXPECT_EQ(state.lastError(), std::nullopt);

    state.restoreDefaultSettings();
    EXPECT_EQ(state.settings(), AppSettings{});
    EXPECT_EQ(AppPreferences(defaults).load(), AppSettings{});
}

TEST_F(Launch, ASwitchOfTheMacOSDockIsAnnouncedAndARequestMadeDuringItComesRightAfter) {
    auto home = workspace("Home"), work = workspace("Work"), play = workspace("Play");
    fileHolds({home, work, play}, home.id);
    AppSettings macOSDock;
    macOSDock.usesOwnDock = false;
    preferences.store(AppSettings{}, macOSDock);
    auto& state = start();
    std::vector<std::string> progress;
    bool pressed = false;
    state.callbacks.onSwitchProgress = [&](const std::optional<std::string>& to) {
        progress.push_back(to.value_or("done"));
        // Hotkeys that a nested event loop delivers while the Dock restarts: the last one counts.
        if (to && !std::exchange(pressed, true)) {
            state.switchTo(home.id);
            state.switchTo(play.id);
        }
    };
    state.switchTo(work.id);
    EXPECT_EQ(state.activeProfileId(), play.id);
    EXPECT_EQ(progress, (std::vector<std::string>{"Work", "done", "Play", "done"}));
    EXPECT_EQ(reloader.callCount(), 2);
}
