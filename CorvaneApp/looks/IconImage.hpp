#pragma once

#include <filesystem>
#include <memory>
#include <optional>

// Cairo's surface type, declared as cairo.h does so that this header needs no Cairo include.
typedef struct _cairo_surface cairo_surface_t;

namespace corvane {

/// A decoded, finished icon: a Cairo image surface (ARGB, premultiplied), shared and immutable.
class IconImage {
  public:
    /// Decodes a PNG file; none when it is missing or no PNG.
    static std::optional<IconImage> load(const std::filesystem::path& file);

    /// The image redrawn on a `canvas` × `canvas` square, inset on every side by
    /// `padding` × `canvas`, keeping its aspect ratio.
    IconImage padded(double padding, int canvas = 512) const;

    int width() const;
    int height() const;
    cairo_surface_t* surface() const { return surface_.get(); }
    /// Writes the image as a PNG; throws `std::runtime_error` when it cannot.
    void writePNG(const std::filesystem::path& file) const;

  private:
    explicit IconImage(std::shared_ptr<cairo_surface_t> surface) : surface_(std::move(surface)) {}
    std::shared_ptr<cairo_surface_t> surface_;
};

} // namespace corvane
