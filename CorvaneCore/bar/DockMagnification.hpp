#pragma once

#include "CorvaneCore/bar/DockMetrics.hpp"

#include <optional>
#include <span>
#include <vector>

namespace corvane::DockMagnification {

/// How many tile pitches from the pointer an icon still swells.
inline constexpr double reach = 2.5;

/// The size factor of an icon whose centre is `distance` points from the pointer: the magnified
/// size right under it, easing to 1 at `reach` pitches.
double scale(double distance, const DockMetrics& metrics);
/// How far the growth of the icons between the pointer and `distance` pushes an icon away from
/// the pointer; signed like `distance`, constant beyond the reach.
double displacement(double distance, const DockMetrics& metrics);
/// `scale` of each centre's distance to the pointer; all 1 without a pointer.
std::vector<double> scales(std::span<const double> centers, std::optional<double> pointerX,
                           const DockMetrics& metrics);

} // namespace corvane::DockMagnification
