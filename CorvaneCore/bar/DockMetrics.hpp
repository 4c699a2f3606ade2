#pragma once

#include <algorithm>
#include <cmath>

namespace corvane {

/// Every length of the own Dock bar, derived from one tile size (see `DockAppearance::metrics`).
struct DockMetrics {
    /// Room above the bar for the name label of a hovered icon.
    static constexpr double labelHeadroom = 44;

    double iconSize = 0;
    double iconSpacing = 0;
    double horizontalPadding = 0;
    double verticalPadding = 0;
    double cornerRadius = 0;
    /// Gap between the bar and the screen edge.
    double bottomMargin = 0;
    double indicatorSize = 0;
    double magnifiedIconSize = 0;

    double barHeight() const { return iconSize + 2 * verticalPadding; }
    /// The screen strip kept free of windows.
    double reservedHeight() const { return barHeight() + 2 * bottomMargin; }
    /// How far the bar slides to be out of sight, indicators included.
    double hiddenSlide() const { return barHeight() + 2 * bottomMargin + 2 * indicatorSize; }
    /// The transparent panel hosting the bar: the bar, a magnified icon's growth (at least half an
    /// icon, so a hover effect has room even without magnification) and the label headroom.
    double windowHeight() const {
        double growth = std::max(magnifiedIconSize - iconSize, 0.5 * iconSize);
        return std::ceil(growth + bottomMargin + iconSize + 2 * verticalPadding + labelHeadroom);
    }

    bool operator==(const DockMetrics&) const = default;
};

} // namespace corvane
