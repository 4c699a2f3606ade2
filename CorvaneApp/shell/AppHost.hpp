#pragma once

#include "CorvaneApp/bar/BarWidgetHost.hpp"
#include "CorvaneApp/shell/AppPlatform.hpp"
#include "CorvaneApp/shell/DataFileWatcher.hpp"
#include "CorvaneApp/state/AppState.hpp"
#include "CorvaneCore/dock/NativeDockController.hpp"

#include <filesystem>
#include <memory>

namespace corvane {

/// The one place where the application comes together: it opens the data folder and its stores
/// (taking the launch backup), makes the Dock swapper, the hotkey manager, the Focus monitor and
/// the settings, builds `AppState` on them, and watches the data files for changes made by other
/// processes. The app bundle and `corvane agent` both run the application through it; only the
/// adapters they lend differ. Main thread.
class AppHost {
public:
    /// How often the Focus state is read.
    static constexpr double focusPollInterval = 5.0;

    /// Starts the application on `dataDirectory`. A data folder that cannot be used starts it
    /// degraded: it runs, but nothing is read and nothing it saves survives.
    AppHost(AppPlatform& platform, std::filesystem::path dataDirectory, AppState::Callbacks callbacks = {},
            const LaunchRequests& requests = {});
    /// Shuts down if that has not happened yet.
    ~AppHost();
    AppHost(const AppHost&) = delete;
    AppHost& operator=(const AppHost&) = delete;

    AppState& state() { return *state_; }
    const std::filesystem::path& dataDirectory() const { return dataDirectory_; }
    GlobalHotkeyManager& hotkeys() { return *hotkeys_; }
    /// The live widgets, ticking whether or not a bar draws them; none when the platform gave
    /// no widget sources.
    BarWidgetHost* widgets() { return widgets_.get(); }
    /// Who redraws the tiles of widgets whose reading changed: the bar, where there is one.
    void setWidgetChangeHandler(BarWidgetHost::ChangeHandler handler) { onWidgetChange_ = std::move(handler); }

    /// Looks at the data files now rather than at the watcher's next look: another process (the
    /// window's command) has just written them.
    void lookAtDataFiles() {
        if (!isShutDown_) watcher_.poll();
    }

    /// Takes the quit backup, stops hotkeys, monitors and the file watcher, and gives the
    /// screen back to the macOS Dock as the user had it. Only the first call does anything.
    void shutDown();

private:
    /// Hides the macOS Dock as the settings ask while the own bar is in use, or puts it back as
    /// the user had it (`unchanged`) when the bar is off or the application quits.
    void applyNativeDock(bool quitting = false);
    /// The Dock reads its look only when it starts.
    void restartDock();
    void settingsChanged(const AppSettings& before);
    void syncWidgets();

    AppPlatform& platform_;
    std::filesystem::path dataDirectory_;
    std::unique_ptr<DockSwapper> swapper_;
    std::unique_ptr<GlobalHotkeyManager> hotkeys_;
    std::unique_ptr<FocusModeMonitor> focusMonitor_;
    std::unique_ptr<AppPreferences> preferences_;
    std::unique_ptr<AppServices> services_;
    std::unique_ptr<NativeDockController> nativeDock_;
    std::unique_ptr<AppState> state_;
    std::unique_ptr<BarWidgetHost> widgets_;
    BarWidgetHost::ChangeHandler onWidgetChange_;
    DataFileWatcher watcher_;
    std::optional<Notifier::ObserverToken> settingsObserver_;
    bool isShutDown_ = false;
};

} // namespace corvane
