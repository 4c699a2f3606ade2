#pragma once

#include "CorvaneCore/bar/DockMetrics.hpp"
#include "CorvaneCore/bar/SpringValue.hpp"

#include <optional>
#include <span>

namespace corvane {

/// The animated magnifying lens: where along the bar it is centred, and how strongly it is on.
/// Main thread; evaluated for every tile on every frame, so nothing here allocates.
struct DockLens {
    /// The lens centre along the bar, in points.
    SpringValue x{0, std::nullopt, 0.16, 0.82};
    /// 0 is off, 1 fully on.
    SpringValue amount{0, std::nullopt, 0.24, 0.72};

    /// A pointer move (or, with none, the pointer leaving the bar).
    void follow(std::optional<double> pointerX);
    void step(double dt);
    bool isSettled() const { return x.isSettled() && amount.isSettled(); }

    double scale(double center, const DockMetrics& metrics) const;
    /// The push of the tile at `center` away from the lens, before any edge is held in place.
    double rawDisplacement(double center, const DockMetrics& metrics) const;
    /// The push that keeps the bar's nearest fixed boundary (`separators`: its ends and section
    /// boundaries, in any order) in place, so the bar grows away from it instead of drifting.
    double displacement(double center, std::span<const double> separators, const DockMetrics& metrics) const;
    double anchor(std::span<const double> separators, const DockMetrics& metrics) const;

    bool operator==(const DockLens&) const = default;
};

} // namespace corvane
