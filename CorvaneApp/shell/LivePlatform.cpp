#include "CorvaneApp/shell/LivePlatform.hpp"

#include "CorvaneApp/shell/SystemDock.hpp"
#include "CorvaneApp/shell/SystemMachine.hpp"
#include "CorvaneWidgetsUI/live/SharedSystemLoad.hpp"
#include "CorvaneCore/bar/DownloadsTile.hpp"
#include "CorvaneCore/dock/DockPlistPath.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSerialQueue.hpp"
#include "platform/posix/ThreadSleeper.hpp"

#ifdef __APPLE__
#include "platform/macos/CFCalendarAdapter.hpp"
#include "platform/macos/CFPreferencesDockSettings.hpp"
#include "platform/macos/CFPreferencesSpacesPreferences.hpp"
#include "platform/macos/CFPreferencesUserDefaults.hpp"
#include "platform/macos/CarbonHotkeyRegistrar.hpp"
#include "platform/macos/DispatchMainQueue.hpp"
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/LibprocProcessTable.hpp"
#include "platform/macos/LoginItem.hpp"
#include "platform/macos/MacUserAlerts.hpp"
#include "platform/macos/WidgetPermissions.hpp"
#include "platform/macos/OsLog.hpp"
#include "platform/macos/KeychainSecretStore.hpp"
#include "platform/macos/SkyLightDesktopServer.hpp"
#include "platform/macos/SystemPasteboard.hpp"
#include "platform/curl/CurlHttpClient.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardModel.hpp"
#include "platform/macos/SystemFocusStatusProvider.hpp"
#include "platform/macos/WindowServerWindowList.hpp"
#include "platform/macos/WorkspaceDesktopEvents.hpp"
#include "platform/macos/WorkspaceRunningApplications.hpp"
#else
#include "platform/posix/AbsentDesktopServices.hpp"
#include "platform/posix/LocalTimeCalendar.hpp"
#include "platform/posix/LogUserAlerts.hpp"
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
    // What the live widgets read and act through.
    SystemMachine machine;
    std::optional<SharedSystemLoad> sharedLoad;
};

/// Where new screenshots land unless the user moved them: the Desktop.
std::filesystem::path screenshotsFolder(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    if (home == environment.end() || home->second.empty()) return {};
    return std::filesystem::path(home->second) / "Desktop";
}

/// A queue with a thread of its own, for work that must stay off the main thread.
std::unique_ptr<SerialQueue> threadQueue() { return std::make_unique<ThreadSerialQueue>(); }

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
    CFCalendarAdapter calendar;
    MacUserAlerts alerts;
    // The clipboard widget's history, kept as copies happen.
    SystemPasteboard pasteboard;
    KeychainSecretStore secrets{log};
    CurlHttpClient http;
    std::unique_ptr<ClipboardServices> clipboard;
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
    LocalTimeCalendar calendar;
    LogUserAlerts alerts{log};
};
#endif

LivePlatform::LivePlatform(Options options) : adapters_(std::make_unique<Adapters>(options)) {
    auto& a = *adapters_;
    a.dock = openSystemDock(options.environment, options.dockPlist, a.processes, a.runner, a.clock, a.sleeper);
    // One processor measurement for every activity widget and pet ticked together.
    auto machine = a.machine.sources();
    if (machine.load) machine.load = &a.sharedLoad.emplace(*machine.load, a.clock);
    widgetPorts_ = std::make_unique<LiveWidgetPorts>(LiveWidgetPorts{
        .clock = a.clock,
        .calendar = a.calendar,
        .alerts = &a.alerts,
        .defaults = &a.defaults,
        .machine = machine,
        .dataDirectory = options.dataDirectory,
        .screenshotsFolder = screenshotsFolder(options.environment),
        .downloadsFolder = DownloadsTile::folder(options.environment),
    });
    if (options.connectWidgets) options.connectWidgets(*widgetPorts_);
#ifdef __APPLE__
    a.clipboard = std::make_unique<ClipboardServices>(ClipboardServices{
        .pasteboard = a.pasteboard,
        .secrets = a.secrets,
        .http = a.http,
        .clock = a.clock,
        .scheduler = a.mainQueue,
        .mainQueue = a.mainQueue,
        .log = a.log,
        .storeURL = StoragePath::clipboardFileURL(options.dataDirectory),
        .makeQueue = threadQueue,
        .frontmostApplication =
            [] {
                auto frontmost = SystemPasteboard::frontmostApplication();
                return ClipboardFrontmostApp{frontmost.bundleIdentifier, frontmost.name};
            },
    });
    widgetPorts_->pasteboardWatch = a.clipboard.get();
#endif
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
        .widgetPorts = widgetPorts_.get(),
        .makeWidgetQueue = threadQueue,
#ifdef __APPLE__
        .requestWidgetAccess = WidgetPermissions::request,
#endif
    });
}

LivePlatform::~LivePlatform() = default;

MainLoop& LivePlatform::mainLoop() { return adapters_->mainQueue; }

std::filesystem::path LivePlatform::defaultDataDirectory(const ProcessEnvironment& environment) {
    return StoragePath::resolvedDirectory(environment, {}, applicationSupportDirectory(environment));
}

} // namespace corvane
