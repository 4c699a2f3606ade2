#pragma once

#include "CorvaneCore/platform/SystemLoad.hpp"

namespace corvane {

class FakeSystemLoad final : public SystemLoad {
  public:
    std::optional<double> cpu() override {
        ++cpuReadings;
        return cpuValue;
    }
    std::optional<double> memory() override { return memoryValue; }
    bool isHot() override { return hot; }

    std::optional<double> cpuValue;
    std::optional<double> memoryValue;
    bool hot = false;
    int cpuReadings = 0;
};

} // namespace corvane
