#pragma once

#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/dock/DockPosition.hpp"
#include "CorvaneCore/looks/DockTheme.hpp"
#include "CorvaneCore/looks/SliderRange.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct Profile;

/// How icons react to the pointer.
enum class HoverEffect { none, scale, magnify };
/// What a launching application's icon does.
enum class LaunchAnimation { bounce, pulse, shake };
/// The running indicator's shape.
enum class IndicatorStyle { dot, dash };
/// The look of the Trash tile.
enum class TrashIcon { system, wire, aqua, steel, snow, neon, recycle };

std::string_view rawValue(HoverEffect effect);
std::optional<HoverEffect> hoverEffectFromRaw(std::string_view raw);
std::string_view rawValue(LaunchAnimation animation);
std::optional<LaunchAnimation> launchAnimationFromRaw(std::string_view raw);
std::string_view rawValue(IndicatorStyle style);
std::optional<IndicatorStyle> indicatorStyleFromRaw(std::string_view raw);
std::string_view rawValue(TrashIcon icon);
std::optional<TrashIcon> trashIconFromRaw(std::string_view raw);

struct WindowPreviewSettings {
    bool isEnabled = true;
    /// Seconds of hovering before a preview opens.
    double delay = 0.4;
    bool onlyWithMultipleWindows = false;

    bool operator==(const WindowPreviewSettings&) const = default;
};

struct DropZoneSettings {
    bool isEnabled = true;
    bool opensNearPointer = false;

    bool operator==(const DropZoneSettings&) const = default;
};

/// The user's choices for the own Dock bar. Main thread; `iconScale` runs for every icon on every
/// frame and does not allocate.
struct DockStyle {
    static constexpr SliderRange iconSizeRange{16, 128};
    static constexpr SliderRange adjustableIconSizeRange{32, 96};
    static constexpr SliderRange bottomSpaceRange{0, 24};
    static constexpr SliderRange hoverScaleRange{1, 1.5};

    HoverEffect hoverEffect = HoverEffect::scale;
    /// Size factor of a hovered icon under the `scale` effect.
    double hoverScale = 1.1;
    LaunchAnimation launchAnimation = LaunchAnimation::bounce;
    IndicatorStyle indicatorStyle = IndicatorStyle::dot;
    /// "#RRGGBB"; none takes the theme's.
    std::optional<std::string> indicatorColorHex;
    /// None takes the macOS Dock's size.
    std::optional<double> iconSize;
    /// Gap to the screen edge; none derives it.
    std::optional<double> bottomSpace;
    DockPosition position = DockPosition::bottom;
    bool showsTrash = true;
    TrashIcon trashIcon = TrashIcon::system;
    bool showsDownloads = true;
    /// Running applications that are not pinned.
    bool showsRunningApps = true;
    bool showsLauncher = false;
    WindowPreviewSettings windowPreviews;
    DropZoneSettings dropZone;
    /// Refresh less often.
    bool savesEnergy = false;
    std::string themeID = "native";
    /// Overrides per theme id, kept for every theme the user has customized.
    std::map<std::string, DockThemeCustomization> themeCustomizations;
    /// The indicator takes the active workspace's colour.
    bool indicatorFollowsWorkspace = true;

    static DockStyle defaultStyle() { return {}; }

    /// The bar's appearance: the macOS Dock's `dock`, with this style's size, margin and effect.
    DockAppearance applied(const DockAppearance& dock) const;
    /// The drawn scale of an icon `distance` points from the pointer (none when the pointer is
    /// not over the bar).
    double iconScale(std::optional<double> distance, bool isHovered, const DockMetrics& metrics) const;
    /// The drawn scale of a widget card.
    double cardScale(bool isHovered) const;
    /// The icon size after dragging the bar's separator by (`dx`, `dy`) from size `from`.
    static double iconSizeDragging(double from, double dx, double dy, DockPosition position);
    /// The indicator colour: the active workspace's when it leads, else this style's, else the
    /// theme's; none draws the system default.
    std::optional<std::string> indicatorHex(const Profile* activeProfile) const;
    bool isSavingEnergy(bool lowPowerMode) const { return savesEnergy || lowPowerMode; }
    /// Seconds between the bar's periodic refreshes.
    double refreshInterval(bool lowPowerMode) const { return isSavingEnergy(lowPowerMode) ? 3 : 1; }

    /// The chosen theme as shipped; `native` when the id is unknown.
    const DockTheme& baseTheme() const { return DockTheme::named(themeID); }
    /// The user's overrides of the chosen theme; empty when there are none.
    DockThemeCustomization themeCustomization() const;
    /// The chosen theme with the user's overrides.
    DockTheme theme() const { return baseTheme().customized(themeCustomization()); }

    bool operator==(const DockStyle&) const = default;
};

} // namespace corvane
