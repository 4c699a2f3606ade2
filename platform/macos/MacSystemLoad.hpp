#pragma once

#include "CorvaneCore/platform/SystemLoad.hpp"

#include <cstdint>
#include <optional>

namespace corvane {

/// The load from the Mach host statistics, the installed memory from sysctl, and the heat from
/// the process information's thermal state.
class MacSystemLoad final : public SystemLoad {
  public:
    MacSystemLoad();
    ~MacSystemLoad() override;
    MacSystemLoad(const MacSystemLoad&) = delete;
    MacSystemLoad& operator=(const MacSystemLoad&) = delete;

    std::optional<double> cpu() override;
    std::optional<double> memory() override;
    bool isHot() override;

  private:
    struct Ticks {
        std::uint64_t busy = 0;
        std::uint64_t total = 0;
    };

    // The host port (a mach_port_t), held for the adapter's life instead of taking a new send
    // right on every reading.
    unsigned int host_ = 0;
    std::optional<Ticks> previous_;
};

} // namespace corvane
