// The composition root over fakes: the application comes up on a data folder, follows what other
// processes write into it, and goes down once with its quit backup.

#include "CorvaneApp/shell/AppHost.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeDesktopServer.hpp"
#include "fakes/FakeFocusStatusProvider.hpp"
#include "fakes/FakeHotkeyRegistrar.hpp"
#include "fakes/FakeRunningApplications.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/InMemoryDockSettings.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

class Hosting : public ::testing::Test {
protected:
    Hosting() {
        DockPlistWriter(dock).write(DockSnapshot{{AppEntry{"/Applications/Safari.app", "com.apple.Safari"}}, {}, clock.now()});
    }
    AppHost& start() {
        host = std::make_unique<AppHost>(platform, data, AppState::Callbacks{.onWorkspaceSwitch = [this] { ++switches; }});
        return *host;
    }
    std::vector<WorkspaceBackup::Reason> backupReasons() {
        std::vector<WorkspaceBackup::Reason> reasons;
        for (const auto& backup : WorkspaceBackupStore(data).list()) reasons.push_back(backup.reason);
        return reasons;
    }
    /// A second process of the application, or the command-line tool, changing the workspaces.
    Uuid anotherProcessAddsAndActivates(const std::string& name) {
        ProfileStore elsewhere(data / "profiles.json");
        Profile profile;
        profile.id = Uuid::generate();
        profile.name = name;
        elsewhere.create(profile);
        elsewhere.setActive(profile.id);
        return profile.id;
    }

    TemporaryDirectory dir;
    std::filesystem::path data = dir / "data";
    ManualClock clock;
    ManualScheduler scheduler{clock};
    CapturingLog log;
    RecordingNotifier notifier;
    InMemoryDockBackend dock;
    NoOpDockReloader reloader;
    PlistFileUserDefaults defaults{data / PlistFileUserDefaults::fileName};
    FakeHotkeyRegistrar hotkeys;
    FakeFocusStatusProvider focus;
    FakeRunningApplications apps;
    FakeDesktopServer desktops;
    InMemoryDockSettings nativeDock;
    std::vector<bool> loginItem;
    AppPlatform platform{
        .environment = {{"HOME", dir.path().string()}},
        .clock = clock,
        .scheduler = scheduler,
        .mainQueue = scheduler,
        .log = log,
        .notifier = notifier,
        .dock = dock,
        .reloader = reloader,
        .files = [](const std::filesystem::path& file) { return std::make_unique<PlistFileBackend>(file); },
        .defaults = defaults,
        .hotkeys = hotkeys,
        .focus = focus,
        .applications = apps,
        .desktops = desktops,
        .desktopEvents = desktops,
        .spaces = desktops,
        .dockSettings = &nativeDock,
        .setLaunchesAtLogin = [this](bool launches) -> std::optional<std::string> {
            loginItem.push_back(launches);
            return std::nullopt;
        },
        .settingsFile = data / PlistFileUserDefaults::fileName,
    };
    std::unique_ptr<AppHost> host;
    int switches = 0;
};

} // namespace

TEST_F(Hosting, StartsOnTheFolderFollowsOtherProcessesAndStopsOnceWithItsQuitBackup) {
    auto& state = start().state();
    ASSERT_EQ(state.profiles().size(), 1u) << "a first launch takes the Dock as the first workspace";
    EXPECT_EQ(backupReasons(), std::vector{WorkspaceBackup::Reason::launch});

    auto play = anotherProcessAddsAndActivates("Play");
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

    state.changeSettings([](AppSettings& settings) { settings.usesOwnDock = false; });
    EXPECT_EQ(nativeDock.values, original);
    state.changeSettings([](AppSettings& settings) {
        settings.usesOwnDock = true;
        settings.dockStyle.position = DockPosition::left;
        settings.launchAtLogin = true;
    });
    EXPECT_EQ(nativeDock.values, (NativeDockPreferences{true, 0.2, 48})) << "on another edge it only hides itself";
    EXPECT_EQ(loginItem, std::vector{true});

    host->shutDown();
    EXPECT_EQ(nativeDock.values, original);
    host.reset();
    start(); // a later launch registers the login item again, in case the user removed it
    EXPECT_EQ(loginItem, (std::vector{true, true}));
}
