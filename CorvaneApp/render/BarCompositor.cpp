#include "CorvaneApp/render/BarCompositor.hpp"

#include "CorvaneApp/render/TileArt.hpp"
#include "CorvaneCore/bar/DockTileGeometry.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace corvane {

namespace {

/// Where a tile's kept image lies, in pixels from the tile's top left corner, and its size. An
/// icon keeps a little room for its shadow; a mirror image is only the strip of floor below the
/// icon's base that it shows on, about 0.4 of the tile's height.
struct ArtBox {
    int x, y, width, height;
};

ArtBox artBox(TileArtRole role, int width, int height, double scale) {
    if (role == TileArtRole::icon) {
        int pad = static_cast<int>(std::ceil(std::max(width, height) * 0.05)) + 2;
        return {-pad, -pad, width + 2 * pad, height + 2 * pad};
    }
    double base = height * (1 - (1 - DockTileGeometry::iconBodyRatio) / 2);
    int side = static_cast<int>(std::ceil(2 * scale)) + 1;
    int top = static_cast<int>(std::floor(base));
    return {-side, top, width + 2 * side, static_cast<int>(std::ceil(height * 0.4 + base - top)) + 1};
}

cairo_surface_t* imageSurface(int width, int height) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, std::max(width, 1), std::max(height, 1));
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        throw std::runtime_error("cannot make a " + std::to_string(width) + "×" + std::to_string(height) + " image");
    }
    return surface;
}

/// How far a tile's changes reach beyond its frame along the bar: its mirror image and glow.
double reach(const BarScene& scene) { return scene.metrics.iconSize * 0.1 + 3; }
/// The hovered tile's name may be wider than the tile: a stretch this far to each side holds it.
constexpr double labelReach = 220;

} // namespace

std::size_t BarCompositor::KeyHash::operator()(const Key& key) const noexcept {
    return key.tile * 1000003u ^ static_cast<std::size_t>(key.width) << 20 ^ static_cast<std::size_t>(key.height) << 4 ^
           static_cast<std::size_t>(key.role);
}

BarCompositor::BarCompositor(double scale, std::size_t cacheBytes) : scale_(scale > 0 ? scale : 1), budget_(cacheBytes) {}

void BarCompositor::setScale(double scale) {
    if (!(scale > 0) || scale == scale_) return;
    scale_ = scale;
    forgetArt();
    look_.reset();
}

BarCompositor::~BarCompositor() {
    forgetArt();
    if (target_) cairo_surface_destroy(target_);
    if (chrome_) cairo_surface_destroy(chrome_);
}

const unsigned char* BarCompositor::pixels() const { return target_ ? cairo_image_surface_get_data(target_) : nullptr; }

int BarCompositor::stride() const { return target_ ? cairo_image_surface_get_stride(target_) : 0; }

BarImage BarCompositor::image() const {
    BarImage image{width_, height_, std::vector<std::uint32_t>(static_cast<std::size_t>(width_) * height_)};
    if (!target_) return image;
    cairo_surface_flush(target_);
    for (int row = 0; row < height_; ++row)
        std::memcpy(image.pixels.data() + static_cast<std::size_t>(row) * width_,
                    pixels() + static_cast<std::size_t>(row) * stride(), static_cast<std::size_t>(width_) * 4);
    return image;
}

void BarCompositor::forgetArt() {
    for (auto& [key, art] : art_) cairo_surface_destroy(art.surface);
    art_.clear();
    ages_.clear();
    cachedBytes_ = 0;
}

void BarCompositor::forgetArt(std::size_t tile) {
    for (auto it = art_.begin(); it != art_.end();) {
        if (it->first.tile != tile) {
            ++it;
            continue;
        }
        cachedBytes_ -= it->second.bytes;
        cairo_surface_destroy(it->second.surface);
        ages_.erase(it->second.age);
        it = art_.erase(it);
    }
}

void BarCompositor::reset(const BarScene& scene, const BarLayout& layout) {
    int width = static_cast<int>(std::ceil(layout.width() * scale_));
    int height = static_cast<int>(std::ceil(layout.height() * scale_));
    if (width != width_ || height != height_ || !target_) {
        if (target_) cairo_surface_destroy(target_);
        if (chrome_) cairo_surface_destroy(chrome_);
        target_ = chrome_ = nullptr;
        target_ = imageSurface(width, height);
        chrome_ = imageSurface(width, height);
        width_ = width;
        height_ = height;
    }
    if (scene.tiles != tiles_ || scene.style.trashIcon != trashIcon_) {
        forgetArt();
        tiles_ = scene.tiles;
        trashIcon_ = scene.style.trashIcon;
    }
    look_ = BarScene{{}, scene.style, scene.theme, scene.metrics, scene.showsProcessIndicators, scene.indicatorHex};
    position_ = scene.style.position;
    last_.reset();
    chromeBar_.reset();
}

cairo_surface_t* BarCompositor::art(const BarScene& scene, std::size_t index, int width, int height, TileArtRole role) {
    Key key{index, width, height, role};
    if (auto found = art_.find(key); found != art_.end()) {
        ++hits_;
        ages_.splice(ages_.end(), ages_, found->second.age);
        return found->second.surface;
    }
    ++misses_;
    auto box = artBox(role, width, height, scale_);
    cairo_surface_t* surface = imageSurface(box.width, box.height);
    cairo_t* cr = cairo_create(surface);
    cairo_scale(cr, scale_, scale_);
    Rect frame{-box.x / scale_, -box.y / scale_, width / scale_, height / scale_};
    if (role == TileArtRole::icon) paint::drawTileArt(cr, scene.tiles[index], frame, scene.style.trashIcon);
    else drawTileReflection(cr, scene.tiles[index], frame, scene.style.trashIcon);
    cairo_destroy(cr);
    cairo_surface_flush(surface);

    std::size_t bytes = static_cast<std::size_t>(cairo_image_surface_get_stride(surface)) * box.height;
    ages_.push_back(key);
    art_.emplace(key, Art{surface, bytes, std::prev(ages_.end())});
    cachedBytes_ += bytes;
    // The oldest go first; the one just made stays even when it alone is over the budget.
    while (cachedBytes_ > budget_ && ages_.size() > 1) {
        auto oldest = art_.find(ages_.front());
        cachedBytes_ -= oldest->second.bytes;
        cairo_surface_destroy(oldest->second.surface);
        art_.erase(oldest);
        ages_.pop_front();
    }
    return surface;
}

void BarCompositor::paintTile(cairo_t* cr, const BarScene& scene, std::size_t index, const Rect& drawn,
                              TileArtRole role) {
    // A tile outside the stretch being repainted needs neither painting nor an image.
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(cr, &left, &top, &right, &bottom);
    double margin = 4 + drawn.height * 0.5;
    if (drawn.maxX() + margin < left || drawn.minX() - margin > right || drawn.maxY() + margin < top ||
        drawn.minY() - margin > bottom)
        return;
    int width = std::max(1, static_cast<int>(std::lround(drawn.width * scale_)));
    int height = std::max(1, static_cast<int>(std::lround(drawn.height * scale_)));
    cairo_surface_t* surface = art(scene, index, width, height, role);
    auto box = artBox(role, width, height, scale_);
    cairo_save(cr);
    // On whole pixels, so the kept image is copied rather than resampled.
    cairo_translate(cr, std::round(drawn.x * scale_) / scale_, std::round(drawn.y * scale_) / scale_);
    cairo_scale(cr, 1 / scale_, 1 / scale_);
    cairo_set_source_surface(cr, surface, box.x, box.y);
    cairo_paint(cr);
    cairo_restore(cr);
}

void BarCompositor::drawChrome(const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
                               const BarMoment& moment) {
    cairo_t* cr = cairo_create(chrome_);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_paint(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_scale(cr, scale_, scale_);
    drawBarLayers(cr, scene, layout, frame, moment, BarLayer::chrome, directTileArt(scene));
    cairo_destroy(cr);
    cairo_surface_flush(chrome_);
    chromeBar_ = frame.bar;
}

std::optional<std::pair<double, double>> BarCompositor::changedStretch(const BarScene& scene, const BarLayout& layout,
                                                                       const BarFrame& frame) const {
    double whole = position_ == DockPosition::bottom ? layout.width() : layout.height();
    if (!last_ || last_->tiles.size() != frame.tiles.size()) return std::pair{0.0, whole};
    auto along = [this](const Rect& rect) {
        return position_ == DockPosition::bottom ? std::pair{rect.minX(), rect.maxX()} : std::pair{rect.minY(), rect.maxY()};
    };
    double low = whole, high = 0;
    auto include = [&](const Rect& rect, double extra) {
        auto [start, end] = along(rect);
        low = std::min(low, start - extra);
        high = std::max(high, end + extra);
    };
    for (std::size_t i = 0; i < frame.tiles.size(); ++i)
        if (frame.tiles[i].drawn != last_->tiles[i].drawn) {
            include(frame.tiles[i].drawn, reach(scene));
            include(last_->tiles[i].drawn, reach(scene));
        }
    if (frame.hovered != last_->hovered) {
        if (frame.hovered) include(frame.tiles[*frame.hovered].drawn, labelReach);
        if (last_->hovered) include(last_->tiles[*last_->hovered].drawn, labelReach);
    }
    if (low >= high) return std::nullopt;
    return std::pair{std::max(low, 0.0), std::min(high, whole)};
}

std::optional<Rect> BarCompositor::compose(const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
                                           const BarMoment& moment) {
    if (frame.tiles.size() != scene.tiles.size())
        throw std::invalid_argument("bar frame and scene differ in their tile count");
    int width = static_cast<int>(std::ceil(layout.width() * scale_));
    int height = static_cast<int>(std::ceil(layout.height() * scale_));
    bool sameLook = target_ && width == width_ && height == height_ && look_ && look_->style == scene.style &&
                    look_->theme == scene.theme && look_->metrics == scene.metrics &&
                    look_->showsProcessIndicators == scene.showsProcessIndicators &&
                    look_->indicatorHex == scene.indicatorHex;
    // A live widget's new text changes its tile alone: only that tile's art and stretch are
    // made again, which is what keeps a ticking clock cheap.
    std::optional<std::pair<double, double>> retiled;
    if (sameLook && last_ && scene.tiles.size() == tiles_.size() && last_->tiles.size() == frame.tiles.size()) {
        for (std::size_t i = 0; i < scene.tiles.size(); ++i) {
            if (scene.tiles[i] == tiles_[i]) continue;
            forgetArt(i);
            tiles_[i] = scene.tiles[i];
            for (const auto& drawn : {frame.tiles[i].drawn, last_->tiles[i].drawn}) {
                double start = position_ == DockPosition::bottom ? drawn.minX() : drawn.minY();
                double end = position_ == DockPosition::bottom ? drawn.maxX() : drawn.maxY();
                retiled = std::pair{std::min(retiled ? retiled->first : start, start - reach(scene)),
                                    std::max(retiled ? retiled->second : end, end + reach(scene))};
            }
        }
    } else if (!sameLook || scene.tiles != tiles_) {
        reset(scene, layout);
    }

    auto stretch = changedStretch(scene, layout, frame);
    if (retiled) {
        double whole = position_ == DockPosition::bottom ? layout.width() : layout.height();
        retiled = std::pair{std::max(retiled->first, 0.0), std::min(retiled->second, whole)};
        stretch = stretch ? std::pair{std::min(stretch->first, retiled->first), std::max(stretch->second, retiled->second)}
                          : retiled;
    }
    // The chrome changes with the bar's extent, and an animated outline with every moment.
    bool chromeChanged = !chromeBar_ || *chromeBar_ != frame.bar || animatesChrome(scene) || moment.backdrop;
    if (chromeChanged) {
        drawChrome(scene, layout, frame, moment);
        stretch = std::pair{0.0, position_ == DockPosition::bottom ? layout.width() : layout.height()};
    }
    if (!stretch) {
        last_ = frame;
        return std::nullopt;
    }
    Rect changed = position_ == DockPosition::bottom
                       ? Rect{stretch->first, 0, stretch->second - stretch->first, layout.height()}
                       : Rect{0, stretch->first, layout.width(), stretch->second - stretch->first};

    cairo_t* cr = cairo_create(target_);
    cairo_scale(cr, scale_, scale_);
    cairo_rectangle(cr, changed.x, changed.y, changed.width, changed.height);
    cairo_clip(cr);
    cairo_save(cr);
    cairo_identity_matrix(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, chrome_, 0, 0);
    cairo_paint(cr);
    cairo_restore(cr);
    drawBarLayers(cr, scene, layout, frame, moment, BarLayer::tiles | BarLayer::overlay,
                  [&](cairo_t* into, std::size_t index, const Rect& drawn, TileArtRole role) {
                      paintTile(into, scene, index, drawn, role);
                  });
    cairo_destroy(cr);
    cairo_surface_flush(target_);
    last_ = frame;
    return changed;
}

} // namespace corvane
