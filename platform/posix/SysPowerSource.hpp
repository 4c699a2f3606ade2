#pragma once

#include "CorvaneCore/platform/PowerSource.hpp"

#include <filesystem>

namespace corvane {

/// The battery as Linux shows it under /sys/class/power_supply: the first supply of type
/// "Battery", and whether a "Mains" supply is online.
class SysPowerSource final : public PowerSource {
  public:
    explicit SysPowerSource(std::filesystem::path root = "/sys/class/power_supply")
        : root_(std::move(root)) {}

    std::optional<PowerReading> read() override;

  private:
    std::filesystem::path root_;
};

} // namespace corvane
