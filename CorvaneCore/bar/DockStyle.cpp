#include "CorvaneCore/bar/DockStyle.hpp"

#include "CorvaneCore/bar/DockMagnification.hpp"
#include "CorvaneCore/support/RawValue.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <algorithm>
#include <cmath>

namespace corvane {

std::string_view rawValue(HoverEffect effect) {
    switch (effect) {
    case HoverEffect::none:
        return "none";
    case HoverEffect::scale:
        return "scale";
    case HoverEffect::magnify:
        return "magnify";
    }
    return "scale";
}

std::optional<HoverEffect> hoverEffectFromRaw(std::string_view raw) {
    return caseWithRawValue({HoverEffect::none, HoverEffect::scale, HoverEffect::magnify}, raw);
}

std::string_view rawValue(LaunchAnimation animation) {
    switch (animation) {
    case LaunchAnimation::bounce:
        return "bounce";
    case LaunchAnimation::pulse:
        return "pulse";
    case LaunchAnimation::shake:
        return "shake";
    }
    return "bounce";
}

std::optional<LaunchAnimation> launchAnimationFromRaw(std::string_view raw) {
    return caseWithRawValue({LaunchAnimation::bounce, LaunchAnimation::pulse, LaunchAnimation::shake}, raw);
}

std::string_view rawValue(IndicatorStyle style) {
    switch (style) {
    case IndicatorStyle::dot:
        return "dot";
    case IndicatorStyle::dash:
        return "dash";
    }
    return "dot";
}

std::optional<IndicatorStyle> indicatorStyleFromRaw(std::string_view raw) {
    return caseWithRawValue({IndicatorStyle::dot, IndicatorStyle::dash}, raw);
}

std::string_view rawValue(TrashIcon icon) {
    switch (icon) {
    case TrashIcon::system:
        return "system";
    case TrashIcon::wire:
        return "wire";
    case TrashIcon::aqua:
        return "aqua";
    case TrashIcon::steel:
        return "steel";
    case TrashIcon::snow:
        return "snow";
    case TrashIcon::neon:
        return "neon";
    case TrashIcon::recycle:
        return "recycle";
    }
    return "system";
}

std::optional<TrashIcon> trashIconFromRaw(std::string_view raw) {
    return caseWithRawValue({TrashIcon::system, TrashIcon::wire, TrashIcon::aqua, TrashIcon::steel,
                             TrashIcon::snow, TrashIcon::neon, TrashIcon::recycle},
                            raw);
}

DockAppearance DockStyle::applied(const DockAppearance& dock) const {
    DockAppearance result = dock;
    result.tileSize = iconSize ? iconSizeRange.clamped(*iconSize) : dock.tileSize;
    result.magnifies = hoverEffect == HoverEffect::magnify;
    // Choosing magnification here while the macOS Dock has it off leaves the Dock's large size
    // at a value the user never picked; a size in proportion to the tiles is a better start.
    if (result.magnifies && !dock.magnifies)
        result.largeSize = std::min(result.tileSize * 1.6, iconSizeRange.upper);
    result.bottomMarginOverride =
        bottomSpace ? std::optional(bottomSpaceRange.clamped(*bottomSpace)) : dock.bottomMarginOverride;
    return result;
}

double DockStyle::iconScale(std::optional<double> distance, bool isHovered,
                            const DockMetrics& metrics) const {
    switch (hoverEffect) {
    case HoverEffect::none:
        return 1;
    case HoverEffect::magnify:
        // A magnified side bar would swell across the screen; the sides fall back to hover scaling.
        if (position == DockPosition::bottom)
            return distance ? DockMagnification::scale(*distance, metrics) : 1;
        [[fallthrough]];
    case HoverEffect::scale:
        return isHovered ? hoverScaleRange.clamped(hoverScale) : 1;
    }
    return 1;
}

double DockStyle::cardScale(bool isHovered) const {
    if (hoverEffect == HoverEffect::none || !isHovered) return 1;
    return hoverScaleRange.clamped(hoverScale);
}

double DockStyle::iconSizeDragging(double from, double dx, double dy, DockPosition position) {
    double size = from;
    switch (position) {
    case DockPosition::bottom:
        size += dy;
        break;
    case DockPosition::left:
        size += dx;
        break;
    case DockPosition::right:
        size -= dx;
        break;
    }
    if (size <= adjustableIconSizeRange.lower) return adjustableIconSizeRange.lower;
    return std::round(std::min(size, adjustableIconSizeRange.upper));
}

std::optional<std::string> DockStyle::indicatorHex(const Profile* activeProfile) const {
    if (indicatorFollowsWorkspace && activeProfile) return activeProfile->indicatorHex();
    if (indicatorColorHex) return indicatorColorHex;
    return baseTheme().indicatorHex;
}

DockThemeCustomization DockStyle::themeCustomization() const {
    auto found = themeCustomizations.find(themeID);
    return found == themeCustomizations.end() ? DockThemeCustomization{} : found->second;
}

} // namespace corvane
