#pragma once

#include "CorvaneCore/bar/DockMetrics.hpp"
#include "CorvaneCore/bar/DockStyle.hpp"
#include "CorvaneCore/looks/DockTheme.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// An icon's pixels: premultiplied ARGB, one 32-bit word per pixel in native byte order, rows
/// top to bottom with no padding. The bar renderer draws it as it is, scaled to the tile.
struct BarImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// One tile as the bar draws it: what it shows, not where it came from.
struct BarTile {
    enum class Kind { app, folder, file, link, spacer, separator, downloads, trash, widget };

    Kind kind = Kind::app;
    /// The name shown above a hovered tile; its first letter or digit is the placeholder icon.
    std::string label;
    bool isRunning = false;
    /// A folder's badge: its colour "#RRGGBB" and the text drawn on it.
    std::optional<std::string> badgeColorHex;
    std::optional<std::string> badgeText;
    /// The icon to draw; none draws a placeholder made from the label.
    std::shared_ptr<const BarImage> image;
    /// A widget tile's kind, its width in tiles and the short text on its face.
    std::optional<WidgetKind> widgetKind;
    int span = 1;
    std::optional<std::string> caption;
    /// A spacer's width.
    SpacerVariant spacer = SpacerVariant::default_;
    /// Whether the Trash holds something.
    bool isFull = false;

    bool operator==(const BarTile& other) const = default;
};

/// Everything one drawing of the bar needs besides the moment and the lens: the tiles in display
/// order (section separators included), the style, the theme with the user's overrides, and the
/// metrics it is laid out with.
struct BarScene {
    std::vector<BarTile> tiles;
    DockStyle style;
    DockTheme theme;
    DockMetrics metrics;
    bool showsProcessIndicators = true;
    /// The running indicator's colour; none draws the system's, picked for the background.
    std::optional<std::string> indicatorHex;
};

} // namespace corvane
