#include "CorvaneCore/bar/SpringValue.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane {

void SpringValue::step(double dt) {
    // An infinite gap would never finish integrating; it cannot come from a real frame clock.
    if (dt > 0 && std::isfinite(dt)) {
        double omega = 2 * std::numbers::pi / response;
        double stiffness = omega * omega;
        double damping = 4 * std::numbers::pi * dampingRatio / response;
        double remaining = dt;
        while (remaining > 0) {
            double h = std::min(remaining, maximumStep);
            // Velocity first (semi-implicit Euler): stable for stiff springs where explicit Euler
            // would gain energy.
            velocity += h * (stiffness * (target - value) - damping * velocity);
            value += h * velocity;
            remaining -= h;
        }
    }
    if (isSettled()) {
        value = target;
        velocity = 0;
    }
}

bool SpringValue::isSettled() const { return std::abs(value - target) < 0.001 && std::abs(velocity) < 0.01; }

} // namespace corvane
