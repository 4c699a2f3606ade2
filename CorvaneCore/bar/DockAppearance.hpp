#pragma once

#include "CorvaneCore/bar/DockMetrics.hpp"

#include <optional>

namespace corvane {

class PlistValue;

/// The size and magnification choice the own Dock bar is drawn with.
struct DockAppearance {
    /// Icon size in points.
    double tileSize = 48;
    bool showsProcessIndicators = true;
    bool magnifies = false;
    /// Magnified icon size in points.
    double largeSize = 128;
    /// Gap between the bar and the screen edge; none derives it from the tile size.
    std::optional<double> bottomMarginOverride;

    static DockAppearance systemDefault() { return {}; }

    /// From the macOS Dock's own preferences ("tilesize", "show-process-indicators",
    /// "magnification", "largesize"), each as read or null when missing. A value that is not a
    /// number takes the Dock's default; booleans count as numbers, as the Dock stores either.
    static DockAppearance fromDockPreferences(const PlistValue* tileSize,
                                              const PlistValue* showsProcessIndicators,
                                              const PlistValue* magnification, const PlistValue* largeSize);

    /// The size a hovered icon under the pointer reaches; magnification never shrinks it.
    double magnifiedIconSize() const;
    DockMetrics metrics() const;
    /// A copy with a smaller tile size (never below 16); a larger or missing size changes nothing,
    /// so fitting to a screen only ever shrinks the bar.
    DockAppearance fitted(std::optional<double> iconSize) const;

    bool operator==(const DockAppearance&) const = default;
};

} // namespace corvane
