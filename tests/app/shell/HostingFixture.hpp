#pragma once

#include "CorvaneApp/shell/AppHost.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeDesktopServer.hpp"
#include "fakes/FakeFocusStatusProvider.hpp"
#include "fakes/FakeHotkeyRegistrar.hpp"
#include "fakes/FakeRunningApplications.hpp"
#include "fakes/FakeWindowList.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/InMemoryDockSettings.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"

#include <gtest/gtest.h>

namespace corvane {

/// The application brought up by AppHost on fakes, over a throw-away data folder.
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
    FakeWindowList windows;
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
        .windows = windows,
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

} // namespace corvane
