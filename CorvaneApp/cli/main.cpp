// The command-line tool's real services are made here, and only here.

#include "CorvaneApp/cli/Tool.hpp"
#include "CorvaneCore/dock/DockPlistPath.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneCore/dock/SystemDockReloader.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/StderrLog.hpp"
#include "platform/posix/SystemCalendar.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSleeper.hpp"

#include <iostream>

#ifdef __APPLE__
#include "platform/macos/CFPreferencesBackend.hpp"
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/LibprocProcessTable.hpp"
#include "platform/macos/OsLog.hpp"
#else
#include "platform/posix/NullNotifier.hpp"
#include "platform/posix/ProcProcessTable.hpp"
#endif

int main(int argc, char** argv) {
    using namespace corvane;
    auto environment = currentEnvironment();
#ifdef __APPLE__
    DistributedNotifier notifier;
    OsLog log;
    LibprocProcessTable processes;
#else
    NullNotifier notifier;
    StderrLog log(environment.contains("CORVANE_LOG"));
    ProcProcessTable processes;
#endif
    SystemClock clock;
    SystemCalendar calendar;
    PosixProcessRunner runner;
    ThreadSleeper sleeper;

    auto openDock = [&](const std::optional<std::filesystem::path>& dockPlist) {
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
    };

    ToolServices services{environment, notifier, log, clock, openDock, calendar};
    return runTool(argc, argv, services, std::cout, std::cerr);
}
