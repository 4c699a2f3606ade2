#include "CorvaneApp/shell/LivePlatform.hpp"

#include "CorvaneApp/shell/SystemDock.hpp"
#include "CorvaneCore/dock/DockPlistPath.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSleeper.hpp"

#ifdef __APPLE__
#include "platform/macos/CFPreferencesDockSettings.hpp"
#include "platform/macos/CFPreferencesSpacesPreferences.hpp"
#include "platform/macos/CFPreferencesUserDefaults.hpp"
#include "platform/macos/CarbonHotkeyRegistrar.hpp"
#include "platform/macos/DispatchMainQueue.hpp"
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/LibprocProcessTable.hpp"
#include "platform/macos/LoginItem.hpp"
#include "platform/macos/OsLog.hpp"
#include "platform/macos/SkyLightDesktopServer.hpp"
#include "platform/macos/SystemFocusStatusProvider.hpp"
#include "platform/macos/WindowServerWindowList.hpp"
#include "platform/macos/WorkspaceDesktopEvents.hpp"
#include "platform/macos/WorkspaceRunningApplications.hpp"
#else
#include "platform/posix/AbsentDesktopServices.hpp"
#include "platform/posix/NullNotifier.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"
#include "platform/posix/ProcProcessTable.hpp"
#include "platform/posix/RunLoop.hpp"
#include "platform/posix/StderrLog.hpp"
#endif

namespace corvane {

namespace {

/// The adapters both systems share.
struct CommonAdapters {
    SystemClock clock;
    PosixProcessRunner runner;
    ThreadSleeper sleeper;
    DockAccess dock;
    /// The macOS Dock's own settings, where there is one to keep out of the bar's way.
    std::unique_ptr<DockSettings> dockSettings;
    std::function<std::optional<std::string>(bool)> setLaunchesAtLogin;
};

} // namespace

#ifdef __APPLE__
struct LivePlatform::Adapters : CommonAdapters {
    explicit Adapters(const Options& options) {
        // Only the live Dock is kept out of the bar's way; a preferences file named on the command
        // line stands for no Dock on screen.
        if (!options.dockPlist)
            dockSettings = std::make_unique<CFPreferencesDockSettings>(DockPlistPath::userDockPlistURL(options.environment));
        if (options.isApplicationBundle) setLaunchesAtLogin = LoginItem::setEnabled;
    }
    DispatchMainQueue mainQueue;
    OsLog log;
    DistributedNotifier notifier;
    LibprocProcessTable processes;
    CFPreferencesUserDefaults defaults;
    CarbonHotkeyRegistrar hotkeys;
    SystemFocusStatusProvider focus;
    WorkspaceRunningApplications applications;
    WindowServerWindowList windows;
    SkyLightDesktopServer desktops;
    WorkspaceDesktopEvents desktopEvents;
    CFPreferencesSpacesPreferences spaces;
    std::optional<std::filesystem::path> settingsFile;
};
#else
// No macOS Dock to keep out of the way, and no login items.
struct LivePlatform::Adapters : CommonAdapters {
    explicit Adapters(const Options& options)
        : log(options.logsToStderr), defaults(options.dataDirectory / PlistFileUserDefaults::fileName),
          settingsFile(options.dataDirectory / PlistFileUserDefaults::fileName) {}
    RunLoop mainQueue;
    StderrLog log;
    NullNotifier notifier;
    ProcProcessTable processes;
    PlistFileUserDefaults defaults;
    AbsentHotkeyRegistrar hotkeys;
    AbsentFocusStatus focus;
    AbsentRunningApplications applications;
    AbsentWindowList windows;
    AbsentDesktops desktops;
    AbsentDesktops& desktopEvents = desktops;
    AbsentDesktops& spaces = desktops;
    std::optional<std::filesystem::path> settingsFile;
};
#endif

LivePlatform::LivePlatform(Options options) : adapters_(std::make_unique<Adapters>(options)) {
    auto& a = *adapters_;
    a.dock = openSystemDock(options.environment, options.dockPlist, a.processes, a.runner, a.clock, a.sleeper);
    platform_ = std::make_unique<AppPlatform>(AppPlatform{
        .environment = options.environment,
        .clock = a.clock,
        .scheduler = a.mainQueue,
        .mainQueue = a.mainQueue,
        .log = a.log,
        .notifier = a.notifier,
        .dock = *a.dock.backend,
        .reloader = *a.dock.reloader,
        .files = a.dock.files,
        .defaults = a.defaults,
        .hotkeys = a.hotkeys,
        .focus = a.focus,
        .applications = a.applications,
        .windows = a.windows,
        .desktops = a.desktops,
        .desktopEvents = a.desktopEvents,
        .spaces = a.spaces,
        .dockSettings = a.dockSettings.get(),
        .setLaunchesAtLogin = a.setLaunchesAtLogin,
        .settingsFile = a.settingsFile,
    });
}

LivePlatform::~LivePlatform() = default;

MainLoop& LivePlatform::mainLoop() { return adapters_->mainQueue; }

std::filesystem::path LivePlatform::defaultDataDirectory(const ProcessEnvironment& environment) {
    return StoragePath::resolvedDirectory(environment, {}, applicationSupportDirectory(environment));
}

} // namespace corvane
