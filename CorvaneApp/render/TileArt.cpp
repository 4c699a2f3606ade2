#include "CorvaneApp/render/TileArt.hpp"

#include "CorvaneApp/render/CairoSupport.hpp"
#include "CorvaneCore/bar/DockTileGeometry.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace corvane::paint {

namespace {

// Icon art is drawn in a square "body" inside the tile, the share of it an icon's visible
// shape fills; the rest is the air between icons.
Rect bodyOf(const Rect& frame) {
    double side = std::min(frame.width, frame.height) * DockTileGeometry::iconBodyRatio;
    return {frame.midX() - side / 2, frame.midY() - side / 2, side, side};
}

// A point of the body in shares of its side: (0, 0) top left, (1, 1) bottom right.
struct Body {
    Rect r;
    double x(double share) const { return r.x + share * r.width; }
    double y(double share) const { return r.y + share * r.height; }
    double s(double share) const { return share * r.width; }
    Rect rect(double x0, double y0, double x1, double y1) const { return {x(x0), y(y0), s(x1 - x0), s(y1 - y0)}; }
};

std::uint32_t hashOf(std::string_view text) {
    std::uint32_t h = 2166136261U;
    for (unsigned char c : text) h = (h ^ c) * 16777619U;
    return h;
}

// Placeholder colours: saturated enough for white letters, distinct enough to tell apart.
constexpr std::array<std::string_view, 10> placeholderColors = {
    "#FF5F57", "#FF9500", "#E0A100", "#30B955", "#14B8C8",
    "#0A84FF", "#5E5CE6", "#AF52DE", "#FF375F", "#8E6E53"};

void softShadow(cairo_t* cr, const Rect& shape, double radius) {
    // Stacked translucent shapes make a cheap blur that reads as the icon resting on the bar.
    for (int i = 3; i >= 1; --i) {
        double grow = i * shape.width * 0.012;
        roundedRect(cr, {shape.x - grow, shape.y - grow + shape.height * 0.03, shape.width + 2 * grow,
                         shape.height + 2 * grow},
                    radius + grow);
        cairo_set_source_rgba(cr, 0, 0, 0, 0.07);
        cairo_fill(cr);
    }
}

void placeholderIcon(cairo_t* cr, const BarTile& tile, const Rect& body) {
    double radius = body.width * 0.225;
    auto color = hex(placeholderColors[hashOf(tile.label) % placeholderColors.size()]);
    softShadow(cr, body, radius);
    roundedRect(cr, body, radius);
    fillVertical(cr, body, lighter(color, 0.22), darker(color, 0.12));
    cairo_new_path(cr);
    // The glassy upper half.
    roundedRect(cr, inset(body, body.width * 0.02), radius * 0.9);
    cairo_pattern_t* sheen = cairo_pattern_create_linear(0, body.minY(), 0, body.midY());
    cairo_pattern_add_color_stop_rgba(sheen, 0, 1, 1, 1, 0.28);
    cairo_pattern_add_color_stop_rgba(sheen, 1, 1, 1, 1, 0);
    cairo_set_source(cr, sheen);
    cairo_fill(cr);
    cairo_pattern_destroy(sheen);
    roundedRect(cr, inset(body, 0.5), radius);
    cairo_set_source_rgba(cr, 0, 0, 0, 0.12);
    cairo_set_line_width(cr, 0.75);
    cairo_stroke(cr);
    auto letter = initialOf(tile.label);
    centredText(cr, letter, body.midX() + body.width * 0.01, body.midY() + body.width * 0.025, body.width * 0.52,
                {0, 0, 0}, 0.18);
    centredText(cr, letter, body.midX(), body.midY(), body.width * 0.52, {1, 1, 1});
}

void imageIcon(cairo_t* cr, const BarImage& image, const Rect& frame) {
    if (image.width <= 0 || image.height <= 0 ||
        image.pixels.size() < static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height))
        return;
    // Cairo only reads through this pointer while the surface is the source below.
    auto* data = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels.data()));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, image.width, image.height, image.width * 4);
    double side = std::min(frame.width, frame.height);
    double scale = side / std::max(image.width, image.height);
    cairo_save(cr);
    cairo_translate(cr, frame.midX() - image.width * scale / 2, frame.midY() - image.height * scale / 2);
    cairo_scale(cr, scale, scale);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_restore(cr);
    cairo_surface_destroy(surface);
}

const RGBColor folderBlue = hex("#5AB0F5");

void folderShape(cairo_t* cr, const Body& b, RGBColor color) {
    softShadow(cr, b.rect(0.03, 0.14, 0.97, 0.88), b.s(0.06));
    setColor(cr, darker(color, 0.14));
    roundedRect(cr, b.rect(0.03, 0.10, 0.42, 0.24), b.s(0.05));
    cairo_fill(cr);
    roundedRect(cr, b.rect(0.03, 0.16, 0.97, 0.86), b.s(0.06));
    cairo_fill(cr);
    Rect front = b.rect(0.03, 0.26, 0.97, 0.88);
    roundedRect(cr, front, b.s(0.06));
    fillVertical(cr, front, lighter(color, 0.28), color);
    cairo_new_path(cr);
    cairo_move_to(cr, front.minX() + b.s(0.05), front.minY() + 0.75);
    cairo_line_to(cr, front.maxX() - b.s(0.05), front.minY() + 0.75);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.6);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
}

void folderIcon(cairo_t* cr, const BarTile& tile, const Body& b) {
    folderShape(cr, b, folderBlue);
    // The folder's mark, pressed into its front like the system's own folders.
    setColor(cr, darker(folderBlue, 0.3), 0.35);
    roundedRect(cr, b.rect(0.36, 0.46, 0.64, 0.68), b.s(0.03));
    cairo_set_line_width(cr, b.s(0.035));
    cairo_stroke(cr);
    if (tile.badgeColorHex) {
        double cx = b.x(0.80), cy = b.y(0.78), radius = b.s(0.17);
        cairo_arc(cr, cx, cy + radius * 0.08, radius + 1, 0, 2 * pi);
        cairo_set_source_rgba(cr, 0, 0, 0, 0.2);
        cairo_fill(cr);
        cairo_arc(cr, cx, cy, radius, 0, 2 * pi);
        auto color = hex(*tile.badgeColorHex);
        fillVertical(cr, {cx - radius, cy - radius, 2 * radius, 2 * radius}, lighter(color, 0.15), color);
        cairo_set_source_rgba(cr, 1, 1, 1, 0.95);
        cairo_set_line_width(cr, std::max(b.s(0.025), 1.0));
        cairo_stroke(cr);
        auto text = tile.badgeText ? *tile.badgeText : initialOf(tile.label);
        centredText(cr, text, cx, cy, radius * 1.15, {1, 1, 1});
    }
}

void downloadsIcon(cairo_t* cr, const Body& b) {
    folderShape(cr, b, folderBlue);
    auto arrow = darker(folderBlue, 0.32);
    setColor(cr, arrow, 0.55);
    cairo_rectangle(cr, b.x(0.445), b.y(0.40), b.s(0.11), b.s(0.2));
    cairo_fill(cr);
    cairo_move_to(cr, b.x(0.33), b.y(0.58));
    cairo_line_to(cr, b.x(0.67), b.y(0.58));
    cairo_line_to(cr, b.x(0.5), b.y(0.76));
    cairo_close_path(cr);
    cairo_fill(cr);
}

void fileIcon(cairo_t* cr, const BarTile& tile, const Body& b) {
    double fold = b.s(0.2);
    double left = b.x(0.17), right = b.x(0.83), top = b.y(0.05), bottom = b.y(0.95);
    softShadow(cr, {left, top, right - left, bottom - top}, b.s(0.03));
    cairo_move_to(cr, left, top);
    cairo_line_to(cr, right - fold, top);
    cairo_line_to(cr, right, top + fold);
    cairo_line_to(cr, right, bottom);
    cairo_line_to(cr, left, bottom);
    cairo_close_path(cr);
    fillVertical(cr, {left, top, right - left, bottom - top}, {1, 1, 1}, rgb(0.91, 0.91, 0.92));
    cairo_set_source_rgba(cr, 0, 0, 0, 0.22);
    cairo_set_line_width(cr, 0.75);
    cairo_stroke(cr);
    cairo_move_to(cr, right - fold, top);
    cairo_line_to(cr, right - fold, top + fold);
    cairo_line_to(cr, right, top + fold);
    cairo_close_path(cr);
    setColor(cr, rgb(0.82, 0.82, 0.84));
    cairo_fill(cr);
    cairo_set_line_width(cr, std::max(b.s(0.02), 0.8));
    for (int line = 0; line < 5; ++line) {
        double y = b.y(0.3 + line * 0.075);
        cairo_move_to(cr, b.x(0.27), y);
        cairo_line_to(cr, b.x(line == 4 ? 0.55 : 0.73), y);
    }
    cairo_set_source_rgba(cr, 0.45, 0.47, 0.52, 0.55);
    cairo_stroke(cr);
    auto dot = tile.label.rfind('.');
    if (dot != std::string::npos && dot + 1 < tile.label.size() && tile.label.size() - dot <= 5) {
        auto extension = text::uppercased(std::string_view(tile.label).substr(dot + 1));
        auto band = extension == "PDF" ? hex("#E5483C") : hex("#3A7BEA");
        Rect r = b.rect(0.17, 0.7, 0.83, 0.86);
        cairo_rectangle(cr, r.x, r.y, r.width, r.height);
        setColor(cr, band);
        cairo_fill(cr);
        centredText(cr, extension, r.midX(), r.midY(), r.height * 0.62, {1, 1, 1});
    }
}

void linkIcon(cairo_t* cr, const Body& b) {
    double cx = b.x(0.5), cy = b.y(0.5), radius = b.s(0.45);
    softShadow(cr, b.rect(0.05, 0.05, 0.95, 0.95), radius);
    cairo_arc(cr, cx, cy, radius, 0, 2 * pi);
    cairo_pattern_t* sphere = cairo_pattern_create_radial(cx - radius * 0.35, cy - radius * 0.4, radius * 0.1, cx, cy,
                                                          radius);
    addStop(sphere, 0, hex("#8EDBFF"));
    addStop(sphere, 1, hex("#0A6CDF"));
    cairo_set_source(cr, sphere);
    cairo_fill_preserve(cr);
    cairo_pattern_destroy(sphere);
    cairo_save(cr);
    cairo_clip(cr);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.55);
    cairo_set_line_width(cr, std::max(b.s(0.025), 0.8));
    for (double share : {0.45, 0.8}) {
        cairo_save(cr);
        cairo_translate(cr, cx, cy);
        cairo_scale(cr, share, 1);
        cairo_arc(cr, 0, 0, radius, 0, 2 * pi);
        cairo_restore(cr);
        cairo_stroke(cr);
    }
    cairo_move_to(cr, cx, cy - radius);
    cairo_line_to(cr, cx, cy + radius);
    for (double lat : {-0.5, 0.0, 0.5}) {
        cairo_move_to(cr, cx - radius, cy + lat * radius);
        cairo_line_to(cr, cx + radius, cy + lat * radius);
    }
    cairo_stroke(cr);
    cairo_restore(cr);
}

struct TrashLook {
    RGBColor top;
    RGBColor bottom;
    double alpha;
    RGBColor ribs;
    bool mesh = false;
};

TrashLook trashLook(TrashIcon icon) {
    switch (icon) {
    case TrashIcon::wire: return {hex("#4A4A50"), hex("#2C2C30"), 0.18, hex("#5A5A60"), true};
    case TrashIcon::aqua: return {hex("#9BDCFF"), hex("#1F74D6"), 0.95, hex("#E8F6FF")};
    case TrashIcon::steel: return {hex("#E1E5EA"), hex("#7A828C"), 1, hex("#5F6670")};
    case TrashIcon::snow: return {hex("#F6FBFF"), hex("#B9D4EC"), 0.97, hex("#8EB3D6")};
    case TrashIcon::neon: return {hex("#1C1C28"), hex("#0B0B12"), 0.95, hex("#00E5FF")};
    case TrashIcon::recycle: return {hex("#3CC063"), hex("#1A7A36"), 1, hex("#C9F5D5")};
    case TrashIcon::system: break;
    }
    return {hex("#F2F2F5"), hex("#B4B4BC"), 0.85, hex("#8C8C96")};
}

void trashIcon(cairo_t* cr, const BarTile& tile, const Body& b, TrashIcon icon) {
    auto look = trashLook(icon);
    double rimY = b.y(0.2), rx = b.s(0.33), ry = b.s(0.065), cx = b.x(0.5);
    double bottomY = b.y(0.94), bottomHalf = b.s(0.26);
    auto bodyPath = [&] {
        cairo_move_to(cr, cx - rx, rimY);
        cairo_line_to(cr, cx - bottomHalf, bottomY - b.s(0.04));
        cairo_curve_to(cr, cx - bottomHalf, bottomY, cx + bottomHalf, bottomY, cx + bottomHalf, bottomY - b.s(0.04));
        cairo_line_to(cr, cx + rx, rimY);
        cairo_close_path(cr);
    };
    Rect box{cx - rx, rimY, 2 * rx, bottomY - rimY};
    softShadow(cr, box, b.s(0.05));
    if (tile.isFull) {
        // Crumpled paper above the rim.
        for (int i = 0; i < 4; ++i) {
            cairo_arc(cr, cx + (i - 1.5) * rx * 0.45, rimY - b.s(0.03) - (i % 2) * b.s(0.05), b.s(0.12), 0, 2 * pi);
            setColor(cr, i % 2 ? rgb(0.97, 0.97, 0.95) : rgb(0.9, 0.9, 0.88));
            cairo_fill_preserve(cr);
            cairo_set_source_rgba(cr, 0, 0, 0, 0.18);
            cairo_set_line_width(cr, 0.6);
            cairo_stroke(cr);
        }
    }
    bodyPath();
    fillVertical(cr, box, look.top, look.bottom, look.alpha);
    cairo_save(cr);
    cairo_clip(cr);
    setColor(cr, look.ribs, look.mesh ? 0.9 : 0.55);
    cairo_set_line_width(cr, std::max(b.s(look.mesh ? 0.018 : 0.03), 0.7));
    if (look.mesh) {
        for (double d = -1; d <= 1.01; d += 0.12) {
            cairo_move_to(cr, cx + d * rx * 2 - rx, rimY);
            cairo_line_to(cr, cx + d * rx * 2 + rx, bottomY);
            cairo_move_to(cr, cx + d * rx * 2 + rx, rimY);
            cairo_line_to(cr, cx + d * rx * 2 - rx, bottomY);
        }
    } else {
        for (int i = -2; i <= 2; ++i) {
            cairo_move_to(cr, cx + i * rx * 0.36, rimY + b.s(0.1));
            cairo_line_to(cr, cx + i * bottomHalf * 0.36, bottomY - b.s(0.08));
        }
    }
    cairo_stroke(cr);
    // A soft highlight down the left side, the light coming from above left.
    cairo_pattern_t* sheen = cairo_pattern_create_linear(box.minX(), 0, box.maxX(), 0);
    cairo_pattern_add_color_stop_rgba(sheen, 0, 1, 1, 1, 0.0);
    cairo_pattern_add_color_stop_rgba(sheen, 0.25, 1, 1, 1, look.mesh ? 0.05 : 0.3);
    cairo_pattern_add_color_stop_rgba(sheen, 0.5, 1, 1, 1, 0.0);
    cairo_set_source(cr, sheen);
    cairo_paint(cr);
    cairo_pattern_destroy(sheen);
    cairo_restore(cr);
    bodyPath();
    setColor(cr, darker(look.bottom, 0.3), 0.5);
    cairo_set_line_width(cr, 0.75);
    cairo_stroke(cr);
    // The rim.
    cairo_save(cr);
    cairo_translate(cr, cx, rimY);
    cairo_scale(cr, rx, ry);
    cairo_arc(cr, 0, 0, 1, 0, 2 * pi);
    cairo_restore(cr);
    setColor(cr, lighter(look.top, 0.3), std::min(look.alpha + 0.1, 1.0));
    cairo_fill_preserve(cr);
    setColor(cr, darker(look.bottom, 0.2), 0.8);
    cairo_set_line_width(cr, std::max(b.s(0.03), 1.0));
    cairo_stroke(cr);
    if (icon == TrashIcon::neon) {
        for (int pass = 3; pass >= 0; --pass) {
            bodyPath();
            cairo_set_source_rgba(cr, 0, 0.9, 1, pass ? 0.12 : 0.95);
            cairo_set_line_width(cr, pass ? pass * 2.2 : 1.2);
            cairo_stroke(cr);
        }
    } else if (icon == TrashIcon::snow) {
        for (int i = 0; i < 5; ++i) {
            cairo_arc(cr, cx + (i - 2) * rx * 0.42, rimY - ry * 0.4, b.s(0.07 + 0.02 * (i % 2)), pi, 2 * pi);
            cairo_set_source_rgba(cr, 1, 1, 1, 0.98);
            cairo_fill(cr);
        }
    } else if (icon == TrashIcon::recycle) {
        // Three chasing arrows, simplified to a triangle of rounded strokes.
        double r = b.s(0.15), cy = b.y(0.58);
        cairo_set_source_rgba(cr, 1, 1, 1, 0.95);
        cairo_set_line_width(cr, std::max(b.s(0.04), 1.0));
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        for (int i = 0; i < 3; ++i) {
            double a0 = -pi / 2 + i * 2 * pi / 3 + 0.25, a1 = a0 + 2 * pi / 3 - 0.5;
            cairo_move_to(cr, cx + r * std::cos(a0), cy + r * std::sin(a0));
            cairo_line_to(cr, cx + r * std::cos(a1), cy + r * std::sin(a1));
            cairo_stroke(cr);
            double hx = cx + r * std::cos(a1), hy = cy + r * std::sin(a1);
            cairo_arc(cr, hx, hy, b.s(0.035), 0, 2 * pi);
            cairo_fill(cr);
        }
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    }
}

// Widget faces. Each draws into the card's content area in light strokes over a dark card.

struct Face {
    cairo_t* cr;
    Rect area;
    const BarTile& tile;
    /// The text under or beside the emblem when the tile brings none of its own.
    std::string_view fallbackCaption;

    double side() const { return std::min(area.width, area.height); }
    bool isWide() const { return area.width >= area.height * 1.6; }
    std::string captionText() const { return tile.caption ? *tile.caption : std::string(fallbackCaption); }
    // A wide card shows the emblem at its left and the caption beside it; a square one shows
    // the caption under a smaller emblem.
    Rect emblem() const {
        double s = side();
        if (isWide()) return {area.minX(), area.midY() - s / 2, s, s};
        if (captionText().empty()) return {area.midX() - s / 2, area.midY() - s / 2, s, s};
        double e = s * 0.7;
        return {area.midX() - e / 2, area.minY(), e, e};
    }
    void caption(RGBColor color = {1, 1, 1}) const {
        auto text = captionText();
        if (text.empty()) return;
        double s = side();
        if (isWide()) {
            double left = emblem().maxX() + s * 0.1;
            centredText(cr, text, (left + area.maxX()) / 2, area.midY(), s * 0.34, color, 1, true, area.maxX() - left);
        } else {
            centredText(cr, text, area.midX(), area.maxY() - s * 0.13, s * 0.24, color, 1, true, area.width);
        }
    }
};

void ring(cairo_t* cr, double cx, double cy, double radius, double share, RGBColor color, double width) {
    cairo_set_line_width(cr, width);
    cairo_arc(cr, cx, cy, radius, 0, 2 * pi);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.14);
    cairo_stroke(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_arc(cr, cx, cy, radius, -pi / 2, -pi / 2 + 2 * pi * share);
    setColor(cr, color);
    cairo_stroke(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
}

void clockFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.06);
    double cx = e.midX(), cy = e.midY(), r = e.width / 2;
    cairo_arc(cr, cx, cy, r, 0, 2 * pi);
    fillVertical(cr, e, {1, 1, 1}, rgb(0.9, 0.9, 0.92));
    cairo_new_path(cr);
    cairo_set_source_rgba(cr, 0.1, 0.1, 0.12, 0.85);
    for (int i = 0; i < 12; ++i) {
        double a = i * pi / 6;
        double inner = i % 3 ? 0.84 : 0.74;
        cairo_move_to(cr, cx + r * inner * std::cos(a), cy + r * inner * std::sin(a));
        cairo_line_to(cr, cx + r * 0.92 * std::cos(a), cy + r * 0.92 * std::sin(a));
    }
    cairo_set_line_width(cr, std::max(r * 0.05, 0.8));
    cairo_stroke(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    // Ten past ten, the hands' traditional pose.
    for (auto [angle, length, width] : {std::array<double, 3>{-pi / 2 - 2 * pi / 12 * 2, 0.5, 0.11},
                                        std::array<double, 3>{-pi / 2 + 2 * pi / 12 * 2, 0.75, 0.07}}) {
        cairo_move_to(cr, cx, cy);
        cairo_line_to(cr, cx + r * length * std::cos(angle), cy + r * length * std::sin(angle));
        cairo_set_line_width(cr, r * width);
        cairo_set_source_rgba(cr, 0.1, 0.1, 0.12, 1);
        cairo_stroke(cr);
    }
    cairo_move_to(cr, cx, cy);
    cairo_line_to(cr, cx + r * 0.8 * std::cos(pi * 0.3), cy + r * 0.8 * std::sin(pi * 0.3));
    cairo_set_line_width(cr, std::max(r * 0.03, 0.6));
    setColor(cr, hex("#FF9500"));
    cairo_stroke(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    f.caption();
}

// A square timer shows its time inside the ring rather than under it.
void timerFace(const Face& f, RGBColor color, double share) {
    double s = f.side();
    Rect square{f.area.midX() - s / 2, f.area.midY() - s / 2, s, s};
    Rect e = inset(f.isWide() ? f.emblem() : square, s * 0.06);
    ring(f.cr, e.midX(), e.midY(), e.width / 2, share, color, std::max(e.width * 0.1, 1.5));
    if (f.isWide())
        f.caption();
    else
        centredText(f.cr, f.captionText(), e.midX(), e.midY(), e.width * 0.27, {1, 1, 1}, 1, true, e.width * 0.72);
}

void weatherFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.08);
    double cx = e.x + e.width * 0.42, cy = e.y + e.height * 0.4, r = e.width * 0.2;
    setColor(cr, hex("#FFCC00"));
    cairo_set_line_width(cr, std::max(r * 0.2, 0.8));
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    for (int i = 0; i < 8; ++i) {
        double a = i * pi / 4;
        cairo_move_to(cr, cx + r * 1.35 * std::cos(a), cy + r * 1.35 * std::sin(a));
        cairo_line_to(cr, cx + r * 1.7 * std::cos(a), cy + r * 1.7 * std::sin(a));
    }
    cairo_stroke(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    cairo_arc(cr, cx, cy, r, 0, 2 * pi);
    cairo_fill(cr);
    // A cloud drifting in front of the sun.
    double by = e.y + e.height * 0.72, bx = e.x + e.width * 0.58, u = e.width * 0.13;
    cairo_new_sub_path(cr);
    cairo_arc(cr, bx - u * 1.2, by, u, pi / 2, 3 * pi / 2);
    cairo_arc(cr, bx - u * 0.2, by - u * 0.8, u * 1.15, pi, 2 * pi);
    cairo_arc(cr, bx + u * 1.1, by - u * 0.1, u * 0.9, 3 * pi / 2, pi / 2);
    cairo_close_path(cr);
    fillVertical(cr, {bx - 2.2 * u, by - 2 * u, 4.4 * u, 3 * u}, {1, 1, 1}, rgb(0.82, 0.86, 0.92));
    cairo_new_path(cr);
    f.caption();
}

void calendarFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.06);
    roundedRect(cr, e, e.width * 0.16);
    setColor(cr, {1, 1, 1});
    cairo_fill(cr);
    cairo_save(cr);
    roundedRect(cr, e, e.width * 0.16);
    cairo_clip(cr);
    cairo_rectangle(cr, e.x, e.y, e.width, e.height * 0.3);
    setColor(cr, hex("#FF3B30"));
    cairo_fill(cr);
    cairo_restore(cr);
    centredText(cr, "MON", e.midX(), e.y + e.height * 0.15, e.height * 0.17, {1, 1, 1});
    centredText(cr, "12", e.midX(), e.y + e.height * 0.64, e.height * 0.42, rgb(0.12, 0.12, 0.14));
    f.caption();
}

void batteryFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = f.emblem();
    Rect shell{e.x + e.width * 0.12, e.y + e.height * 0.34, e.width * 0.66, e.height * 0.32};
    roundedRect(cr, shell, shell.height * 0.25);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.85);
    cairo_set_line_width(cr, std::max(e.width * 0.035, 1.0));
    cairo_stroke(cr);
    roundedRect(cr, {shell.maxX() + 1, shell.midY() - shell.height * 0.2, e.width * 0.05, shell.height * 0.4}, 1);
    cairo_fill(cr);
    Rect level = inset(shell, shell.height * 0.16);
    level.width *= 0.8;
    roundedRect(cr, level, level.height * 0.2);
    setColor(cr, hex("#34C759"));
    cairo_fill(cr);
    f.caption();
}

void waterFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.12);
    double cx = e.midX(), top = e.y, bottom = e.maxY(), r = e.width * 0.32;
    auto drop = [&] {
        cairo_move_to(cr, cx, top);
        cairo_curve_to(cr, cx + r * 0.4, top + r * 0.8, cx + r, bottom - r * 1.4, cx + r, bottom - r);
        cairo_arc(cr, cx, bottom - r, r, 0, pi);
        cairo_curve_to(cr, cx - r, bottom - r * 1.4, cx - r * 0.4, top + r * 0.8, cx, top);
        cairo_close_path(cr);
    };
    drop();
    cairo_set_source_rgba(cr, 0.35, 0.75, 1, 0.25);
    cairo_fill(cr);
    cairo_save(cr);
    drop();
    cairo_clip(cr);
    cairo_rectangle(cr, e.x, e.y + e.height * 0.45, e.width, e.height);
    setColor(cr, hex("#32ADE6"));
    cairo_fill(cr);
    cairo_restore(cr);
    drop();
    cairo_set_source_rgba(cr, 0.6, 0.85, 1, 0.9);
    cairo_set_line_width(cr, std::max(e.width * 0.04, 0.8));
    cairo_stroke(cr);
    f.caption();
}

void petFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.1);
    double cx = e.midX(), cy = e.y + e.height * 0.58, r = e.width * 0.36;
    auto fur = hex("#F4A53C");
    setColor(cr, fur);
    for (int side : {-1, 1}) {
        cairo_move_to(cr, cx + side * r * 0.95, cy - r * 0.2);
        cairo_line_to(cr, cx + side * r * 0.8, cy - r * 1.25);
        cairo_line_to(cr, cx + side * r * 0.2, cy - r * 0.85);
        cairo_close_path(cr);
        cairo_fill(cr);
    }
    cairo_arc(cr, cx, cy, r, 0, 2 * pi);
    fillVertical(cr, {cx - r, cy - r, 2 * r, 2 * r}, lighter(fur, 0.2), darker(fur, 0.1));
    cairo_new_path(cr);
    setColor(cr, rgb(0.12, 0.1, 0.1));
    for (int side : {-1, 1}) {
        cairo_arc(cr, cx + side * r * 0.38, cy - r * 0.1, r * 0.11, 0, 2 * pi);
        cairo_fill(cr);
    }
    cairo_move_to(cr, cx - r * 0.1, cy + r * 0.2);
    cairo_line_to(cr, cx + r * 0.1, cy + r * 0.2);
    cairo_line_to(cr, cx, cy + r * 0.32);
    cairo_close_path(cr);
    setColor(cr, hex("#E0607E"));
    cairo_fill(cr);
    f.caption();
}

void githubFace(const Face& f) {
    auto* cr = f.cr;
    // A live reading takes the caption's place; the grid shrinks to the emblem beside it.
    Rect e = inset(f.tile.caption ? f.emblem() : f.area, f.side() * 0.08);
    int rows = 4;
    double cell = e.height / rows;
    int columns = std::max(static_cast<int>(e.width / cell), 1);
    for (int c = 0; c < columns; ++c)
        for (int r = 0; r < rows; ++r) {
            double level = noise(static_cast<std::uint32_t>(c * 7 + r * 131 + 3));
            auto shade = level < 0.3 ? rgb(0.22, 0.24, 0.27) : mix(hex("#0E4429"), hex("#39D353"), (level - 0.3) / 0.7);
            roundedRect(cr, {e.x + c * cell + cell * 0.12, e.y + r * cell + cell * 0.12, cell * 0.76, cell * 0.76},
                        cell * 0.18);
            setColor(cr, shade);
            cairo_fill(cr);
        }
    if (f.tile.caption) f.caption();
}

void graphFace(const Face& f, RGBColor color) {
    auto* cr = f.cr;
    Rect e = inset(f.tile.caption ? f.emblem() : f.area, f.side() * 0.12);
    int points = 12;
    cairo_move_to(cr, e.x, e.maxY());
    for (int i = 0; i < points; ++i) {
        double v = 0.25 + 0.6 * noise(static_cast<std::uint32_t>(i * 17 + 5));
        cairo_line_to(cr, e.x + e.width * i / (points - 1), e.maxY() - v * e.height * 0.75);
    }
    cairo_line_to(cr, e.maxX(), e.maxY());
    cairo_close_path(cr);
    setColor(cr, color, 0.3);
    cairo_fill_preserve(cr);
    setColor(cr, color);
    cairo_set_line_width(cr, std::max(f.side() * 0.03, 0.8));
    cairo_stroke(cr);
    if (f.tile.caption) f.caption();
}

void noteFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.area, f.side() * 0.04);
    roundedRect(cr, e, f.side() * 0.06);
    fillVertical(cr, e, hex("#FFE873"), hex("#FFD43B"));
    cairo_new_path(cr);
    // The note's own first line, written on the paper, instead of ruled lines.
    if (f.tile.caption) {
        centredText(cr, *f.tile.caption, e.midX(), e.midY(), e.height * 0.22, {0.3, 0.22, 0}, 1, true, e.width * 0.9);
        return;
    }
    cairo_set_source_rgba(cr, 0.45, 0.35, 0, 0.45);
    cairo_set_line_width(cr, std::max(f.side() * 0.025, 0.7));
    for (int i = 0; i < 4; ++i) {
        double y = e.y + e.height * (0.28 + i * 0.17);
        cairo_move_to(cr, e.x + e.width * 0.12, y);
        cairo_line_to(cr, e.x + e.width * (i == 3 ? 0.55 : 0.88), y);
    }
    cairo_stroke(cr);
}

void musicFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.08);
    roundedRect(cr, e, e.width * 0.14);
    fillVertical(cr, e, hex("#FF5E7E"), hex("#C2185B"));
    cairo_new_path(cr);
    double u = e.width;
    setColor(cr, {1, 1, 1});
    cairo_arc(cr, e.x + u * 0.33, e.y + u * 0.7, u * 0.11, 0, 2 * pi);
    cairo_fill(cr);
    cairo_arc(cr, e.x + u * 0.7, e.y + u * 0.62, u * 0.11, 0, 2 * pi);
    cairo_fill(cr);
    cairo_set_line_width(cr, std::max(u * 0.06, 0.8));
    cairo_move_to(cr, e.x + u * 0.43, e.y + u * 0.7);
    cairo_line_to(cr, e.x + u * 0.43, e.y + u * 0.25);
    cairo_line_to(cr, e.x + u * 0.8, e.y + u * 0.18);
    cairo_line_to(cr, e.x + u * 0.8, e.y + u * 0.62);
    cairo_stroke(cr);
    f.caption();
}

void colourFace(const Face& f) {
    auto* cr = f.cr;
    Rect e = inset(f.emblem(), f.side() * 0.1);
    double cx = e.midX(), cy = e.midY(), r = e.width / 2;
    constexpr std::array<std::string_view, 6> hues = {"#FF3B30", "#FF9500", "#FFCC00", "#34C759", "#007AFF", "#AF52DE"};
    for (std::size_t i = 0; i < hues.size(); ++i) {
        cairo_move_to(cr, cx, cy);
        cairo_arc(cr, cx, cy, r, i * 2 * pi / 6, (i + 1) * 2 * pi / 6);
        cairo_close_path(cr);
        setColor(cr, hex(hues[i]));
        cairo_fill(cr);
    }
    cairo_arc(cr, cx, cy, r * 0.35, 0, 2 * pi);
    setColor(cr, {1, 1, 1});
    cairo_fill(cr);
    f.caption();
}

void genericFace(const Face& f, std::string_view kindName) {
    Rect e = inset(f.emblem(), f.side() * 0.14);
    roundedRect(f.cr, e, e.width * 0.22);
    cairo_set_source_rgba(f.cr, 1, 1, 1, 0.16);
    cairo_fill(f.cr);
    centredText(f.cr, initialOf(kindName), e.midX(), e.midY(), e.width * 0.55, {1, 1, 1}, 0.92);
    f.caption();
}

void widgetCard(cairo_t* cr, const BarTile& tile, const Rect& frame) {
    double margin = std::min(frame.width, frame.height) * (1 - DockTileGeometry::iconBodyRatio) / 2;
    Rect card = inset(frame, margin);
    double radius = card.height * 0.22;
    softShadow(cr, card, radius);
    roundedRect(cr, card, radius);
    fillVertical(cr, card, rgb(0.2, 0.2, 0.22), rgb(0.1, 0.1, 0.12), 0.96);
    cairo_new_path(cr);
    roundedRect(cr, inset(card, 0.5), radius);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.14);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);

    auto kind = tile.widgetKind.value_or(WidgetKind::collection);
    Face face{cr, inset(card, card.height * 0.1), tile, {}};
    // Stand-in values: the live widgets bring their own captions.
    auto wideOnly = [&](std::string_view text) { return face.isWide() ? text : std::string_view(); };
    switch (kind) {
    case WidgetKind::clock: face.fallbackCaption = wideOnly("10:10"); break;
    case WidgetKind::timer: face.fallbackCaption = "12:30"; break;
    case WidgetKind::pomodoro: face.fallbackCaption = "25:00"; break;
    case WidgetKind::stopwatch: face.fallbackCaption = "0:42"; break;
    case WidgetKind::countdown: face.fallbackCaption = "3d"; break;
    case WidgetKind::timeProgress: face.fallbackCaption = "55%"; break;
    case WidgetKind::claudeUsage: face.fallbackCaption = "42%"; break;
    case WidgetKind::weather: face.fallbackCaption = "21°"; break;
    case WidgetKind::calendar:
    case WidgetKind::reminders: face.fallbackCaption = wideOnly("Stand-up 10:00"); break;
    case WidgetKind::battery: face.fallbackCaption = "80%"; break;
    case WidgetKind::water: face.fallbackCaption = "4/8"; break;
    case WidgetKind::pet: face.fallbackCaption = wideOnly("Purring"); break;
    case WidgetKind::music: face.fallbackCaption = wideOnly("Now Playing"); break;
    case WidgetKind::colourPicker: face.fallbackCaption = wideOnly("#0A84FF"); break;
    default: break;
    }
    cairo_save(cr);
    roundedRect(cr, card, radius);
    cairo_clip(cr);
    switch (kind) {
    case WidgetKind::clock: clockFace(face); break;
    case WidgetKind::timer: timerFace(face, hex("#FF9F0A"), 0.62); break;
    case WidgetKind::pomodoro: timerFace(face, hex("#FF453A"), 0.4); break;
    case WidgetKind::stopwatch: timerFace(face, hex("#30D158"), 0.25); break;
    case WidgetKind::countdown: timerFace(face, hex("#0A84FF"), 0.8); break;
    case WidgetKind::timeProgress: timerFace(face, hex("#BF5AF2"), 0.55); break;
    case WidgetKind::claudeUsage: timerFace(face, hex("#D97757"), 0.42); break;
    case WidgetKind::weather: weatherFace(face); break;
    case WidgetKind::calendar:
    case WidgetKind::reminders: calendarFace(face); break;
    case WidgetKind::battery: batteryFace(face); break;
    case WidgetKind::water: waterFace(face); break;
    case WidgetKind::pet: petFace(face); break;
    case WidgetKind::github: githubFace(face); break;
    case WidgetKind::activity: graphFace(face, hex("#30D158")); break;
    case WidgetKind::network: graphFace(face, hex("#64D2FF")); break;
    case WidgetKind::fans: graphFace(face, hex("#FF9F0A")); break;
    case WidgetKind::note: noteFace(face); break;
    case WidgetKind::music: musicFace(face); break;
    case WidgetKind::colourPicker: colourFace(face); break;
    default: genericFace(face, caseName(kind)); break;
    }
    cairo_restore(cr);
}

} // namespace

std::string initialOf(std::string_view label) {
    for (auto character : text::utf8Characters(label))
        if (text::isLetterOrDigit(character)) return text::uppercased(character);
    return "?";
}

void drawTileArt(cairo_t* cr, const BarTile& tile, const Rect& frame, TrashIcon trash) {
    if (frame.isEmpty()) return;
    cairo_save(cr);
    Body body{bodyOf(frame)};
    switch (tile.kind) {
    case BarTile::Kind::app:
        if (tile.image)
            imageIcon(cr, *tile.image, frame);
        else
            placeholderIcon(cr, tile, body.r);
        break;
    case BarTile::Kind::folder:
        if (tile.image)
            imageIcon(cr, *tile.image, frame);
        else
            folderIcon(cr, tile, body);
        break;
    case BarTile::Kind::file:
        if (tile.image)
            imageIcon(cr, *tile.image, frame);
        else
            fileIcon(cr, tile, body);
        break;
    case BarTile::Kind::link: linkIcon(cr, body); break;
    case BarTile::Kind::downloads: downloadsIcon(cr, body); break;
    case BarTile::Kind::trash: trashIcon(cr, tile, body, trash); break;
    case BarTile::Kind::widget: widgetCard(cr, tile, frame); break;
    case BarTile::Kind::spacer:
    case BarTile::Kind::separator: break;
    }
    cairo_restore(cr);
}

} // namespace corvane::paint
