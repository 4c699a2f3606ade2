#include "CorvaneApp/cli/SystemToolServices.hpp"

#include "platform/curl/CurlHttpClient.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/StderrLog.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSleeper.hpp"

#ifdef __APPLE__
#include "platform/macos/CFCalendarAdapter.hpp"
#include "platform/macos/CFPreferencesUserDefaults.hpp"
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/KeychainSecretStore.hpp"
#include "platform/macos/LibprocProcessTable.hpp"
#include "platform/macos/MacMountedVolumes.hpp"
#include "platform/macos/OsLog.hpp"
#else
#include "platform/posix/FileSecretStore.hpp"
#include "platform/posix/LocalTimeCalendar.hpp"
#include "platform/posix/MountTableVolumes.hpp"
#include "platform/posix/NullNotifier.hpp"
#include "platform/posix/ProcProcessTable.hpp"
#endif

namespace corvane {

struct SystemToolServices::Adapters {
    ProcessEnvironment environment = currentEnvironment();
#ifdef __APPLE__
    DistributedNotifier notifier;
    OsLog log;
    LibprocProcessTable processes;
    CFCalendarAdapter calendar;
    MacMountedVolumes volumes;
#else
    NullNotifier notifier;
    StderrLog log{environment.contains("CORVANE_LOG")};
    ProcProcessTable processes;
    LocalTimeCalendar calendar;
    MountTableVolumes volumes;
#endif
    SystemClock clock;
    PosixProcessRunner runner;
    ThreadSleeper sleeper;
    CurlHttpClient http;
    ToolServices services{
        .environment = environment,
        .notifier = notifier,
        .log = log,
        .clock = clock,
        .openDock =
            [this](const std::optional<std::filesystem::path>& dockPlist) {
                return openSystemDock(environment, dockPlist, processes, runner, clock, sleeper);
            },
        .openSecrets = [this](const std::filesystem::path& dataDirectory) -> std::unique_ptr<SecretStore> {
#ifdef __APPLE__
            (void)dataDirectory;
            return std::make_unique<KeychainSecretStore>(log);
#else
            return std::make_unique<FileSecretStore>(dataDirectory);
#endif
        },
        .calendar = calendar,
        .http = http,
        .runner = runner,
        .openDefaults = [](const std::filesystem::path& dataDir) -> std::unique_ptr<UserDefaults> {
#ifdef __APPLE__
            (void)dataDir;
            return std::make_unique<CFPreferencesUserDefaults>();
#else
            return std::make_unique<PlistFileUserDefaults>(dataDir / PlistFileUserDefaults::fileName);
#endif
        },
        .volumes = &volumes,
    };
};

SystemToolServices::SystemToolServices() : adapters_(std::make_unique<Adapters>()) {}
SystemToolServices::~SystemToolServices() = default;

ToolServices& SystemToolServices::services() { return adapters_->services; }

} // namespace corvane
