#include "CorvaneApp/state/AppState.hpp"

#include "CorvaneApp/automation/WantedHotkeys.hpp"
#include "CorvaneApp/preferences/InterfaceLanguage.hpp"
#include "CorvaneCore/automation/FocusBinding.hpp"
#include "CorvaneCore/automation/WorkspaceCycle.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "CorvaneCore/workspace/ProfileTransfer.hpp"
#include "CorvaneCore/workspace/WorkspaceAppPlan.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace corvane {

namespace {

constexpr const char* category = "app";

} // namespace

class AppState::SwitchObserver final : public WorkspaceSwitchObserver {
public:
    explicit SwitchObserver(WorkspaceAppsController& apps) : apps_(apps) {}
    void workspaceDidSwitch(const Profile& to, const std::vector<Profile>& profiles) override {
        apps_.workspaceDidSwitch(to, profiles);
    }

private:
    WorkspaceAppsController& apps_;
};

AppState::AppState(AppStores stores, DockSwapper& swapper, GlobalHotkeyManager& hotkeys,
                   FocusModeMonitor& focusMonitor, AppPreferences& preferences, AppServices& services,
                   Callbacks callbacks_)
    : callbacks(std::move(callbacks_)), stores_(std::move(stores)), swapper_(swapper), hotkeys_(hotkeys),
      focusMonitor_(focusMonitor), preferences_(preferences), services_(services),
      assigner_(services.spaces, services.desktops, services.applications, services.log),
      desktopMonitor_(services.desktops, services.desktopEvents, services.scheduler) {
    auto& log = services_.log;
    workspaceApps_ = std::make_unique<WorkspaceAppsController>(
        services_.applications, log,
        [this] { return std::pair{activeProfile(), stores_.profiles->file().profiles}; },
        [this] {
            // Apps of the workspaces other displays show stay visible when each display has its own.
            std::set<std::int32_t> keep;
            if (!settings_.showsDockOnEveryDisplay) return keep;
            auto desktops = DesktopWorkspaceMonitor::current(services_.desktops);
            auto display = focusedDisplay(desktops);
            if (!display) return keep;
            const auto& file = stores_.profiles->file();
            auto shown = displayWorkspaces_.shown(*display, file.activeProfileId, file.profiles, file.activeProfileId);
            for (const auto& app : services_.applications.regularApplications())
                for (const auto& profile : shown)
                    if (WorkspaceAppPlan::app(app, profile, workspaceApps_->ownership)) keep.insert(app.pid);
            return keep;
        });
    switchObserver_ = std::make_unique<SwitchObserver>(*workspaceApps_);
    switcher_ = std::make_unique<ProfileSwitcher>(*stores_.profiles, swapper_, *stores_.dockBackups, services_.clock);
    switcher_->workspaceObserver = switchObserver_.get();

    if (stores_.degraded) {
        widgetStore_ = std::make_unique<WidgetStore>(WidgetStore::discarding);
    } else {
        try {
            widgetStore_ = std::make_unique<WidgetStore>(StoragePath::widgetsFileURL(stores_.dataDirectory),
                                                         StoragePath::legacyCollectionsFileURL(stores_.dataDirectory),
                                                         services_.notifier);
        } catch (const std::exception& error) {
            // Left as it is on disk: an empty store that saves nowhere cannot overwrite it.
            log.error(category, std::string("widgets file unreadable: ") + error.what());
            widgetStore_ = std::make_unique<WidgetStore>(WidgetStore::discarding);
            widgetsUnreadable_ = true;
        }
    }

    settings_ = preferences_.load();
    if (services_.preferredLanguages)
        language_ = InterfaceLanguage::fromPreferredLanguages(services_.preferredLanguages());

    refresh();
    log.info(category, std::string("AppState init: fileExistedOnLoad=") +
                           (stores_.profiles->fileExistedOnLoad() ? "true" : "false") +
                           " profiles=" + std::to_string(profiles_.size()) +
                           " active=" + (activeProfileId_ ? activeProfileId_->string() : "nil"));
    seedFirstProfileIfNeeded();
    migrateDownloadsTile();

    desktopMonitor_.onDesktopWillChange = [this] { call(callbacks.onDesktopWillChange); };
    desktopMonitor_.onDesktopChange = [this](const auto& desktops) { handleDesktopChange(desktops); };
    desktopMonitor_.start();
    observeWidgetNotifications();
    syncWidgets();
    reconcileWidgetHelpers();
    registerHotkeys();
    followFocusBindings();
}

AppState::~AppState() {
    stopObservingNotifications();
    focusMonitor_.stop();
    desktopMonitor_.stop();
    hotkeys_.stop();
}

void AppState::refresh() {
    const auto& file = stores_.profiles->file();
    profiles_ = file.profiles;
    activeProfileId_ = file.activeProfileId;
}

std::optional<Profile> AppState::activeProfile() const {
    const auto& file = stores_.profiles->file();
    if (!file.activeProfileId) return std::nullopt;
    if (auto profile = stores_.profiles->profile(*file.activeProfileId)) return *profile;
    return std::nullopt;
}

void AppState::seedFirstProfileIfNeeded() {
    auto& log = services_.log;
    if (!profiles_.empty()) return log.info(category, "seed: skip (profiles already non-empty)");
    // A file that holds no workspaces was emptied on purpose; only a first launch is seeded.
    if (stores_.profiles->fileExistedOnLoad()) return log.info(category, "seed: skip (file existed on load)");
    DockSnapshot current;
    try {
        current = swapper_.snapshot();
    } catch (const std::exception& error) {
        return log.error(category, std::string("seed: snapshot failed: ") + error.what());
    }
    if (current.apps.empty() && current.others.empty()) return log.info(category, "seed: skip (current dock is empty)");

    Profile profile;
    profile.id = Uuid::generate();
    profile.name = "Default";
    profile.color = ProfileColor::blue;
    profile.items = current.apps;
    profile.others = current.others;
    profile.otherWorkspaceApps = OtherWorkspaceApps::hide;
    try {
        stores_.profiles->create(profile);
        stores_.profiles->setActive(profile.id);
    } catch (const std::exception& error) {
        // The store keeps the workspace in memory, so the session still has it.
        log.error(category, std::string("seed: persist failed: ") + error.what());
    }
    refresh();
    log.info(category, "seed: created Default profile with " + std::to_string(profile.items.size()) + " items");
}

void AppState::migrateDownloadsTile() {
    if (settings_.downloadsTileMigrated) return;
    if (settings_.usesOwnDock) {
        if (!services_.addingDownloadsTile) {
            // Tried again at the next launch, once the tile can be made.
            services_.log.info(category, "downloads tile: not available, left for a later launch");
            return;
        }
        if (auto active = activeProfile()) {
            auto updated = *active;
            updated.others = services_.addingDownloadsTile(active->others);
            try {
                if (updated != *active) stores_.profiles->update(updated);
            } catch (const std::exception& error) {
                services_.log.error(category, std::string("downloads tile failed: ") + error.what());
            }
            refresh();
        }
    }
    changeSettings([](AppSettings& settings) { settings.downloadsTileMigrated = true; });
}

bool AppState::perform(const std::function<void()>& action) {
    lastError_.reset();
    bool succeeded = true;
    try {
        action();
    } catch (const std::exception& error) {
        services_.log.error(category, std::string("dock change failed: ") + error.what());
        lastError_ = error.what();
        succeeded = false;
    }
    refresh();
    registerHotkeys();
    followFocusBindings();
    return succeeded;
}

std::optional<std::uint32_t> AppState::focusedDisplay(const DesktopWorkspaceMonitor::Desktops& desktops) const {
    if (auto active = services_.desktops.activeSpace())
        for (const auto& [display, desktop] : desktops)
            if (desktop.id == *active) return display;
    if (desktops.empty()) return std::nullopt;
    return desktops.begin()->first;
}

void AppState::switchTo(const Uuid& profileID) {
    if (settings_.showsDockOnEveryDisplay)
        if (auto display = focusedDisplay(DesktopWorkspaceMonitor::current(services_.desktops)))
            displayWorkspaces_.choose(profileID, *display);
    if (settings_.usesOwnDock) {
        perform([&] { switcher_->activate(profileID); });
        call(callbacks.onWorkspaceSwitch);
    } else {
        if (isSwapping_) {
            pendingSwitch_ = profileID;
            return;
        }
        isSwapping_ = true;
        if (callbacks.onSwitchProgress) {
            std::string name;
            for (const auto& profile : profiles_)
                if (profile.id == profileID) name = profile.name;
            callbacks.onSwitchProgress(name);
        }
        perform([&] { switcher_->switchTo(profileID); });
        isSwapping_ = false;
        if (callbacks.onSwitchProgress) callbacks.onSwitchProgress(std::nullopt);
        if (auto next = std::exchange(pendingSwitch_, std::nullopt)) return switchTo(*next);
    }
    reconcileWidgetHelpers();
}

void AppState::cycleWorkspace(int step, std::optional<std::uint32_t> display) {
    auto shown = activeProfileId_;
    if (display) {
        auto desktops = DesktopWorkspaceMonitor::current(services_.desktops);
        std::optional<std::string> desktop;
        if (auto it = desktops.find(*display); it != desktops.end()) desktop = it->second.uuid;
        shown = displayWorkspaces_.workspace(*display, desktop, profiles_, activeProfileId_);
    }
    if (auto next = WorkspaceCycle::next(shown, profiles_, step)) switchTo(next->id);
}

void AppState::captureCurrentDock() {
    perform([&] { switcher_->captureCurrentDock(); });
}

void AppState::undoLastChange() {
    perform([&] { switcher_->undoLastChange(); });
}

void AppState::createProfile(Profile profile) {
    perform([&] { stores_.profiles->create(std::move(profile)); });
}

void AppState::createWorkspace(const std::string& name, bool fromDock) {
    perform([&] {
        auto trimmed = std::string(text::trimmed(name));
        if (trimmed.empty()) throw std::invalid_argument("a workspace needs a name that is not blank");
        Profile profile;
        profile.id = Uuid::generate();
        profile.name = std::move(trimmed);
        profile.color = kAllProfileColors[stores_.profiles->file().profiles.size() % kAllProfileColors.size()];
        if (fromDock) {
            auto dock = swapper_.snapshot();
            profile.items = std::move(dock.apps);
            profile.others = std::move(dock.others);
        }
        stores_.profiles->create(std::move(profile));
    });
}

void AppState::updateProfile(const Profile& profile) {
    perform([&] { stores_.profiles->update(profile); });
}

void AppState::deleteProfile(const Uuid& id) {
    perform([&] { stores_.profiles->remove(id); });
}

std::optional<WorkspaceBackup> AppState::backUpWorkspaces(WorkspaceBackup::Reason reason) {
    try {
        return stores_.workspaceBackups->backUp(reason, services_.clock.now());
    } catch (const std::exception& error) {
        services_.log.error(category, std::string("backup failed: ") + error.what());
        return std::nullopt;
    }
}

void AppState::exportProfiles(const std::filesystem::path& file, const std::vector<Uuid>& ids) {
    perform([&] {
        std::vector<Profile> chosen;
        for (const auto& profile : stores_.profiles->file().profiles)
            if (ids.empty() || std::find(ids.begin(), ids.end(), profile.id) != ids.end()) chosen.push_back(profile);
        writeFileAtomically(file, ProfileTransfer::exportData(chosen));
    });
}

void AppState::importProfiles(const std::filesystem::path& file) {
    perform([&] {
        auto data = readFileIfExists(file);
        if (!data) throw DataFileError(DataFileError::Operation::read, file, "no such file");
        auto imported = ProfileTransfer::profiles(*data);
        std::set<std::string> known;
        for (const auto& display : services_.desktops.displays())
            for (const auto& desktop : display.desktops) known.insert(desktop.uuid);
        auto& store = *stores_.profiles;
        store.reload();
        auto merged = ProfileTransfer::merge(imported, store.file().profiles, known);
        auto before = store.file();
        store.file().profiles = std::move(merged.profiles);
        try {
            store.save();
        } catch (...) {
            store.file() = std::move(before); // what the session shows stays what the file holds
            throw;
        }
    });
    syncWidgets();
}

void AppState::restoreWorkspaces(const WorkspaceBackup& backup) {
    perform([&] {
        stores_.workspaceBackups->restore(backup, services_.clock.now());
        stores_.profiles->reload();
        widgetStore_->reload();
    });
    syncWidgets();
}

void AppState::restoreDefaultSettings() {
    perform([&] {
        preferences_.resetSettings();
        settings_ = preferences_.load();
    });
}

void AppState::changeSettings(const std::function<void(AppSettings&)>& change) {
    auto updated = settings_;
    change(updated);
    if (updated == settings_) return;
    auto before = settings_;
    auto hotkeysChange = [](const AppSettings& a, const AppSettings& b) {
        return a.numberedWorkspaceHotkeys != b.numberedWorkspaceHotkeys ||
               a.workspaceHotkeyModifiers != b.workspaceHotkeyModifiers || a.focusDockHotkey != b.focusDockHotkey ||
               a.nextWorkspaceHotkey != b.nextWorkspaceHotkey || a.previousWorkspaceHotkey != b.previousWorkspaceHotkey;
    }(settings_, updated);
    try {
        preferences_.store(settings_, updated);
        settings_ = std::move(updated);
    } catch (const std::exception& error) {
        services_.log.error(category, std::string("settings not saved: ") + error.what());
        lastError_ = error.what();
        settings_ = preferences_.load(); // whatever part was written
    }
    if (hotkeysChange) registerHotkeys();
    if (callbacks.onSettingsChange && settings_ != before) callbacks.onSettingsChange(before);
}

void AppState::setLanguage(const std::optional<std::string>& tag) {
    auto language = tag ? InterfaceLanguage::fromTag(*tag) : std::nullopt;
    if (language == language_) return;
    if (!services_.setPreferredLanguages) {
        services_.log.info(category, "language: the user's languages cannot be written here");
        return;
    }
    services_.setPreferredLanguages(InterfaceLanguage::preferredLanguages(language));
    language_ = language;
}

void AppState::registerHotkeys() {
    auto registry = HotkeyRegistry::build(profiles_, wantedHotkeys(settings_, widgetStore_->file().widgets));
    for (const auto& dropped : registry.dropped)
        services_.log.info("hotkey", "hotkey " + dropped.hotkey.displayString() + " for " + dropped.action.sortKey() +
                                         " dropped: " + dropped.reason);
    hotkeys_.setBindings(std::move(registry.bindings), [this](const HotkeyAction& action) { handleHotkey(action); });
}

void AppState::handleHotkey(const HotkeyAction& action) {
    std::visit(
        [&](const auto& which) {
            using T = std::decay_t<decltype(which)>;
            auto display = [&]() -> std::optional<std::uint32_t> {
                if (!settings_.showsDockOnEveryDisplay) return std::nullopt;
                return focusedDisplay(DesktopWorkspaceMonitor::current(services_.desktops));
            };
            if constexpr (std::is_same_v<T, HotkeyAction::Profile>) {
                if (stores_.profiles->profile(which.id)) switchTo(which.id);
            } else if constexpr (std::is_same_v<T, HotkeyAction::NextWorkspace>) {
                cycleWorkspace(+1, display());
            } else if constexpr (std::is_same_v<T, HotkeyAction::PreviousWorkspace>) {
                cycleWorkspace(-1, display());
            } else if constexpr (std::is_same_v<T, HotkeyAction::PickColour>) {
                if (callbacks.onPickColour) callbacks.onPickColour(which.widget);
            } else {
                focusDock();
            }
        },
        action.value);
}

std::optional<FocusAuthorization> AppState::focusAccess() const {
    if (!FocusBinding::anyBound(profiles_) || !services_.focus) return std::nullopt;
    return services_.focus->authorization();
}

void AppState::requestFocusAccess() {
    if (services_.focus) services_.focus->requestAuthorization();
}

void AppState::followFocusBindings() {
    // A monitor that polls for nobody is waste, and nobody without a binding is asked for access.
    bool bound = FocusBinding::anyBound(profiles_);
    if (bound == followsFocus_) return;
    followsFocus_ = bound;
    if (!bound) return focusMonitor_.stop();
    if (focusAccess() == FocusAuthorization::notDetermined) {
        services_.log.info(category, "focus: asking for access");
        requestFocusAccess();
    }
    std::weak_ptr<int> alive = lifetime_;
    auto& mainQueue = services_.mainQueue;
    focusMonitor_.start([this, alive, &mainQueue](bool isFocused) {
        mainQueue.post([this, alive, isFocused] {
            if (alive.lock()) handleFocusChange(isFocused);
        });
    });
}

void AppState::handleFocusChange(bool isFocused) {
    // Switching to the workspace already active costs nothing: the switcher returns at once.
    if (auto target = FocusBinding::workspace(isFocused, profiles_)) switchTo(target->id);
}

void AppState::handleDesktopChange(const DesktopWorkspaceMonitor::Desktops& desktops) {
    std::set<std::uint32_t> connected;
    for (const auto& [display, desktop] : desktops) {
        connected.insert(display);
        displayWorkspaces_.display(display, desktop.uuid, profiles_);
    }
    displayWorkspaces_.keep(connected);
    auto front = focusedDisplay(desktops);
    if (!front) return;
    auto due = displayWorkspaces_.workspace(*front, desktops.at(*front).uuid, profiles_, activeProfileId_);
    if (due && due != activeProfileId_) switchTo(*due);
}

void AppState::observeWidgetNotifications() {
    auto* notifier = services_.notifier;
    if (!notifier) return;
    observers_.push_back(notifier->observe(std::string(DockSlot::widgetsChangedNotification),
                                           [this](const std::optional<std::string>&) { handleWidgetsChanged(); }));
    observers_.push_back(notifier->observe(
        std::string(DockSlot::editWidgetNotification), [this](const std::optional<std::string>& object) {
            if (!object) return;
            // The widget's id, or the bundle identifier of its placeholder when the request comes
            // from a helper that knows only its own.
            if (auto id = Uuid::parse(*object)) return handleEditWidgetRequest(*id);
            if (auto address = WidgetAddress::fromBundleIdentifier(*object))
                if (const auto* widget = widgetStore_->widget(*address)) handleEditWidgetRequest(widget->id);
        }));
}

void AppState::stopObservingNotifications() {
    for (auto token : observers_) services_.notifier->removeObserver(token);
    observers_.clear();
}

void AppState::handleWidgetsChanged() {
    if (widgetsUnreadable_) return;
    try {
        widgetStore_->reload();
    } catch (const std::exception& error) {
        // Half-written by another build, perhaps: the widgets known so far stay until it is fixed.
        return services_.log.error(category, std::string("widgets file unreadable: ") + error.what());
    }
    // Comparing with what was synchronised, not with what was loaded before, also catches a
    // change this process saved without synchronising.
    if (widgetStore_->file() == syncedWidgets_) return;
    syncWidgets();
    reconcileWidgetHelpers();
    registerHotkeys();
}

void AppState::handleWorkspacesChanged() {
    auto profiles = profiles_;
    auto active = activeProfileId_;
    try {
        stores_.profiles->reload();
    } catch (const std::exception& error) {
        return services_.log.error(category, std::string("workspaces file unreadable: ") + error.what());
    }
    refresh();
    if (profiles_ == profiles && activeProfileId_ == active) return;
    registerHotkeys();
    followFocusBindings();
    if (activeProfileId_ != active) call(callbacks.onWorkspaceSwitch);
}

void AppState::handleSettingsChanged() {
    preferences_.defaults().synchronize();
    auto fresh = preferences_.load();
    if (fresh == settings_) return;
    auto before = std::exchange(settings_, std::move(fresh));
    registerHotkeys();
    if (callbacks.onSettingsChange) callbacks.onSettingsChange(before);
}

void AppState::syncWidgets() {
    // An unreadable widgets file would read as no widgets at all and strip every placeholder.
    if (widgetsUnreadable_) return;
    const auto& file = widgetStore_->file();
    syncedWidgets_ = file;
    if (!services_.widgetHelperPath) {
        services_.log.info(category, "widgets: no helper path, placeholders left as they are");
        return;
    }
    std::vector<Profile> changed;
    for (const auto& profile : stores_.profiles->file().profiles) {
        auto synced = WidgetPlacement::syncing(profile, file.widgets, file.unrecognized, services_.widgetHelperPath);
        if (synced != profile) changed.push_back(std::move(synced));
    }
    if (changed.empty()) return;
    perform([&] {
        for (const auto& profile : changed) stores_.profiles->update(profile);
    });
}

void AppState::handleEditWidgetRequest(const Uuid& widget) {
    if (callbacks.onEditWidget && widgetStore_->widget(WidgetAddress::id(widget))) callbacks.onEditWidget(widget);
}

void AppState::scheduleLaunchRequests(const LaunchRequests& requests) {
    std::weak_ptr<int> alive = lifetime_;
    const auto& pages = mainWindowPages();
    if (requests.page && std::find(pages.begin(), pages.end(), *requests.page) != pages.end())
        services_.scheduler.schedule(LaunchRequests::pageDelay, [this, alive, page = *requests.page] {
            if (alive.lock() && callbacks.onShowPage) callbacks.onShowPage(page);
        });
    if (requests.stack)
        services_.scheduler.schedule(LaunchRequests::stackDelay, [this, alive, folder = *requests.stack] {
            if (alive.lock() && callbacks.onOpenStack) callbacks.onOpenStack(folder);
        });
    if (requests.widget && fromCaseName<WidgetKind>(*requests.widget))
        services_.scheduler.schedule(LaunchRequests::widgetDelay, [this, alive, kind = *requests.widget] {
            if (alive.lock() && callbacks.onShowWidgetPreview) callbacks.onShowWidgetPreview(kind);
        });
}

void AppState::quit() {
    backUpWorkspaces(WorkspaceBackup::Reason::quit);
    stopObservingNotifications();
    focusMonitor_.stop();
    desktopMonitor_.stop();
    hotkeys_.stop();
    call(callbacks.onQuit);
}

} // namespace corvane
