#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One fan's speed.
struct FanReading {
    /// The system's name, or "Fan 1", "Fan 2" where it has none.
    std::string name;
    /// Revolutions per minute now.
    double rpm = 0;
    /// The fan's range, when the system says; it makes a speed a share.
    std::optional<double> minimumRPM;
    std::optional<double> maximumRPM;

    bool operator==(const FanReading&) const = default;
};

/// The machine's fans, for the fans widget. Main thread.
class FanSensors {
  public:
    virtual ~FanSensors() = default;
    /// Every fan; empty on a fanless machine or when the sensors cannot be read.
    virtual std::vector<FanReading> read() = 0;
};

} // namespace corvane
