#include "CorvaneApp/looks/IconImage.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <algorithm>
#include <stdexcept>

namespace corvane {

namespace {

std::shared_ptr<cairo_surface_t> owned(cairo_surface_t* surface) {
    return std::shared_ptr<cairo_surface_t>(surface, cairo_surface_destroy);
}

} // namespace

std::optional<IconImage> IconImage::load(const std::filesystem::path& file) {
    // Cairo returns an error surface (never null) for a missing or undecodable file.
    auto surface = owned(cairo_image_surface_create_from_png(file.c_str()));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return std::nullopt;
    if (cairo_image_surface_get_width(surface.get()) <= 0 ||
        cairo_image_surface_get_height(surface.get()) <= 0)
        return std::nullopt;
    return IconImage(std::move(surface));
}

IconImage IconImage::padded(double padding, int canvas) const {
    auto result = owned(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, canvas, canvas));
    const double inset = padding * canvas;
    const double box = std::max(0.0, canvas - 2 * inset);
    const double scale = std::min(box / width(), box / height());
    cairo_t* cr = cairo_create(result.get());
    cairo_translate(cr, (canvas - width() * scale) / 2, (canvas - height() * scale) / 2);
    cairo_scale(cr, scale, scale);
    cairo_set_source_surface(cr, surface(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(result.get());
    return IconImage(std::move(result));
}

int IconImage::width() const {
    return cairo_image_surface_get_width(surface());
}

int IconImage::height() const {
    return cairo_image_surface_get_height(surface());
}

void IconImage::writePNG(const std::filesystem::path& file) const {
    if (auto status = cairo_surface_write_to_png(surface(), file.c_str()); status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("cannot write " + file.string() + ": " + cairo_status_to_string(status));
}

} // namespace corvane
