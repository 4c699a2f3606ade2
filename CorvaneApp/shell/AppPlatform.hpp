#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DesktopEvents.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"
#include "CorvaneCore/platform/DockReloader.hpp"
#include "CorvaneCore/platform/DockSettings.hpp"
#include "CorvaneCore/platform/FocusStatusProvider.hpp"
#include "CorvaneCore/platform/HotkeyRegistrar.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneCore/platform/RunningApplications.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SerialQueue.hpp"
#include "CorvaneCore/platform/SpacesPreferences.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"
#include "CorvaneCore/platform/WindowList.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Every platform service a running application works through. Whoever hosts the application
/// (the app bundle, `corvane agent`, a test) owns the adapters and lends them here; `AppHost`
/// wires them to the state in the one way both hosts share.
struct AppPlatform {
    ProcessEnvironment environment;
    Clock& clock;
    /// The main queue's delayed work, and the main queue.
    Scheduler& scheduler;
    MainQueue& mainQueue;
    Log& log;
    Notifier& notifier;
    /// The Dock's preferences and its restart.
    DockPreferencesBackend& dock;
    DockReloader& reloader;
    /// Property-list files for the Dock backups.
    BackupManager::FileBackendFactory files;
    /// The application's settings.
    UserDefaults& defaults;
    HotkeyRegistrar& hotkeys;
    FocusStatusProvider& focus;
    RunningApplications& applications;
    /// Other applications' windows, which may cover the own Dock bar or fill the screen.
    WindowList& windows;
    DesktopServer& desktops;
    DesktopEvents& desktopEvents;
    SpacesPreferences& spaces;
    /// The macOS Dock's own settings, which the own Dock bar keeps out of its way; none leaves
    /// them alone.
    DockSettings* dockSettings = nullptr;
    /// Registers the application to start at login, or withdraws it; none where the system
    /// cannot. Returns the reason when the system refused.
    std::function<std::optional<std::string>(bool launches)> setLaunchesAtLogin = {};
    /// Where the settings are a file that other processes write (off macOS), watched so that a
    /// setting changed by the command-line tool reaches the running state; none where the system
    /// keeps them.
    std::optional<std::filesystem::path> settingsFile = std::nullopt;
    std::function<std::vector<std::string>()> preferredLanguages = {};
    std::function<void(const std::vector<std::string>&)> setPreferredLanguages = {};
    /// What the live widgets read and act through; none runs without live widgets.
    const LiveWidgetPorts* widgetPorts = nullptr;
    /// A background queue for one slow widget source; none reads them on the main thread.
    std::function<std::unique_ptr<SerialQueue>()> makeWidgetQueue = {};
    /// Asks for the system permission a kind of widget needs (calendars, automation of the
    /// music player, accessibility), once a widget of that kind is placed; none asks nothing.
    std::function<void(WidgetKind)> requestWidgetAccess = {};
};

} // namespace corvane
