#include "CorvaneCore/bar/DockLens.hpp"

#include "CorvaneCore/bar/DockMagnification.hpp"

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

// An undershooting spring must not shrink icons below their resting size.
double strength(const SpringValue& amount) {
    return amount.value > 0 ? amount.value : 0;
}

} // namespace

void DockLens::follow(std::optional<double> pointerX) {
    if (pointerX) {
        // A lens that is practically off jumps to the pointer, so magnification grows in place
        // instead of sweeping in from where it was last seen.
        if (amount.value < 0.01) {
            x.value = *pointerX;
            x.velocity = 0;
        }
        x.target = *pointerX;
    }
    amount.target = pointerX ? 1 : 0;
}

void DockLens::step(double dt) {
    x.step(dt);
    amount.step(dt);
}

double DockLens::scale(double center, const DockMetrics& metrics) const {
    return 1 + strength(amount) * (DockMagnification::scale(center - x.value, metrics) - 1);
}

double DockLens::rawDisplacement(double center, const DockMetrics& metrics) const {
    return strength(amount) * DockMagnification::displacement(center - x.value, metrics);
}

double DockLens::anchor(std::span<const double> separators, const DockMetrics& metrics) const {
    if (separators.empty()) return 0;
    double lens = x.value;
    // The neighbours of the lens in sorted order, found without sorting: the greatest separator
    // below it and the least at or above it.
    double first = std::numeric_limits<double>::infinity();
    double last = -std::numeric_limits<double>::infinity();
    double below = -std::numeric_limits<double>::infinity();
    double above = std::numeric_limits<double>::infinity();
    for (double separator : separators) {
        first = std::min(first, separator);
        last = std::max(last, separator);
        if (separator < lens) below = std::max(below, separator);
        if (separator >= lens) above = std::min(above, separator);
    }
    if (lens <= first) return rawDisplacement(first, metrics);
    if (lens >= last) return rawDisplacement(last, metrics);
    double t = (lens - below) / std::max(above - below, 1.0);
    double k = t * t * (3 - 2 * t);
    return (1 - k) * rawDisplacement(below, metrics) + k * rawDisplacement(above, metrics);
}

double DockLens::displacement(double center, std::span<const double> separators,
                              const DockMetrics& metrics) const {
    return rawDisplacement(center, metrics) - anchor(separators, metrics);
}

} // namespace corvane
