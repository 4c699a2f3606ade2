#pragma once

#include <optional>

namespace corvane {

/// A damped spring pulling `value` towards `target`; the lens's animation state.
struct SpringValue {
    /// Longer frames are integrated in steps this short, so the spring stays stable at any frame
    /// rate and after a stall.
    static constexpr double maximumStep = 1.0 / 240;
    static constexpr double maximumGap = 60;

    double value = 0;
    double velocity = 0;
    double target = 0;
    /// Seconds for one undamped oscillation.
    double response = 1;
    double dampingRatio = 1;

    /// At rest at `start`, pulled towards `goal` (or staying at `start` without one).
    SpringValue(double start, std::optional<double> goal, double responseSeconds, double damping)
        : value(start), velocity(0), target(goal.value_or(start)), response(responseSeconds),
          dampingRatio(damping) {}

    /// Advances by `dt` seconds, then snaps to the target once close and slow enough to look still.
    void step(double dt);
    bool isSettled() const;

    bool operator==(const SpringValue&) const = default;
};

} // namespace corvane
