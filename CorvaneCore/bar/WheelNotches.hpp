#pragma once

#include <limits>

namespace corvane {

/// Turns notched mouse-wheel deltas into workspace steps: one step per deliberate turn, then
/// nothing until the wheel comes to rest. Times are event timestamps in seconds.
struct WheelNotches {
    /// A delta this small or smaller is the wheel coming to rest, which re-arms it.
    static constexpr double armBelow = 1.5;
    static constexpr double threshold = 3;
    static constexpr double idleGap = 0.25;

    bool armed = true;
    double accumulated = 0;
    double lastEvent = std::numeric_limits<double>::lowest();

    /// −1 for the previous workspace, +1 for the next, 0 for none.
    int step(double delta, double at);
    void reset();

    bool operator==(const WheelNotches&) const = default;
};

} // namespace corvane
