#pragma once

namespace corvane::DockFit {

/// Icons never shrink below this, however long the bar.
inline constexpr double minimumIconSize = 16;

/// The icon size that makes a bar of `barLength` (measured at `current`) fit `available` points,
/// growing back towards `preferred` once there is room again.
double iconSize(double current, double preferred, double barLength, double available);

} // namespace corvane::DockFit
