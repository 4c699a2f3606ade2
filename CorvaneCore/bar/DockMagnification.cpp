#include "CorvaneCore/bar/DockMagnification.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane::DockMagnification {

namespace {

struct Curve {
    double extra;  // how much larger than 1 the icon under the pointer is
    double radius; // distance at which the effect ends
};

// Magnification is on only when it enlarges; every other size pair means no effect.
std::optional<Curve> curve(const DockMetrics& metrics) {
    double s = metrics.iconSize;
    double m = metrics.magnifiedIconSize;
    if (!(s > 0) || !(s < m)) return std::nullopt;
    return Curve{m / s - 1, reach * (s + metrics.iconSpacing)};
}

} // namespace

double scale(double distance, const DockMetrics& metrics) {
    auto c = curve(metrics);
    if (!c) return 1;
    double t = std::min(std::abs(distance) / c->radius, 1.0);
    double weight = (std::cos(std::numbers::pi * t) + 1) / 2;
    return 1 + c->extra * weight;
}

double displacement(double distance, const DockMetrics& metrics) {
    auto c = curve(metrics);
    if (!c) return 0;
    double u = std::min(std::abs(distance), c->radius);
    // The integral of the raised-cosine growth from the pointer to u.
    double pushed =
        c->extra * 0.5 * (u + (c->radius / std::numbers::pi) * std::sin(std::numbers::pi * u / c->radius));
    return distance < 0 ? -pushed : pushed;
}

std::vector<double> scales(std::span<const double> centers, std::optional<double> pointerX,
                           const DockMetrics& metrics) {
    std::vector<double> result(centers.size(), 1.0);
    if (!pointerX) return result;
    for (std::size_t i = 0; i < centers.size(); ++i)
        result[i] = scale(centers[i] - *pointerX, metrics);
    return result;
}

} // namespace corvane::DockMagnification
