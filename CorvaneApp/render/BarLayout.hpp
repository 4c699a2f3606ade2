#pragma once

#include "CorvaneApp/render/BarScene.hpp"
#include "CorvaneCore/bar/DockLens.hpp"
#include "CorvaneCore/bar/Geometry.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace corvane {

/// Where one tile is on one frame, in the view's top-down coordinates.
struct BarTileFrame {
    Rect resting;
    Rect drawn;
    double scale = 1;
    /// How far the lens pushed the tile along the bar.
    double shift = 0;
};

/// One frame of the bar: the background's extent and every tile's frame, in scene order.
struct BarFrame {
    Rect bar;
    std::vector<BarTileFrame> tiles;
    /// The tile under the lens while the lens is on.
    std::optional<std::size_t> hovered;
};

/// The bar's tiles at rest in a view of a given length, and the per-frame arithmetic that scales
/// and pushes them as the lens moves. The view is `length` points along the bar and the metrics'
/// window height across it; the bar is centred along it and sits on the screen edge.
class BarLayout {
public:
    /// The view's length defaults to the bar plus room at both ends for the bar to grow.
    explicit BarLayout(const BarScene& scene, std::optional<double> length = std::nullopt);

    /// The bar's length at rest.
    double barLength() const { return barLength_; }
    /// The room the bar needs beyond its resting length at each end while magnified.
    double growthRoom() const { return growthRoom_; }
    double length() const { return length_; }
    /// The view's size: length by window height on a bottom bar, turned on a side bar.
    double width() const;
    double height() const;
    /// Resting tile centres along the bar, in view coordinates.
    const std::vector<double>& centers() const { return centers_; }

    /// Fills `out` for the lens's current state. Reuses `out`'s storage, so a caller that keeps
    /// one frame across display frames allocates nothing here once it has grown to the tile count.
    void frame(const DockLens& lens, BarFrame& out) const;
    BarFrame frame(const DockLens& lens) const;

private:
    Rect restingFrame(std::size_t index) const;
    Rect barRect(double start, double end) const;

    DockMetrics metrics_;
    DockPosition position_;
    DockStyle style_;
    /// The bar magnifies (a bottom bar with the magnify effect); otherwise only the hovered tile grows.
    bool magnifies_ = false;
    std::vector<double> centers_;
    std::vector<double> lengths_;
    std::vector<BarTile::Kind> kinds_;
    /// Fixed points of the lens: the bar's ends and its separators.
    std::vector<double> anchors_;
    double barLength_ = 0;
    double barStart_ = 0;
    double growthRoom_ = 0;
    double length_ = 0;
    double thickness_ = 0;
};

/// The length a tile takes along the bar at these metrics.
double tileLength(const BarTile& tile, const DockMetrics& metrics);

} // namespace corvane
