#include "CorvaneApp/render/BarLayout.hpp"

#include "CorvaneCore/bar/DockMagnification.hpp"
#include "CorvaneCore/bar/DockTileGeometry.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {

namespace {

// Below this the lens is practically off: nothing counts as hovered.
constexpr double lensOnThreshold = 0.01;

double clampedAmount(const DockLens& lens) {
    return std::clamp(lens.amount.value, 0.0, 1.0);
}

} // namespace

double tileLength(const BarTile& tile, const DockMetrics& metrics) {
    double s = metrics.iconSize;
    switch (tile.kind) {
    case BarTile::Kind::widget: {
        double span = std::max(tile.span, 1);
        return span * s + (span - 1) * metrics.iconSpacing;
    }
    case BarTile::Kind::spacer:
        return tile.spacer == SpacerVariant::small ? std::round(s / 2) : s;
    case BarTile::Kind::separator:
        // Wide enough to aim at when dragging it to resize the bar.
        return std::max(std::round(s / 4), 8.0);
    default:
        return s;
    }
}

BarLayout::BarLayout(const BarScene& scene, std::optional<double> length)
    : metrics_(scene.metrics), position_(scene.style.position), style_(scene.style),
      magnifies_(scene.style.hoverEffect == HoverEffect::magnify && scene.style.position == DockPosition::bottom) {
    const double spacing = metrics_.iconSpacing;
    double run = 0;
    for (const auto& tile : scene.tiles) {
        double l = tileLength(tile, metrics_);
        if (!lengths_.empty()) run += spacing;
        centers_.push_back(run + l / 2);
        lengths_.push_back(l);
        kinds_.push_back(tile.kind);
        run += l;
    }
    // An empty bar still shows as one tile's worth, so that it can be found and dropped on.
    if (lengths_.empty()) run = metrics_.iconSize;
    barLength_ = run + 2 * metrics_.horizontalPadding;

    double hoverGrowth = 0.5 * metrics_.iconSize;
    for (std::size_t i = 0; i < lengths_.size(); ++i)
        if (kinds_[i] == BarTile::Kind::widget)
            hoverGrowth = std::max(hoverGrowth, (style_.cardScale(true) - 1) * lengths_[i] / 2);
    // All of a magnified bar's growth can go to one side when its other end is held in place.
    double magnifiedGrowth =
        magnifies_ ? 2 * DockMagnification::displacement(std::numeric_limits<double>::max(), metrics_) : 0;
    growthRoom_ = std::max(hoverGrowth, magnifiedGrowth) + metrics_.horizontalPadding;

    length_ = length.value_or(barLength_ + 2 * growthRoom_);
    thickness_ = metrics_.windowHeight();
    barStart_ = (length_ - barLength_) / 2;
    double firstTile = barStart_ + metrics_.horizontalPadding;
    for (auto& center : centers_) center += firstTile;

    anchors_.push_back(barStart_);
    for (std::size_t i = 0; i < kinds_.size(); ++i)
        if (kinds_[i] == BarTile::Kind::separator) anchors_.push_back(centers_[i]);
    anchors_.push_back(barStart_ + barLength_);
}

double BarLayout::width() const {
    return position_ == DockPosition::bottom ? length_ : thickness_;
}

double BarLayout::height() const {
    return position_ == DockPosition::bottom ? thickness_ : length_;
}

Rect BarLayout::restingFrame(std::size_t index) const {
    double along = centers_[index] - lengths_[index] / 2;
    double s = metrics_.iconSize;
    double inset = metrics_.bottomMargin + metrics_.verticalPadding;
    switch (position_) {
    case DockPosition::left:
        return {inset, along, s, lengths_[index]};
    case DockPosition::right:
        return {thickness_ - inset - s, along, s, lengths_[index]};
    case DockPosition::bottom:
        break;
    }
    return {along, thickness_ - inset - s, lengths_[index], s};
}

Rect BarLayout::barRect(double start, double end) const {
    double h = metrics_.barHeight();
    switch (position_) {
    case DockPosition::left:
        return {metrics_.bottomMargin, start, h, end - start};
    case DockPosition::right:
        return {thickness_ - metrics_.bottomMargin - h, start, h, end - start};
    case DockPosition::bottom:
        break;
    }
    return {start, thickness_ - metrics_.bottomMargin - h, end - start, h};
}

void BarLayout::frame(const DockLens& lens, BarFrame& out) const {
    const std::size_t count = centers_.size();
    out.tiles.resize(count);
    out.hovered.reset();
    const double amount = clampedAmount(lens);
    const bool lensOn = amount >= lensOnThreshold;
    const double pointer = lens.x.value;

    // The tile whose slot (the tile and half the spacing either side) holds the lens centre.
    std::optional<std::size_t> underLens;
    if (lensOn) {
        double half = metrics_.iconSpacing / 2;
        for (std::size_t i = 0; i < count && !underLens; ++i)
            if (std::abs(pointer - centers_[i]) <= lengths_[i] / 2 + half && kinds_[i] != BarTile::Kind::separator)
                underLens = i;
    }

    // The anchor is the same for every tile, so it is taken once per frame instead of per tile.
    const double anchor = magnifies_ ? lens.anchor(anchors_, metrics_) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        auto& tile = out.tiles[i];
        tile.resting = restingFrame(i);
        bool hovered = underLens == i;
        double scale = 1;
        if (kinds_[i] == BarTile::Kind::separator) {
            scale = 1;
        } else if (magnifies_) {
            scale = lens.scale(centers_[i], metrics_);
        } else if (kinds_[i] == BarTile::Kind::widget) {
            scale = 1 + amount * (style_.cardScale(hovered) - 1);
        } else {
            scale = 1 + amount * (style_.iconScale(std::nullopt, hovered, metrics_) - 1);
        }
        tile.scale = scale;
        tile.shift = magnifies_ ? lens.rawDisplacement(centers_[i], metrics_) - anchor : 0;
        tile.drawn = DockTileGeometry::drawnFrame(tile.resting, scale, tile.shift, position_);
    }
    double start = barStart_, end = barStart_ + barLength_;
    if (magnifies_) {
        start += lens.rawDisplacement(start, metrics_) - anchor;
        end += lens.rawDisplacement(end, metrics_) - anchor;
    }
    out.bar = barRect(start, end);
    if (underLens) out.hovered = underLens;
}

BarFrame BarLayout::frame(const DockLens& lens) const {
    BarFrame result;
    frame(lens, result);
    return result;
}

} // namespace corvane
