// The command-line tool's real services are made here, and only here.

#include "CorvaneApp/cli/Tool.hpp"
#include "platform/curl/CurlHttpClient.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/ProcNetworkCounters.hpp"
#include "platform/posix/ProcSystemLoad.hpp"
#include "platform/posix/SysPowerSource.hpp"
#include "platform/posix/StderrLog.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSleeper.hpp"

#include <iostream>

#ifdef __APPLE__
#include "platform/macos/CFCalendarAdapter.hpp"
#include "platform/macos/CFPreferencesUserDefaults.hpp"
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/KeychainSecretStore.hpp"
#include "platform/macos/LibprocProcessTable.hpp"
#include "platform/macos/MacSystemLoad.hpp"
#include "platform/macos/MacMountedVolumes.hpp"
#include "platform/macos/OsLog.hpp"
#else
#include "platform/posix/FileSecretStore.hpp"
#include "platform/posix/LocalTimeCalendar.hpp"
#include "platform/posix/MountTableVolumes.hpp"
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
    CFCalendarAdapter calendar;
    MacMountedVolumes volumes;
    MacSystemLoad load;
#else
    NullNotifier notifier;
    StderrLog log(environment.contains("CORVANE_LOG"));
    ProcProcessTable processes;
    LocalTimeCalendar calendar;
    MountTableVolumes volumes;
    ProcSystemLoad load;
    SysPowerSource power;
    ProcNetworkCounters network;
#endif
    SystemClock clock;
    PosixProcessRunner runner;
    ThreadSleeper sleeper;

    auto openDock = [&](const std::optional<std::filesystem::path>& dockPlist) {
        return openSystemDock(environment, dockPlist, processes, runner, clock, sleeper);
    };

    auto openSecrets = [&log](const std::filesystem::path& dataDirectory) -> std::unique_ptr<SecretStore> {
#ifdef __APPLE__
        (void)dataDirectory;
        return std::make_unique<KeychainSecretStore>(log);
#else
        (void)log;
        return std::make_unique<FileSecretStore>(dataDirectory);
#endif
    };

    CurlHttpClient http;
    auto openDefaults = [](const std::filesystem::path& dataDir) -> std::unique_ptr<UserDefaults> {
#ifdef __APPLE__
        (void)dataDir;
        return std::make_unique<CFPreferencesUserDefaults>();
#else
        return std::make_unique<PlistFileUserDefaults>(dataDir / PlistFileUserDefaults::fileName);
#endif
    };

    ToolServices services{environment, notifier, log,    clock,        openDock,
                          openSecrets, calendar, http,   runner,       openDefaults,
                          &volumes};
    services.load = &load;
    services.sleeper = &sleeper;
#ifndef __APPLE__
    services.power = &power;
    services.network = &network;
#endif
    return runTool(argc, argv, services, std::cout, std::cerr);
}
