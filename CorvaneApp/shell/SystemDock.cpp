#include "CorvaneApp/shell/SystemDock.hpp"

#include "CorvaneCore/dock/DockPlistPath.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneCore/dock/SystemDockReloader.hpp"
#include "platform/posix/PlistFileBackend.hpp"

#ifdef __APPLE__
#include "platform/macos/CFPreferencesBackend.hpp"
#endif

namespace corvane {

DockAccess openSystemDock(const ProcessEnvironment& environment, const std::optional<std::filesystem::path>& dockPlist,
                          ProcessTable& processes, ProcessRunner& runner, Clock& clock, Sleeper& sleeper) {
    DockAccess access;
    access.files = [](const std::filesystem::path& file) { return std::make_unique<PlistFileBackend>(file); };
    if (dockPlist) {
        access.backend = std::make_unique<PlistFileBackend>(*dockPlist);
        access.reloader = std::make_unique<NoOpDockReloader>();
        return access;
    }
#ifdef __APPLE__
    access.backend = std::make_unique<CFPreferencesBackend>(DockPlistPath::userDockPlistURL(environment));
    access.reloader = std::make_unique<SystemDockReloader>(processes, runner, clock, sleeper);
#else
    // Off macOS a Dock runs only where someone stands one in; restart it only then.
    access.backend = std::make_unique<PlistFileBackend>(DockPlistPath::userDockPlistURL(environment));
    if (processes.find(SystemDockReloader::dockProcessName))
        access.reloader = std::make_unique<SystemDockReloader>(processes, runner, clock, sleeper);
    else
        access.reloader = std::make_unique<NoOpDockReloader>();
#endif
    return access;
}

} // namespace corvane
