// The composition root over fakes: the application comes up on a data folder, follows what other
// processes write into it, and goes down once with its quit backup.

#include "app/shell/HostingFixture.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST_F(Hosting, StartsOnTheFolderFollowsOtherProcessesAndStopsOnceWithItsQuitBackup) {
    auto& state = start().state();
    ASSERT_EQ(state.profiles().size(), 1u) << "a first launch takes the Dock as the first workspace";
    EXPECT_EQ(backupReasons(), std::vector{WorkspaceBackup::Reason::launch});

    auto play = anotherProcessAddsAndActivates("Play");
    host->lookAtDataFiles(); // as after a call of the window: no waiting for the next look
    EXPECT_EQ(state.profiles().size(), 2u);
    scheduler.advance(AppHost::focusPollInterval); // several looks; the change counts once
    EXPECT_EQ(state.profiles().size(), 2u);
    EXPECT_EQ(state.activeProfileId(), play);
    EXPECT_EQ(switches, 1);
    EXPECT_TRUE(hotkeys.live.size() >= 2) << "the new workspace got its numbered hotkey";

    // A file half-written by someone else leaves the workspaces known so far.
    auto intact = readText(data / "profiles.json");
    writeText(data / "profiles.json", "{\"profiles\": [");
    scheduler.advance(DataFileWatcher::defaultInterval);
    EXPECT_EQ(state.profiles().size(), 2u);
    EXPECT_TRUE(std::any_of(log.lines.begin(), log.lines.end(),
                            [](const auto& line) { return line.message.starts_with("workspaces file unreadable: "); }));
    writeText(data / "profiles.json", intact);

    PlistFileUserDefaults(data / PlistFileUserDefaults::fileName)
        .set("dev.tessik.corvane.preferences.usesOwnDock", UserDefaults::Value(false));
    scheduler.advance(DataFileWatcher::defaultInterval);
    EXPECT_FALSE(state.settings().usesOwnDock);

    anotherProcessAddsAndActivates("Late");
    host->shutDown();
    host->shutDown();
    host->lookAtDataFiles();
    EXPECT_EQ(backupReasons(), (std::vector{WorkspaceBackup::Reason::quit, WorkspaceBackup::Reason::launch}));
    EXPECT_TRUE(hotkeys.live.empty());
    scheduler.advance(10);
    EXPECT_EQ(switches, 1) << "a host that stopped follows nothing";
    host.reset(); // shutting down again on destruction would take a second quit backup
    EXPECT_EQ(backupReasons().size(), 2u);
}

TEST_F(Hosting, AnUnusableDataFolderRunsDegradedAndLeavesItsFilesAlone) {
    writeText(data / "profiles.json", "not json");
    auto& state = start().state();
    EXPECT_TRUE(state.isDegraded());
    EXPECT_TRUE(state.profiles().empty());
    state.createProfile(Profile{.id = Uuid::generate(), .name = "Lost"});
    scheduler.advance(10);
    host.reset();
    EXPECT_EQ(readText(data / "profiles.json"), "not json");
}

TEST_F(Hosting, TheOwnBarHidesTheMacOSDockWhileItRunsAndGivesItBackAsTheUserHadIt) {
    nativeDock.values = {.autohide = false, .delay = 0.2, .tileSize = 48};
    nativeDock.orientationValue = "bottom";
    const NativeDockPreferences original = nativeDock.values;
    const NativeDockPreferences hidden{true, NativeDockModeValues::hiddenDelay, NativeDockModeValues::hiddenTileSize};
    auto& state = start().state();
    EXPECT_EQ(nativeDock.values, hidden) << "a bar on the Dock's own edge hides it outright";
    EXPECT_EQ(reloader.callCount(), 1) << "the Dock reads its look only when it starts";

    state.changeSettings([](AppSettings& settings) { settings.usesOwnDock = false; });
    EXPECT_EQ(nativeDock.values, original);
    EXPECT_EQ(reloader.callCount(), 2);
    state.changeSettings([](AppSettings& settings) {
        settings.usesOwnDock = true;
        settings.dockStyle.position = DockPosition::left;
        settings.launchAtLogin = true;
    });
    EXPECT_EQ(nativeDock.values, (NativeDockPreferences{true, 0.2, 48})) << "on another edge it only hides itself";
    EXPECT_EQ(loginItem, std::vector{true});

    host->shutDown();
    EXPECT_EQ(nativeDock.values, original);
    EXPECT_EQ(reloader.callCount(), 4);
    host.reset();
    start(); // a later launch registers the login item again, in case the user removed it
    EXPECT_EQ(loginItem, (std::vector{true, true}));
    EXPECT_EQ(reloader.callCount(), 5);
}

TEST_F(Hosting, ADockLeftHiddenByASessionThatNeverEndedComesBackAtTheNextLaunch) {
    nativeDock.values = {.autohide = true, .delay = 1000, .tileSize = 1};
    AppPreferences(defaults).store(AppSettings{}, [] {
        AppSettings off;
        off.usesOwnDock = false;
        return off;
    }());
    start();
    EXPECT_EQ(nativeDock.values, (NativeDockPreferences{true, 1000, 1}))
        << "Corvane never hid this Dock: hiding values with no stored original are the user's own";
    EXPECT_EQ(reloader.callCount(), 0);
    host.reset();

    // A session that hid the Dock and ended without handing it back (a crash, a forced shutdown):
    // the hiding values stay in the Dock's preferences, beside the original it stored.
    nativeDock.values = {.autohide = false, .delay = 0.2, .tileSize = 48};
    AppPreferences(defaults).store(AppPreferences(defaults).load(), AppSettings{});
    start();
    const auto leftBehind = nativeDock.values;
    EXPECT_EQ(leftBehind.delay, NativeDockModeValues::hiddenDelay);
    host.reset();
    nativeDock.values = leftBehind;
    AppPreferences(defaults).store(AppPreferences(defaults).load(), [] {
        AppSettings off;
        off.usesOwnDock = false;
        return off;
    }());
    auto restarts = reloader.callCount();
    start();
    EXPECT_EQ(nativeDock.values, (NativeDockPreferences{false, 0.2, 48}));
    EXPECT_EQ(reloader.callCount(), restarts + 1);
    host.reset();
    start();
    EXPECT_EQ(reloader.callCount(), restarts + 1) << "a Dock as the user had it is left alone";
}

TEST_F(Hosting, ASettingTheToolChangesReachesTheRunningApplication) {
    auto& state = start().state();
    ASSERT_TRUE(state.settings().usesOwnDock);
    AppPreferences elsewhere(defaults);
    auto before = elsewhere.load();
    auto after = before;
    after.hidesDockWhenCovered = !before.hidesDockWhenCovered;
    elsewhere.store(before, after);
    notifier.deliver(std::string(AppPreferences::changedNotification));
    EXPECT_EQ(state.settings().hidesDockWhenCovered, after.hidesDockWhenCovered);
}

TEST_F(Hosting, TheLiveWidgetsFollowTheWidgetsFileAskForTheirPermissionAndReportTheirChanges) {
    FixedOffsetCalendar calendar;
    LiveWidgetPorts ports{.clock = clock, .calendar = calendar};
    std::vector<WidgetKind> asked;
    platform.widgetPorts = &ports;
    platform.requestWidgetAccess = [&](WidgetKind kind) { asked.push_back(kind); };
    auto& running = start();
    ASSERT_NE(running.widgets(), nullptr);
    EXPECT_EQ(running.widgets()->liveCount(), 0u);
    std::vector<Uuid> changed;
    running.setWidgetChangeHandler([&](const std::vector<Uuid>& ids) { changed.insert(changed.end(), ids.begin(), ids.end()); });

    // Another process adds a clock: the host makes its model and asks for what its kind needs.
    auto clockWidget = WidgetStore(data / "widgets.json")
                           .create(DockWidget(Uuid::generate(), "Clock", std::nullopt, DockWidgetKind::defaults(WidgetKind::clock)));
    scheduler.advance(DataFileWatcher::defaultInterval);
    EXPECT_EQ(running.widgets()->liveCount(), 1u);
    EXPECT_EQ(asked, std::vector{WidgetKind::clock});
    scheduler.advance(60);
    EXPECT_TRUE(std::count(changed.begin(), changed.end(), clockWidget.id) >= 1) << "the minute turned";

    host->shutDown();
    EXPECT_EQ(host->widgets(), nullptr) << "no widget ticks after the host stopped";
}
