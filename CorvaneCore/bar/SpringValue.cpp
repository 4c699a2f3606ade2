#include "CorvaneCore/bar/SpringValue.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane {

void SpringValue::step(double dt) {
    if (dt > 0) {
        // After a minute any damped spring has come to rest to the last bit, so a longer gap (a
        // machine waking from sleep) is integrated as a minute instead of millions of steps.
        dt = std::min(dt, maximumGap);
        double omega = 2 * std::numbers::pi / response;
        double stiffness = omega * omega;
        double damping = 4 * std::numbers::pi * dampingRatio / response;
        // Whole sub-steps, then the remainder; the small allowance keeps rounding in dt from
        // adding a vanishing extra step.
        auto count = static_cast<long long>(std::max(std::ceil(dt / maximumStep - 1e-9), 1.0));
        for (long long i = 0; i < count; ++i) {
            double h = i + 1 < count ? maximumStep : dt - maximumStep * static_cast<double>(count - 1);
            // Velocity first (semi-implicit Euler): stable for stiff springs where explicit Euler
            // would gain energy.
            velocity += h * (stiffness * (target - value) - damping * velocity);
            value += h * velocity;
        }
    }
    if (isSettled()) {
        value = target;
        velocity = 0;
    }
}

bool SpringValue::isSettled() const {
    return std::abs(value - target) < 0.001 && std::abs(velocity) < 0.01;
}

} // namespace corvane
