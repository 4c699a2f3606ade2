#pragma once

#include <optional>

namespace corvane {

/// The internal battery at one moment.
struct PowerReading {
    /// Charge as a share of full capacity, 0…1.
    double level = 0;
    /// Taking charge now.
    bool isCharging = false;
    /// On external power, charging or not (a full battery on a charger is not charging).
    bool isOnExternalPower = false;
    /// Minutes until empty (on battery) or full (charging), when the system has an estimate.
    std::optional<double> minutesRemaining;

    bool operator==(const PowerReading&) const = default;
};

/// The machine's battery, for the battery widget. Main thread; a read is a few file or
/// IOKit reads, cheap enough for a tick.
class PowerSource {
  public:
    virtual ~PowerSource() = default;
    /// None when the machine has no battery or it cannot be read.
    virtual std::optional<PowerReading> read() = 0;
};

} // namespace corvane
