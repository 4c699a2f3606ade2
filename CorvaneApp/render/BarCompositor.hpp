#pragma once

#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarRenderer.hpp"

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

typedef struct _cairo_surface cairo_surface_t;

namespace corvane {

/// Draws frame after frame of the bar into one image fast enough to follow the pointer. Each
/// tile's art is kept as an image at the pixel size it is drawn (and its mirror image beside it),
/// the chrome is kept while the bar keeps its extent, and a frame repaints only the stretch of the
/// bar where something moved; the rest of the image stays as the frame before left it. Not
/// thread-safe: one compositor per view, on the main thread.
class BarCompositor {
public:
    /// `scale` is the view's pixels per point; `cacheBytes` bounds the tile images kept.
    explicit BarCompositor(double scale = 1, std::size_t cacheBytes = std::size_t{24} << 20);
    ~BarCompositor();
    BarCompositor(const BarCompositor&) = delete;
    BarCompositor& operator=(const BarCompositor&) = delete;

    /// The view moved to a screen of another pixel density: the next frame repaints everything at
    /// `scale`, and the tile art made for the old density is let go.
    void setScale(double scale);
    double scale() const { return scale_; }

    /// Brings the image to `frame` and returns the part of the view, in points, that changed;
    /// none when nothing did. A new look, tile count or layout size repaints everything; tiles
    /// that changed in place repaint their own stretch.
    std::optional<Rect> compose(const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
                                const BarMoment& moment = {});

    /// The image: premultiplied ARGB, `stride` bytes a row; empty before the first frame.
    const unsigned char* pixels() const;
    int pixelWidth() const { return width_; }
    int pixelHeight() const { return height_; }
    int stride() const;
    /// A copy of the image, for pictures and tests.
    BarImage image() const;

    /// Tile art kept now, and how often a frame found what it needed.
    std::size_t cachedBytes() const { return cachedBytes_; }
    std::size_t cacheHits() const { return hits_; }
    std::size_t cacheMisses() const { return misses_; }

private:
    struct Key {
        std::size_t tile;
        int width;
        int height;
        TileArtRole role;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept;
    };
    struct Art {
        cairo_surface_t* surface = nullptr;
        std::size_t bytes = 0;
        std::list<Key>::iterator age;
    };

    void reset(const BarScene& scene, const BarLayout& layout);
    void paintTile(cairo_t* cr, const BarScene& scene, std::size_t index, const Rect& drawn, TileArtRole role);
    cairo_surface_t* art(const BarScene& scene, std::size_t index, int width, int height, TileArtRole role);
    void forgetArt();
    void forgetArt(std::size_t tile);
    void drawChrome(const BarScene& scene, const BarLayout& layout, const BarFrame& frame, const BarMoment& moment);
    /// The stretch along the bar (in points) that differs between the last frame and `frame`.
    std::optional<std::pair<double, double>> changedStretch(const BarScene& scene, const BarLayout& layout,
                                                           const BarFrame& frame) const;

    double scale_;
    std::size_t budget_;
    int width_ = 0;
    int height_ = 0;
    cairo_surface_t* target_ = nullptr;
    cairo_surface_t* chrome_ = nullptr;
    /// What the kept images were made from.
    std::vector<BarTile> tiles_;
    TrashIcon trashIcon_{};
    DockPosition position_ = DockPosition::bottom;
    /// The scene's look without its tiles: a change repaints everything.
    std::optional<BarScene> look_;
    std::optional<BarFrame> last_;
    std::optional<Rect> chromeBar_;
    std::unordered_map<Key, Art, KeyHash> art_;
    /// Least recently used first.
    std::list<Key> ages_;
    std::size_t cachedBytes_ = 0;
    std::size_t hits_ = 0;
    std::size_t misses_ = 0;
};

} // namespace corvane
