#pragma once

#include "CorvaneApp/automation/AppDesktopAssigner.hpp"
#include "CorvaneApp/automation/DesktopWorkspaceMonitor.hpp"
#include "CorvaneApp/automation/GlobalHotkeyManager.hpp"
#include "CorvaneApp/controllers/WorkspaceAppsController.hpp"
#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneApp/state/AppStartup.hpp"
#include "CorvaneCore/automation/DesktopBinding.hpp"
#include "CorvaneCore/automation/FocusModeMonitor.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneCore/platform/DesktopEvents.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SpacesPreferences.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The platform services the application state works through, made once by the wiring.
struct AppServices {
    Clock& clock;
    /// The main queue's delayed work.
    Scheduler& scheduler;
    MainQueue& mainQueue;
    Log& log;
    RunningApplications& applications;
    DesktopServer& desktops;
    DesktopEvents& desktopEvents;
    SpacesPreferences& spaces;
    Notifier* notifier = nullptr;
    /// Asked for access when a workspace is first bound to a Focus; none never asks.
    FocusStatusProvider* focus = nullptr;
    /// The user's languages, most preferred first ("AppleLanguages" of the standard user
    /// defaults, a list, which the settings store has no type for).
    std::function<std::vector<std::string>()> preferredLanguages = {};
    /// Writes "AppleLanguages" of the application's own defaults; an empty list removes the key,
    /// so the system's languages apply again. Takes effect at the next launch.
    std::function<void(const std::vector<std::string>&)> setPreferredLanguages = {};
    /// A workspace's documents with the Downloads folder's tile added (once):
    /// `downloadsTileAdding`. Unset leaves the first launch's Downloads tile for a later launch.
    std::function<std::vector<DockItem>(const std::vector<DockItem>&)> addingDownloadsTile = {};
    /// The placeholder helper application of a widget, by its Dock slot: `PlaceholderHelpers::path`
    /// of the data folder, the same paths the command-line tool writes, or the two would keep
    /// rewriting each other's placeholders.
    std::function<std::string(std::optional<int> slot)> widgetHelperPath = {};
};

/// The central state of the application: the workspaces, the switch, the settings, hotkeys,
/// desktops and Focus. Everything reaches the workspaces through it; Dock failures never leave
/// it but become `lastError` and a log line. Main thread.
class AppState {
public:
    /// What the state tells the rest of the application; each is called only when set.
    struct Callbacks {
        std::function<void()> onWorkspaceSwitch, onShowSettings, onShowWorkspaces, onNewProfile, onShowOnboarding,
            onFocusDock, onResetNativeDock;
        /// A colour-picker widget's hotkey was pressed.
        std::function<void(const Uuid& widget)> onPickColour;
        /// Someone asked for a widget's editor.
        std::function<void(const Uuid& widget)> onEditWidget;
        /// A desktop starts sliding in; the desktops are read a moment later.
        std::function<void()> onDesktopWillChange;
        /// The placeholder helper processes of the widgets should match the widgets now.
        std::function<void()> onReconcileWidgetHelpers;
        /// The launch requests of the command line.
        std::function<void(const std::string& page)> onShowPage;
        std::function<void(const std::filesystem::path& folder)> onOpenStack;
        std::function<void(const std::string& kind)> onShowWidgetPreview;
        /// The settings changed, here or in another process; given those before.
        std::function<void(const AppSettings& before)> onSettingsChange;
        /// Quitting: the own bar hands the screen back.
        std::function<void()> onQuit;
        /// A switch of the macOS Dock begins (the workspace's name) and ends (none): it holds the
        /// main thread for seconds, so the menu bar says so before it starts.
        std::function<void(const std::optional<std::string>& switchingTo)> onSwitchProgress;
    };

    /// Initialises in a fixed order: the desktop tables, the workspace apps, the switcher, the
    /// widgets, the settings, the workspaces (seeding the first one), then desktops, widgets,
    /// hotkeys and the Focus monitor start. `callbacks` are in place before anything starts.
    AppState(AppStores stores, DockSwapper& swapper, GlobalHotkeyManager& hotkeys, FocusModeMonitor& focusMonitor,
             AppPreferences& preferences, AppServices& services, Callbacks callbacks = {});
    ~AppState();
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    Callbacks callbacks;

    const std::vector<Profile>& profiles() const { return profiles_; }
    const std::optional<Uuid>& activeProfileId() const { return activeProfileId_; }
    const std::optional<std::string>& lastError() const { return lastError_; }
    const AppSettings& settings() const { return settings_; }
    /// The interface language setting, read from the user's first language; none to follow the system.
    const std::optional<std::string>& language() const { return language_; }
    bool isDegraded() const { return stores_.degraded; }
    const DisplayWorkspaces& displayWorkspaces() const { return displayWorkspaces_; }
    WorkspaceAppsController& workspaceApps() { return *workspaceApps_; }
    AppDesktopAssigner& desktopAssigner() { return assigner_; }
    WidgetStore& widgetStore() { return *widgetStore_; }
    ProfileStore& profileStore() { return *stores_.profiles; }
    WorkspaceBackupStore& workspaceBackups() { return *stores_.workspaceBackups; }
    BackupManager& dockBackups() { return *stores_.dockBackups; }

    /// Runs `action`, turning a failure into `lastError` and "dock change failed: …"; then, in
    /// every case, reads the workspaces again and registers the hotkeys again. True on success.
    bool perform(const std::function<void()>& action);

    /// Makes the workspace active: with the own bar only in the workspaces file, otherwise also
    /// in the macOS Dock, through the verified swap. A request that arrives while a swap runs
    /// (a hotkey seen by a nested event loop) is carried out right after it; of several, the last.
    void switchTo(const Uuid& profileID);
    /// Whether the workspaces bound to a Focus can see it; none when no workspace is bound.
    std::optional<FocusAuthorization> focusAccess() const;
    /// Asks the user to let the Focus be read (the system asks only once).
    void requestFocusAccess();
    /// Steps through the workspaces from the one shown (on `display` when given).
    void cycleWorkspace(int step, std::optional<std::uint32_t> display = std::nullopt);
    void captureCurrentDock();
    void undoLastChange();

    void createProfile(Profile profile);
    /// A workspace named `name` (trimmed; a blank one is refused) in the next colour of the
    /// palette, holding the macOS Dock's tiles when `fromDock`, else empty.
    void createWorkspace(const std::string& name, bool fromDock);
    void updateProfile(const Profile& profile);
    void deleteProfile(const Uuid& id);

    /// A workspace backup; a failure is logged as "backup failed: …" and gives none.
    std::optional<WorkspaceBackup> backUpWorkspaces(WorkspaceBackup::Reason reason);
    /// Writes the workspaces (all when `ids` is empty) in the transfer format.
    void exportProfiles(const std::filesystem::path& file, const std::vector<Uuid>& ids = {});
    /// Adds the file's workspaces beside the present ones; the active workspace stays.
    void importProfiles(const std::filesystem::path& file);
    /// Puts a workspace backup back and reloads the workspaces and widgets.
    void restoreWorkspaces(const WorkspaceBackup& backup);
    void restoreDefaultSettings();

    /// Changes settings: what differs is written to the user defaults, and the hotkeys follow.
    void changeSettings(const std::function<void(AppSettings&)>& change);
    /// Sets the interface language, writing "AppleLanguages". A tag is reduced as
    /// `InterfaceLanguage::fromTag` does; none, or a tag naming no language, follows the system.
    void setLanguage(const std::optional<std::string>& tag);

    /// Builds the hotkey registry from the workspaces, the settings and the colour pickers and
    /// hands it to the hotkey manager.
    void registerHotkeys();
    void handleHotkey(const HotkeyAction& action);
    /// A Focus turned on or off: the first bound, or first unbound, workspace comes.
    void handleFocusChange(bool isFocused);
    /// The desktops in front, per display, after they settled.
    void handleDesktopChange(const DesktopWorkspaceMonitor::Desktops& desktops);
    /// Keeps the widgets' placeholders and stacks in every workspace in step with the widgets file.
    void syncWidgets();
    /// The widgets file changed, perhaps in another process: reads it again and, when it holds
    /// other widgets than those last synchronised, brings placeholders, helpers and hotkeys along.
    void handleWidgetsChanged();
    /// The workspaces file changed, perhaps in another process (the command-line tool switched,
    /// say): reads it again; a new active workspace is announced through `onWorkspaceSwitch`, as
    /// a switch made here is. An unreadable file is logged and the workspaces known so far stay.
    void handleWorkspacesChanged();
    /// The settings changed outside this process: reads them again and lets the hotkeys follow.
    void handleSettingsChanged();
    /// Opens the widget's editor through `onEditWidget`; a widget the file does not hold is ignored.
    void handleEditWidgetRequest(const Uuid& widget);

    /// Schedules the command-line requests after their delays; an unknown page or widget kind
    /// is ignored.
    void scheduleLaunchRequests(const LaunchRequests& requests);

    /// Takes the quit backup, stops hotkeys and monitors and hands over to `onQuit`.
    void quit();

    void showSettings() { call(callbacks.onShowSettings); }
    void showWorkspaces() { call(callbacks.onShowWorkspaces); }
    void newProfile() { call(callbacks.onNewProfile); }
    void showOnboarding() { call(callbacks.onShowOnboarding); }
    void focusDock() { call(callbacks.onFocusDock); }
    void resetNativeDock() { call(callbacks.onResetNativeDock); }

private:
    class SwitchObserver;

    static void call(const std::function<void()>& callback) {
        if (callback) callback();
    }
    void refresh();
    void seedFirstProfileIfNeeded();
    void migrateDownloadsTile();
    /// Starts the Focus monitor while some workspace is bound to a Focus, asking for access the
    /// first time one is, and stops it when none is any more.
    void followFocusBindings();
    void observeWidgetNotifications();
    void stopObservingNotifications();
    void reconcileWidgetHelpers() { call(callbacks.onReconcileWidgetHelpers); }
    /// The display that has the focus, else the first one the window server lists.
    std::optional<std::uint32_t> focusedDisplay(const DesktopWorkspaceMonitor::Desktops& desktops) const;
    std::optional<Profile> activeProfile() const;

    AppStores stores_;
    DockSwapper& swapper_;
    GlobalHotkeyManager& hotkeys_;
    FocusModeMonitor& focusMonitor_;
    AppPreferences& preferences_;
    AppServices& services_;

    DisplayWorkspaces displayWorkspaces_;
    AppDesktopAssigner assigner_;
    std::unique_ptr<WorkspaceAppsController> workspaceApps_;
    std::unique_ptr<SwitchObserver> switchObserver_;
    std::unique_ptr<ProfileSwitcher> switcher_;
    std::unique_ptr<WidgetStore> widgetStore_;
    bool widgetsUnreadable_ = false;
    /// The widgets as last synchronised into the workspaces: a notice that finds the file still
    /// holding them is this process's own save coming back.
    WidgetsFile syncedWidgets_;
    std::vector<Notifier::ObserverToken> observers_;
    DesktopWorkspaceMonitor desktopMonitor_;

    AppSettings settings_;
    std::optional<std::string> language_;
    std::vector<Profile> profiles_;
    std::optional<Uuid> activeProfileId_;
    std::optional<std::string> lastError_;
    bool followsFocus_ = false;
    bool isSwapping_ = false;
    std::optional<Uuid> pendingSwitch_;
    /// Held weakly by work posted from other threads, which must not outlive the state.
    std::shared_ptr<int> lifetime_ = std::make_shared<int>(0);
};

} // namespace corvane
