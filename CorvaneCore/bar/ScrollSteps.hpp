#pragma once

#include <limits>

namespace corvane {

/// Turns trackpad and smooth-scrolling deltas into at most one workspace step per gesture.
/// Times are event timestamps in seconds from any monotonic origin.
struct ScrollSteps {
    static constexpr double defaultThreshold = 30;
    static constexpr double defaultCooldown = 0.35;
    static constexpr double defaultIdleGap = 0.3;

    /// Scroll distance that makes a step.
    double threshold = defaultThreshold;
    /// Least time between two steps.
    double cooldown = defaultCooldown;
    /// A pause longer than this starts a new gesture.
    double idleGap = defaultIdleGap;
    double accumulated = 0;
    double lastStep = std::numeric_limits<double>::lowest();
    bool hasStepped = false;
    double lastEvent = std::numeric_limits<double>::lowest();

    ScrollSteps() = default;
    ScrollSteps(double stepThreshold, double stepCooldown, double gestureIdleGap)
        : threshold(stepThreshold), cooldown(stepCooldown), idleGap(gestureIdleGap) {}

    /// −1 for the previous workspace, +1 for the next, 0 for none.
    int step(double delta, double at);
    void reset();

    bool operator==(const ScrollSteps&) const = default;
};

} // namespace corvane
