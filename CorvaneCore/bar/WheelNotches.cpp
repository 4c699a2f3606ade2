#include "CorvaneCore/bar/WheelNotches.hpp"

#include "CorvaneCore/bar/StepAccumulation.hpp"

#include <cmath>

namespace corvane {

int WheelNotches::step(double delta, double at) {
    if (at - lastEvent > idleGap) reset();
    lastEvent = at;
    if (delta == 0) return 0;
    if (std::abs(delta) <= armBelow) {
        armed = true;
        return 0;
    }
    if (!armed) return 0;
    accumulated = accumulating(accumulated, delta);
    if (std::abs(accumulated) < threshold) return 0;
    armed = false;
    accumulated = 0;
    return delta < 0 ? -1 : 1;
}

void WheelNotches::reset() {
    armed = true;
    accumulated = 0;
}

} // namespace corvane
