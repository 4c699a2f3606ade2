#pragma once

#include "CorvaneCore/platform/PowerSource.hpp"

namespace corvane {

/// The internal battery as IOKit's power sources describe it.
class IOKitPowerSource final : public PowerSource {
  public:
    std::optional<PowerReading> read() override;
};

} // namespace corvane
