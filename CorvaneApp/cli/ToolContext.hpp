#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/HttpClient.hpp"
#include "CorvaneCore/platform/ProcessRunner.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/MountedVolumes.hpp"
#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneCore/platform/PermissionStates.hpp"
#include "CorvaneCore/platform/SecretStore.hpp"
#include "CorvaneCore/platform/Sleeper.hpp"
#include "CorvaneWidgetsUI/live/MachineSources.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"

#include "CorvaneApp/shell/SystemDock.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <iosfwd>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace corvane {


/// A command used the wrong way: exit status 2 instead of 1.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
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
    /// Where the clipboard history's key lives, for the data folder given.
    std::function<std::unique_ptr<SecretStore>(const std::filesystem::path& dataDirectory)> openSecrets;
    /// The user's calendar: which day "today" is.
    const Calendar& calendar;
    HttpClient& http;
    ProcessRunner& runner;
    /// The application's settings, kept beside the data folder `dataDir` where the system has no
    /// preferences service.
    std::function<std::unique_ptr<UserDefaults>(const std::filesystem::path& dataDir)> openDefaults;
    /// The mounted volumes, whose trash folders fill the Trash tile; none looks only at the home
    /// trash.
    const MountedVolumes* volumes = nullptr;
    /// The window server's desktops; none where the system has none.
    DesktopServer* desktops = nullptr;
    /// What the user has allowed; none where the system asks nothing.
    const PermissionStates* permissions = nullptr;

    /// The machine's readings and desktop actions for the live widgets.
    MachineSources machine;
    /// Waits between the two samples that processor shares and network rates are taken from.
    Sleeper* sleeper = nullptr;
};

/// What every command receives: the services, the global options and where to print.
struct ToolContext {
    ToolServices& services;
    std::ostream& out;
    std::optional<std::string> dataDirOption;
    std::optional<std::string> dockPlistOption;
    /// Standard input, for commands given "-" as their file; none where there is nothing to read.
    std::istream* in = nullptr;
    /// What a command made, by name ("id"), for callers that want more than the printed text.
    std::map<std::string, std::string> made;

    /// `--data-dir`, else `CORVANE_APP_SUPPORT_DIR`, else the default data folder.
    std::filesystem::path dataDirectory() const;
    DockAccess openDock() const;
    /// The application's settings: shared with the app through the system's preferences on
    /// macOS, a property-list file of the data folder elsewhere.
    std::unique_ptr<UserDefaults> openDefaults() const;
};

} // namespace corvane
