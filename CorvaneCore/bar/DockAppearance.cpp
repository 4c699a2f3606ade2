#include "CorvaneCore/bar/DockAppearance.hpp"

#include "CorvaneCore/bar/DockFit.hpp"
#include "CorvaneCore/dock/PlistValue.hpp"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kSmallestSize = 16;
constexpr double kLargestSize = 128;

std::optional<double> numberIn(const PlistValue* value) {
    if (!value) return std::nullopt;
    if (auto number = value->number()) return number;
    if (auto flag = value->boolean()) return *flag ? 1.0 : 0.0;
    return std::nullopt;
}

} // namespace

DockAppearance DockAppearance::fromDockPreferences(const PlistValue* tileSize,
                                                   const PlistValue* showsProcessIndicators,
                                                   const PlistValue* magnification,
                                                   const PlistValue* largeSize) {
    DockAppearance appearance;
    appearance.tileSize = std::clamp(numberIn(tileSize).value_or(48), kSmallestSize, kLargestSize);
    if (auto shows = numberIn(showsProcessIndicators)) appearance.showsProcessIndicators = *shows != 0;
    if (auto magnifies = numberIn(magnification)) appearance.magnifies = *magnifies != 0;
    appearance.largeSize = std::clamp(numberIn(largeSize).value_or(128), kSmallestSize, kLargestSize);
    return appearance;
}

double DockAppearance::magnifiedIconSize() const {
    double resting = std::round(tileSize);
    return magnifies ? std::max(std::round(largeSize), resting) : resting;
}

DockMetrics DockAppearance::metrics() const {
    double s = std::round(tileSize);
    double spacing = std::round(0.0625 * s);
    return DockMetrics{
        .iconSize = s,
        .iconSpacing = spacing,
        .horizontalPadding = std::round(0.14 * s),
        .verticalPadding = std::round(0.14 * s),
        .cornerRadius = std::round(0.4 * s),
        .bottomMargin = bottomMarginOverride.value_or(spacing),
        .indicatorSize = std::max(spacing, 3.0),
        .magnifiedIconSize = magnifiedIconSize(),
    };
}

DockAppearance DockAppearance::fitted(std::optional<double> iconSize) const {
    DockAppearance copy = *this;
    if (iconSize && *iconSize < tileSize) copy.tileSize = std::max(*iconSize, DockFit::minimumIconSize);
    return copy;
}

} // namespace corvane
