#include "platform/posix/ProcSystemLoad.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace corvane {

std::optional<double> ProcSystemLoad::cpu() {
    std::ifstream stat(proc_ / "stat");
    std::string line;
    if (!std::getline(stat, line) || line.rfind("cpu ", 0) != 0) return std::nullopt;
    // user nice system idle iowait irq softirq steal …: idle and iowait are the idle time.
    std::istringstream fields(line.substr(4));
    std::vector<std::uint64_t> ticks;
    for (std::uint64_t value; fields >> value;)
        ticks.push_back(value);
    if (ticks.size() < 4) return std::nullopt;
    Ticks now;
    for (std::size_t i = 0; i < ticks.size() && i < 8; ++i)
        now.total += ticks[i];
    auto idle = ticks[3] + (ticks.size() > 4 ? ticks[4] : 0);
    now.busy = now.total - idle;

    auto previous = previous_;
    previous_ = now;
    if (!previous || now.total <= previous->total || now.busy < previous->busy) return std::nullopt;
    return static_cast<double>(now.busy - previous->busy) / static_cast<double>(now.total - previous->total);
}

std::optional<double> ProcSystemLoad::memory() {
    std::ifstream meminfo(proc_ / "meminfo");
    std::optional<double> total, available;
    std::string key;
    double kilobytes = 0;
    std::string unit;
    while (meminfo >> key >> kilobytes) {
        if (key == "MemTotal:") total = kilobytes;
        if (key == "MemAvailable:") available = kilobytes;
        std::getline(meminfo, unit);
    }
    if (!total || !available || *total <= 0) return std::nullopt;
    return std::clamp(1 - *available / *total, 0.0, 1.0);
}

} // namespace corvane
