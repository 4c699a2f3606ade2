#pragma once

#include "CorvaneApp/shell/AppPlatform.hpp"
#include "CorvaneCore/platform/MainLoop.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// The real adapters of this system, made in one place for every host of the application: on
/// macOS the preferences services, Carbon hotkeys, the window server, the workspace and the main
/// dispatch queue; elsewhere the data folder's files, a run loop of its own, and no desktops,
/// hotkeys or Focus.
class LivePlatform {
public:
    struct Options {
        ProcessEnvironment environment;
        std::filesystem::path dataDirectory;
        /// A Dock preferences file to work on instead of the system's Dock; nothing is restarted.
        std::optional<std::filesystem::path> dockPlist;
        /// Writes the log to stderr as well where the system has no log of its own.
        bool logsToStderr = false;
        /// The application bundle: it may register itself to start at login. Other hosts never do.
        bool isApplicationBundle = false;
        /// Gives the connected widgets (weather, GitHub, usage, clipboard) their readers; without
        /// it they show that they are not connected.
        std::function<void(LiveWidgetPorts&)> connectWidgets;
    };

    explicit LivePlatform(Options options);
    ~LivePlatform();
    LivePlatform(const LivePlatform&) = delete;
    LivePlatform& operator=(const LivePlatform&) = delete;

    AppPlatform& platform() { return *platform_; }
    /// The main queue, which a host without an application object runs itself.
    MainLoop& mainLoop();

    /// `CORVANE_APP_SUPPORT_DIR`, else the system's application support folder + "Corvane".
    static std::filesystem::path defaultDataDirectory(const ProcessEnvironment& environment);

private:
    struct Adapters;
    std::unique_ptr<Adapters> adapters_;
    std::unique_ptr<LiveWidgetPorts> widgetPorts_;
    std::unique_ptr<AppPlatform> platform_;
};

} // namespace corvane
