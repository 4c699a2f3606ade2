#pragma once

// Small drawing helpers shared by the bar's painters. Included from .cpp files only.

#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/looks/RGBColor.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::paint {

inline RGBColor hex(std::string_view text) { return RGBColor::fromHex(text); }

inline RGBColor rgb(double r, double g, double b) { return {r, g, b}; }

inline RGBColor mix(RGBColor a, RGBColor b, double t) {
    return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t};
}

inline RGBColor lighter(RGBColor c, double t) { return mix(c, {1, 1, 1}, t); }
inline RGBColor darker(RGBColor c, double t) { return mix(c, {0, 0, 0}, t); }

/// Relative luminance, enough to tell a light surface from a dark one.
inline double luminance(RGBColor c) { return 0.2126 * c.red + 0.7152 * c.green + 0.0722 * c.blue; }

inline void setColor(cairo_t* cr, RGBColor c, double alpha = 1) {
    cairo_set_source_rgba(cr, c.red, c.green, c.blue, alpha);
}

inline void addStop(cairo_pattern_t* pattern, double offset, RGBColor c, double alpha = 1) {
    cairo_pattern_add_color_stop_rgba(pattern, offset, c.red, c.green, c.blue, alpha);
}

/// A rounded rectangle path; the radius is kept within half the shorter side.
inline void roundedRect(cairo_t* cr, const Rect& r, double radius) {
    radius = std::clamp(radius, 0.0, std::min(r.width, r.height) / 2);
    constexpr double pi = 3.14159265358979323846;
    cairo_new_sub_path(cr);
    cairo_arc(cr, r.maxX() - radius, r.minY() + radius, radius, -pi / 2, 0);
    cairo_arc(cr, r.maxX() - radius, r.maxY() - radius, radius, 0, pi / 2);
    cairo_arc(cr, r.minX() + radius, r.maxY() - radius, radius, pi / 2, pi);
    cairo_arc(cr, r.minX() + radius, r.minY() + radius, radius, pi, 3 * pi / 2);
    cairo_close_path(cr);
}

inline Rect inset(const Rect& r, double dx, double dy) {
    return {r.x + dx, r.y + dy, std::max(r.width - 2 * dx, 0.0), std::max(r.height - 2 * dy, 0.0)};
}

inline Rect inset(const Rect& r, double d) { return inset(r, d, d); }

/// A vertical gradient over `r`, top to bottom.
inline void fillVertical(cairo_t* cr, const Rect& r, RGBColor top, RGBColor bottom, double alpha = 1) {
    cairo_pattern_t* gradient = cairo_pattern_create_linear(0, r.minY(), 0, r.maxY());
    addStop(gradient, 0, top, alpha);
    addStop(gradient, 1, bottom, alpha);
    cairo_set_source(cr, gradient);
    cairo_fill_preserve(cr);
    cairo_pattern_destroy(gradient);
}

/// Text centred on (x, y), in a bold sans-serif face, made smaller when it would be wider than
/// `maxWidth`.
inline void centredText(cairo_t* cr, std::string_view text, double x, double y, double size, RGBColor c,
                        double alpha = 1, bool bold = true, double maxWidth = 0) {
    std::string copy(text);
    cairo_select_font_face(cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, size);
    cairo_text_extents_t extents;
    cairo_text_extents(cr, copy.c_str(), &extents);
    if (maxWidth > 0 && extents.width > maxWidth) {
        cairo_set_font_size(cr, size * maxWidth / extents.width);
        cairo_text_extents(cr, copy.c_str(), &extents);
    }
    cairo_move_to(cr, x - extents.width / 2 - extents.x_bearing, y - extents.height / 2 - extents.y_bearing);
    setColor(cr, c, alpha);
    cairo_show_text(cr, copy.c_str());
    cairo_new_path(cr);
}

/// A small deterministic hash in 0…1, so decorations sit in the same place frame after frame.
inline double noise(std::uint32_t seed) {
    seed ^= seed >> 16;
    seed *= 0x7feb352dU;
    seed ^= seed >> 15;
    seed *= 0x846ca68bU;
    seed ^= seed >> 16;
    return static_cast<double>(seed & 0xffffff) / static_cast<double>(0x1000000);
}

inline constexpr double pi = 3.14159265358979323846;

} // namespace corvane::paint
