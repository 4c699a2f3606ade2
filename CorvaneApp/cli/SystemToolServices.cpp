#include "CorvaneApp/cli/SystemToolServices.hpp"

#include "CorvaneApp/shell/SystemMachine.hpp"
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
#include "platform/macos/MacPermissionStates.hpp"
#include "platform/macos/OsLog.hpp"
#include "platform/macos/SkyLightDesktopServer.hpp"
#else
#include "platform/posix/FileSecretStore.hpp"
#include "platform/posix/LocalTimeCalendar.hpp"
#include "platform/posix/MountTableVolumes.hpp"
#include "platform/posix/NullNotifier.hpp"
#include "platform/posix/ProcProcessTable.hpp"
#endif

namespace corvane {

#ifdef __APPLE__
namespace {

// Loading the window server's framework would cost every run of the tool; only `desktops` asks.
class LazyDesktopServer final : public DesktopServer {
public:
    std::vector<Display> displays() override { return server().displays(); }
    std::optional<std::uint64_t> activeSpace() override { return server().activeSpace(); }
    bool canAssign() const override { return server().canAssign(); }
    bool assign(std::int32_t pid, std::optional<std::uint64_t> space) override { return server().assign(pid, space); }

private:
    SkyLightDesktopServer& server() const {
        if (!server_) server_.emplace();
        return *server_;
    }
    mutable std::optional<SkyLightDesktopServer> server_;
};

} // namespace
#endif

struct SystemToolServices::Adapters {
    ProcessEnvironment environment = currentEnvironment();
#ifdef __APPLE__
    DistributedNotifier notifier;
    OsLog log;
    LibprocProcessTable processes;
    CFCalendarAdapter calendar;
    MacMountedVolumes volumes;
    LazyDesktopServer desktops;
    MacPermissionStates permissions;
#else
    NullNotifier notifier;
    StderrLog log{environment.contains("CORVANE_LOG")};
    ProcProcessTable processes;
    LocalTimeCalendar calendar;
    MountTableVolumes volumes;
#endif
    SystemMachine machine;
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
#ifdef __APPLE__
        .openSecrets = [this](const std::filesystem::path&) -> std::unique_ptr<SecretStore> {
            return std::make_unique<KeychainSecretStore>(log);
        },
#else
        .openSecrets = [](const std::filesystem::path& dataDirectory) -> std::unique_ptr<SecretStore> {
            return std::make_unique<FileSecretStore>(dataDirectory);
        },
#endif
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
#ifdef __APPLE__
        .desktops = &desktops,
        .permissions = &permissions,
#endif
        .machine = machine.sources(),
        .sleeper = &sleeper,
    };
};

SystemToolServices::SystemToolServices() : adapters_(std::make_unique<Adapters>()) {}
SystemToolServices::~SystemToolServices() = default;

ToolServices& SystemToolServices::services() { return adapters_->services; }

} // namespace corvane
