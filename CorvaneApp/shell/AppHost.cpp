#include "CorvaneApp/shell/AppHost.hpp"

#include "CorvaneApp/render/DownloadsTileAdding.hpp"
#include "CorvaneApp/widgets/PlaceholderHelpers.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

namespace corvane {

AppHost::AppHost(AppPlatform& platform, std::filesystem::path dataDirectory, AppState::Callbacks callbacks,
                 const LaunchRequests& requests)
    : platform_(platform), dataDirectory_(std::move(dataDirectory)), watcher_(platform.scheduler) {
    // The launch backup comes before anything reads the workspaces, so a launch that goes wrong
    // can always be rolled back to what the last session left.
    auto stores = AppStartup::open(dataDirectory_, platform.dock, platform.files, platform.clock, platform.log,
                                   &platform.notifier);
    bool degraded = stores.degraded;
    swapper_ = std::make_unique<DockSwapper>(DockPlistReader(platform.dock, platform.clock),
                                             DockPlistWriter(platform.dock), platform.reloader);
    hotkeys_ = std::make_unique<GlobalHotkeyManager>(platform.hotkeys, platform.log);
    focusMonitor_ = std::make_unique<FocusModeMonitor>(platform.focus, platform.scheduler, platform.log,
                                                       focusPollInterval);
    preferences_ = std::make_unique<AppPreferences>(platform.defaults);

    services_ = std::make_unique<AppServices>(AppServices{platform.clock, platform.scheduler, platform.mainQueue,
                                                          platform.log, platform.applications, platform.desktops,
                                                          platform.desktopEvents, platform.spaces});
    services_->notifier = &platform.notifier;
    services_->focus = &platform.focus;
    services_->preferredLanguages = platform.preferredLanguages;
    services_->setPreferredLanguages = platform.setPreferredLanguages;
    services_->addingDownloadsTile = downloadsTileAdding(platform.environment);
    services_->widgetHelperPath = [folder = dataDirectory_](std::optional<int> slot) {
        return PlaceholderHelpers::path(folder, slot);
    };
    if (platform.dockSettings)
        nativeDock_ = std::make_unique<NativeDockController>(*platform.dockSettings, platform.defaults, platform.log);
    // The host follows the settings too; the shell's own handler still hears every change.
    callbacks.onSettingsChange = [this, shell = std::move(callbacks.onSettingsChange)](const AppSettings& before) {
        settingsChanged(before);
        if (shell) shell(before);
    };
    // The live widgets follow the widgets file; the state tells of a change when it has brought the
    // workspaces' placeholders along.
    callbacks.onReconcileWidgetHelpers = [this, shell = std::move(callbacks.onReconcileWidgetHelpers)] {
        syncWidgets();
        if (shell) shell();
    };
    state_ = std::make_unique<AppState>(std::move(stores), *swapper_, *hotkeys_, *focusMonitor_, *preferences_,
                                        *services_, std::move(callbacks));
    if (platform.widgetPorts) {
        widgets_ = std::make_unique<BarWidgetHost>(platform.scheduler, platform.mainQueue, *platform.widgetPorts,
                                                   platform.makeWidgetQueue, [this](const std::vector<Uuid>& changed) {
                                                       if (onWidgetChange_) onWidgetChange_(changed);
                                                   });
        syncWidgets();
    }
    state_->scheduleLaunchRequests(requests);
    const auto& settings = state_->settings();
    if (settings.usesOwnDock) {
        applyNativeDock();
    } else if (nativeDock_) {
        try {
            if (nativeDock_->restoreLeftHidden()) restartDock();
        } catch (const std::exception& error) {
            platform.log.error("app", std::string("native dock failed: ") + error.what());
        }
    }
    if (settings.launchAtLogin && platform.setLaunchesAtLogin)
        if (auto refused = platform.setLaunchesAtLogin(true)) platform.log.error("app", "login item failed: " + *refused);

    // Degraded stores read nothing, so there is nothing of the folder to follow.
    if (degraded) return;
    auto& state = *state_;
    settingsObserver_ = platform.notifier.observe(std::string(AppPreferences::changedNotification),
                                                  [&state](const std::optional<std::string>&) { state.handleSettingsChanged(); });
    watcher_.watch(StoragePath::profilesFileURL(dataDirectory_), [&state] { state.handleWorkspacesChanged(); });
    watcher_.watch(StoragePath::widgetsFileURL(dataDirectory_), [&state] { state.handleWidgetsChanged(); });
    if (platform.settingsFile)
        watcher_.watch(*platform.settingsFile, [&state] { state.handleSettingsChanged(); });
    watcher_.start();
}

AppHost::~AppHost() { shutDown(); }

void AppHost::shutDown() {
    if (std::exchange(isShutDown_, true)) return;
    watcher_.stop();
    if (settingsObserver_) platform_.notifier.removeObserver(*settingsObserver_);
    state_->quit();
    widgets_.reset();
    if (state_->settings().usesOwnDock) applyNativeDock(true);
}

void AppHost::syncWidgets() {
    if (!widgets_ || !state_) return;
    for (auto kind : widgets_->sync(state_->widgetStore().file()))
        if (platform_.requestWidgetAccess) platform_.requestWidgetAccess(kind);
}

void AppHost::applyNativeDock(bool quitting) {
    if (!nativeDock_) return;
    const auto& settings = state_->settings();
    auto mode = settings.usesOwnDock && !quitting ? settings.nativeDockMode : NativeDockMode::unchanged;
    try {
        if (nativeDock_->apply(mode, settings.dockStyle.position)) restartDock();
    } catch (const std::exception& error) {
        platform_.log.error("app", std::string("native dock failed: ") + error.what());
    }
}

void AppHost::restartDock() {
    try {
        platform_.reloader.waitUntilSettled();
        platform_.reloader.reload();
    } catch (const std::exception& error) {
        platform_.log.error("app", std::string("dock restart failed: ") + error.what());
    }
}

void AppHost::settingsChanged(const AppSettings& before) {
    if (!state_) return; // the state's own start-up; what it settles is applied right after
    const auto& now = state_->settings();
    if (before.usesOwnDock != now.usesOwnDock || before.nativeDockMode != now.nativeDockMode ||
        before.dockStyle.position != now.dockStyle.position)
        applyNativeDock();
    if (before.launchAtLogin != now.launchAtLogin && platform_.setLaunchesAtLogin)
        if (auto refused = platform_.setLaunchesAtLogin(now.launchAtLogin))
            platform_.log.error("app", "login item failed: " + *refused);
}

} // namespace corvane
