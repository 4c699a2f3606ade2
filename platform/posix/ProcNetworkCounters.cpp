#include "platform/posix/ProcNetworkCounters.hpp"

#include <fstream>
#include <sstream>
#include <string>

namespace corvane {

std::vector<InterfaceCounters> ProcNetworkCounters::read() {
    std::ifstream file(proc_ / "net" / "dev");
    std::vector<InterfaceCounters> interfaces;
    std::string line;
    // "  eth0: rx_bytes rx_packets … (8 receive fields) tx_bytes …"; two header lines first.
    while (std::getline(file, line)) {
        auto colon = line.find(':');
        if (colon == std::string::npos) continue;
        auto begin = line.find_first_not_of(' ');
        InterfaceCounters counters{.name = line.substr(begin, colon - begin)};
        if (counters.name == "lo") continue;
        std::istringstream fields(line.substr(colon + 1));
        std::uint64_t values[9] = {};
        int read = 0;
        while (read < 9 && fields >> values[read])
            ++read;
        if (read < 9) continue;
        counters.receivedBytes = values[0];
        counters.sentBytes = values[8];
        counters.isActive = counters.receivedBytes + counters.sentBytes > 0;
        interfaces.push_back(std::move(counters));
    }
    return interfaces;
}

} // namespace corvane
