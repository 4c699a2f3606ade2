// A stand-in for the macOS Dock. Once it has read its tiles it takes a name of its own
// ("crvn-test-dock") that the tests give the reloader, so that killall and the process table find
// it as they would find the real Dock, and a real Dock is never touched.
//
//   crvn-test-dock PLIST LOG [--restore-once|--restore-always MARKER]
//
// On start it reads its tiles from PLIST, as the Dock reads its preferences, and appends one line
// "PID PATH|PATH|..." to LOG. With --restore-once, the first time it is terminated it writes the
// tiles it read back over PLIST before exiting (and creates MARKER), as the real Dock sometimes
// does while it restarts; with --restore-always it does so every time. It exits on its own when its supervisor is gone.

#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/SystemClock.hpp"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

volatile std::sig_atomic_t terminated = 0;

void onTerminate(int) { terminated = 1; }

void appendLine(const char* path, const std::string& line) {
    int fd = ::open(path, O_WRONLY | O_CREAT | O_APPEND, 0644);
    if (fd < 0) return;
    // One write per line: concurrent Docks never interleave within a line.
    [[maybe_unused]] auto written = ::write(fd, line.data(), line.size());
    ::close(fd);
}

} // namespace

int main(int argc, char** argv) {
    using namespace corvane;
    if (argc != 3 && argc != 5) {
        std::fprintf(stderr, "usage: crvn-test-dock PLIST LOG [--restore-once|--restore-always MARKER]\n");
        return 2;
    }
    const char* logPath = argv[2];
    const char* marker = argc == 5 ? argv[4] : nullptr;
    const bool restoresAlways = argc == 5 && std::string(argv[3]) == "--restore-always";

    struct sigaction action {};
    action.sa_handler = onTerminate;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);

    const pid_t supervisor = getppid();
    PlistFileBackend backend(argv[1]);
    SystemClock clock;
    std::optional<DockSnapshot> snapshot;
    std::string line = std::to_string(getpid()) + " ";
    try {
        snapshot = DockPlistReader(backend, clock).read();
        for (const auto& item : snapshot->allItems())
            line += (item.app() ? item.app()->path : std::string(item.caseName())) + "|";
    } catch (const std::exception& error) {
        line += std::string("error: ") + error.what();
    }
    appendLine(logPath, line + "\n");
    // Only now does it answer to the Dock's name: a Dock the reloader can find has read its
    // tiles, however slowly a loaded machine started it. The real Dock, started by launchd, is
    // long past this point when anything writes its preferences.
    prctl(PR_SET_NAME, CORVANE_DOCK_STANDIN_NAME);

    // At most a minute, so that nothing outlives a test that died.
    for (int tick = 0; tick < 60 * 50 && !terminated && getppid() == supervisor; ++tick) ::usleep(20000);

    if (terminated && marker && snapshot && (restoresAlways || !std::filesystem::exists(marker))) {
        appendLine(marker, "restored\n");
        DockPlistWriter(backend).write(*snapshot);
    }
    return 0;
}
