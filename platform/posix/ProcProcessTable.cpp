#include "platform/posix/ProcProcessTable.hpp"

#include <charconv>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace {

struct StatLine {
    std::string name;
    char state = '?';
    unsigned long long startTicks = 0;
};

// "/proc/PID/stat": "PID (NAME) STATE ..." where NAME may itself hold spaces and parentheses, so
// it ends at the last ")". The start time is the 22nd field, in clock ticks since boot.
std::optional<StatLine> readStat(const std::filesystem::path& directory) {
    std::ifstream stream(directory / "stat");
    std::string line;
    if (!std::getline(stream, line)) return std::nullopt;
    auto open = line.find('('), close = line.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open) return std::nullopt;
    StatLine stat;
    stat.name = line.substr(open + 1, close - open - 1);
    std::istringstream fields(line.substr(close + 1));
    std::string field;
    for (int index = 3; fields >> field; ++index) {
        if (index == 3) stat.state = field.empty() ? '?' : field[0];
        if (index == 22) {
            std::from_chars(field.data(), field.data() + field.size(), stat.startTicks);
            return stat;
        }
    }
    return std::nullopt;
}

double secondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

} // namespace

std::optional<ProcessInfo> ProcProcessTable::find(const std::string& name) const {
    const auto ticksPerSecond = static_cast<double>(sysconf(_SC_CLK_TCK));
    const auto uid = getuid();
    std::optional<ProcessInfo> newest;
    unsigned long long newestTicks = 0;

    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ec)) {
        const auto pidText = entry.path().filename().string();
        int pid = 0;
        auto [end, error] = std::from_chars(pidText.data(), pidText.data() + pidText.size(), pid);
        if (error != std::errc() || end != pidText.data() + pidText.size()) continue;
        struct stat owner {};
        if (::stat(entry.path().c_str(), &owner) != 0 || owner.st_uid != uid) continue;
        // A process can end between the listing and this read; it is then simply not there.
        auto stat = readStat(entry.path());
        if (!stat || stat->name != name || stat->state == 'Z' || stat->state == 'X') continue;
        if (newest && stat->startTicks < newestTicks) continue;
        newestTicks = stat->startTicks;
        newest = ProcessInfo{pid, name, {}};
    }
    if (!newest) return std::nullopt;
    // Ticks count from boot; CLOCK_BOOTTIME keeps counting through sleep, as they do.
    const double age = secondsOf(CLOCK_BOOTTIME) - static_cast<double>(newestTicks) / ticksPerSecond;
    newest->startTime = Date::fromUnixTime(secondsOf(CLOCK_REALTIME) - age);
    return newest;
}

} // namespace corvane
