#pragma once

#include "CorvaneCore/platform/NetworkCounters.hpp"

namespace corvane {

/// The interfaces' byte counters from `getifaddrs`, whose link-level entries carry each
/// interface's `if_data`. Its counters are 32-bit and wrap; the widget's rate logic allows for it.
class IfaddrsNetworkCounters final : public NetworkCounters {
  public:
    std::vector<InterfaceCounters> read() override;
};

} // namespace corvane
