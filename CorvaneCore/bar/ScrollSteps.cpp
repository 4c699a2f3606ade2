#include "CorvaneCore/bar/ScrollSteps.hpp"

#include "CorvaneCore/bar/StepAccumulation.hpp"

#include <cmath>

namespace corvane {

int ScrollSteps::step(double delta, double at) {
    if (delta == 0) return 0;
    if (at - lastEvent > idleGap) {
        accumulated = 0;
        hasStepped = false;
    }
    lastEvent = at;
    // A swipe's momentum runs on long after the step; one gesture moves one workspace.
    if (hasStepped) return 0;
    accumulated = accumulating(accumulated, delta);
    if (std::abs(accumulated) < threshold) return 0;
    accumulated = 0;
    if (at - lastStep < cooldown) return 0;
    lastStep = at;
    hasStepped = true;
    return delta < 0 ? -1 : 1;
}

void ScrollSteps::reset() {
    accumulated = 0;
    hasStepped = false;
}

} // namespace corvane
