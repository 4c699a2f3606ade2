#pragma once

#include "CorvaneCore/platform/SystemLoad.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace corvane {

/// The load as Linux shows it in /proc/stat and /proc/meminfo. It never reports heat.
class ProcSystemLoad final : public SystemLoad {
  public:
    explicit ProcSystemLoad(std::filesystem::path proc = "/proc") : proc_(std::move(proc)) {}

    std::optional<double> cpu() override;
    std::optional<double> memory() override;
    bool isHot() override { return false; }

  private:
    struct Ticks {
        std::uint64_t busy = 0;
        std::uint64_t total = 0;
    };

    std::filesystem::path proc_;
    std::optional<Ticks> previous_;
};

} // namespace corvane
