#pragma once

#include "CorvaneCore/platform/NetworkCounters.hpp"

#include <filesystem>

namespace corvane {

/// The interface counters of /proc/net/dev. Linux does not say which interface is primary, so
/// they come in the file's order with loopback left out; an interface counts as active once it
/// has moved any bytes.
class ProcNetworkCounters final : public NetworkCounters {
  public:
    explicit ProcNetworkCounters(std::filesystem::path proc = "/proc") : proc_(std::move(proc)) {}

    std::vector<InterfaceCounters> read() override;

  private:
    std::filesystem::path proc_;
};

} // namespace corvane
