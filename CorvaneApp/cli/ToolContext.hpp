#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"

#include "CorvaneCore/platform/DockPreferencesBackend.hpp"
#include "CorvaneCore/platform/DockReloader.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

namespace corvane {

/// A command used the wrong way: exit status 2 instead of 1.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How the tool reaches a Dock: its preferences, how to restart it, and property-list files
/// for backups.
struct DockAccess {
    std::unique_ptr<DockPreferencesBackend> backend;
    std::unique_ptr<DockReloader> reloader;
    std::function<std::unique_ptr<DockPreferencesBackend>(const std::filesystem::path&)> files;
};

/// The real services of the command-line tool, made in one place by `main`.
struct ToolServices {
    ProcessEnvironment environment;
    Notifier& notifier;
    Log& log;
    Clock& clock;
    /// The Dock preferences file given with `--dock-plist` (then nothing is restarted), or the
    /// system's Dock.
    std::function<DockAccess(const std::optional<std::filesystem::path>& dockPlist)> openDock;
    const Calendar& calendar;
};

/// What every command receives: the services, the global options and where to print.
struct ToolContext {
    ToolServices& services;
    std::ostream& out;
    std::optional<std::string> dataDirOption;
    std::optional<std::string> dockPlistOption;

    /// `--data-dir`, else `CORVANE_APP_SUPPORT_DIR`, else the default data folder.
    std::filesystem::path dataDirectory() const;
    DockAccess openDock() const;
};

} // namespace corvane
