#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

/// The byte counters of one network interface since it came up. Counters only grow, except
/// that they wrap (32-bit counters on some systems) or restart when the interface does.
struct InterfaceCounters {
    /// The system's name: "en0", "eth0", "wlan0".
    std::string name;
    std::uint64_t receivedBytes = 0;
    std::uint64_t sentBytes = 0;
    /// Up and not a loopback: where the traffic a person cares about goes.
    bool isActive = true;

    bool operator==(const InterfaceCounters&) const = default;
};

/// The network interfaces' counters, for the network and activity widgets; rates come from two
/// samples. Main thread.
class NetworkCounters {
  public:
    virtual ~NetworkCounters() = default;
    /// Every interface but loopback, in the system's order, the primary one first where the
    /// system can tell; empty when the counters cannot be read.
    virtual std::vector<InterfaceCounters> read() = 0;
};

} // namespace corvane
