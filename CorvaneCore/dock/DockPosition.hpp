#pragma once

#include <optional>
#include <string_view>

namespace corvane {

/// The screen edge a Dock lives on.
enum class DockPosition { bottom, left, right };

std::string_view rawValue(DockPosition position);
std::optional<DockPosition> dockPositionFromRaw(std::string_view raw);
/// The macOS Dock's "orientation" preference: "left", "right", anything else (or none) is the bottom.
DockPosition dockPositionFromNativeOrientation(std::optional<std::string_view> orientation);

} // namespace corvane
