// The command-line tool's real services are made here, and only here.

#include "CorvaneApp/cli/Tool.hpp"
#include "platform/posix/StderrLog.hpp"
#include "platform/posix/SystemClock.hpp"

#include <iostream>

#ifdef __APPLE__
#include "platform/macos/DistributedNotifier.hpp"
#include "platform/macos/OsLog.hpp"
#else
#include "platform/posix/NullNotifier.hpp"
#endif

int main(int argc, char** argv) {
    using namespace corvane;
    auto environment = currentEnvironment();
#ifdef __APPLE__
    DistributedNotifier notifier;
    OsLog log;
#else
    NullNotifier notifier;
    StderrLog log(environment.contains("CORVANE_LOG"));
#endif
    SystemClock clock;
    ToolServices services{std::move(environment), notifier, log, clock};
    return runTool(argc, argv, services, std::cout, std::cerr);
}
