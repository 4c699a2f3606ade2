#include "CorvaneApp/render/BarDecorations.hpp"

#include "CorvaneApp/render/CairoSupport.hpp"

#include <array>
#include <cmath>
#include <cstdint>

namespace corvane::paint {

namespace {

using Particles = DockTheme::Particles;
using EdgeCover = DockTheme::EdgeCover;

std::uint32_t seedOf(int index, int salt) {
    return static_cast<std::uint32_t>(index) * 2654435761U + static_cast<std::uint32_t>(salt) * 40503U;
}

// Positions that cycle through a range as time passes, so a particle leaving one side comes
// back at the other.
double wrapped(double value, double low, double range) {
    return low + std::fmod(std::fmod(value - low, range) + range, range);
}

const std::array<RGBColor, 4> autumn = {hex("#E8650F"), hex("#C2410C"), hex("#F59E0B"), hex("#9A3412")};

void leafPath(cairo_t* cr, double x, double y, double size, double angle) {
    cairo_save(cr);
    cairo_translate(cr, x, y);
    cairo_rotate(cr, angle);
    cairo_move_to(cr, -size, 0);
    cairo_curve_to(cr, -size * 0.4, -size * 0.75, size * 0.4, -size * 0.75, size, 0);
    cairo_curve_to(cr, size * 0.4, size * 0.75, -size * 0.4, size * 0.75, -size, 0);
    cairo_close_path(cr);
    cairo_restore(cr);
}

void leaf(cairo_t* cr, double x, double y, double size, double angle, RGBColor color) {
    leafPath(cr, x, y, size, angle);
    setColor(cr, color, 0.95);
    cairo_fill(cr);
    cairo_move_to(cr, x - size * 0.8 * std::cos(angle), y - size * 0.8 * std::sin(angle));
    cairo_line_to(cr, x + size * 0.8 * std::cos(angle), y + size * 0.8 * std::sin(angle));
    setColor(cr, darker(color, 0.35), 0.7);
    cairo_set_line_width(cr, std::max(size * 0.12, 0.4));
    cairo_stroke(cr);
}

void bat(cairo_t* cr, double x, double y, double size, double flap) {
    cairo_save(cr);
    cairo_translate(cr, x, y);
    double tip = -size * 0.6 * flap;
    for (int side : {-1, 1}) {
        cairo_move_to(cr, 0, 0);
        cairo_curve_to(cr, side * size * 0.5, tip - size * 0.2, side * size * 0.9, tip - size * 0.1, side * size * 1.3,
                       tip);
        cairo_curve_to(cr, side * size * 1.0, tip + size * 0.25, side * size * 0.8, tip + size * 0.1,
                       side * size * 0.65, tip + size * 0.4);
        cairo_curve_to(cr, side * size * 0.5, size * 0.2, side * size * 0.3, size * 0.1, 0, size * 0.3);
        cairo_close_path(cr);
    }
    cairo_save(cr);
    cairo_scale(cr, size * 0.28, size * 0.4);
    cairo_arc(cr, 0, 0.2, 1, 0, 2 * pi);
    cairo_restore(cr);
    cairo_set_source_rgba(cr, 0.05, 0.02, 0.08, 0.92);
    cairo_fill_preserve(cr);
    cairo_set_source_rgba(cr, 1, 0.54, 0.12, 0.45);
    cairo_set_line_width(cr, 0.5);
    cairo_stroke(cr);
    cairo_restore(cr);
}

// The usable run of the far edge: corners round away, so covers stop short of them.
void edgeRun(const LocalBar& bar, double cornerRadius, double& from, double& to) {
    from = bar.start + cornerRadius * 0.55;
    to = bar.end - cornerRadius * 0.55;
}

void snowCap(cairo_t* cr, const LocalBar& bar, double radius) {
    double from = 0, to = 0;
    edgeRun(bar, radius, from, to);
    if (to <= from) return;
    double base = bar.top + 2.2;
    int bumps = std::max(static_cast<int>((to - from) / 9), 2);
    double step = (to - from) / bumps;
    cairo_move_to(cr, from - 2, base + 0.5);
    for (int i = 0; i < bumps; ++i) {
        double x0 = from + i * step, x1 = x0 + step;
        double height = 2.2 + 2.8 * noise(seedOf(i, 7));
        cairo_curve_to(cr, x0 + step * 0.2, bar.top - height, x1 - step * 0.2, bar.top - height, x1, bar.top - 0.5);
    }
    cairo_line_to(cr, to + 2, base + 0.5);
    // Icicles and lumps along the underside.
    for (int i = bumps - 1; i >= 0; --i) {
        double x = from + (i + 0.5) * step;
        double drop = noise(seedOf(i, 11)) > 0.55 ? 2.5 + 4 * noise(seedOf(i, 13)) : 1.2;
        cairo_line_to(cr, x + step * 0.25, base);
        cairo_line_to(cr, x, base + drop);
        cairo_line_to(cr, x - step * 0.25, base);
    }
    cairo_close_path(cr);
    cairo_set_source_rgba(cr, 0.72, 0.82, 0.95, 0.55);
    cairo_set_line_width(cr, 1.4);
    cairo_stroke_preserve(cr);
    cairo_pattern_t* snow = cairo_pattern_create_linear(0, bar.top - 5, 0, base + 4);
    cairo_pattern_add_color_stop_rgba(snow, 0, 1, 1, 1, 1);
    cairo_pattern_add_color_stop_rgba(snow, 1, 0.88, 0.93, 1, 1);
    cairo_set_source(cr, snow);
    cairo_fill(cr);
    cairo_pattern_destroy(snow);
}

void cobwebs(cairo_t* cr, const LocalBar& bar, double radius) {
    double size = std::min(bar.thickness() * 0.85, 42.0);
    double corner = radius * 0.29;
    for (int side : {-1, 1}) {
        double ox = side < 0 ? bar.start + corner : bar.end - corner, oy = bar.top + corner;
        constexpr int spokes = 5;
        std::array<double, spokes> angles{};
        for (int i = 0; i < spokes; ++i) {
            // From along the edge to down the side, pointing into the bar.
            double a = (pi / 2) * i / (spokes - 1);
            angles[i] = side < 0 ? a : pi - a;
            double length = size * (0.8 + 0.2 * noise(seedOf(i, side + 3)));
            cairo_move_to(cr, ox, oy);
            cairo_line_to(cr, ox + length * std::cos(angles[i]), oy + length * std::sin(angles[i]));
        }
        for (int ringIndex = 1; ringIndex <= 4; ++ringIndex) {
            double r = size * ringIndex / 4.6;
            for (int i = 0; i + 1 < spokes; ++i) {
                double x0 = ox + r * std::cos(angles[i]), y0 = oy + r * std::sin(angles[i]);
                double x1 = ox + r * std::cos(angles[i + 1]), y1 = oy + r * std::sin(angles[i + 1]);
                double mid = (angles[i] + angles[i + 1]) / 2;
                double sag = r * 0.78;
                cairo_move_to(cr, x0, y0);
                cairo_curve_to(cr, ox + sag * std::cos(mid), oy + sag * std::sin(mid), ox + sag * std::cos(mid),
                               oy + sag * std::sin(mid), x1, y1);
            }
        }
        cairo_set_source_rgba(cr, 1, 1, 1, 0.5);
        cairo_set_line_width(cr, 0.6);
        cairo_stroke(cr);
    }
}

void slime(cairo_t* cr, const LocalBar& bar, double radius) {
    double from = 0, to = 0;
    edgeRun(bar, radius, from, to);
    if (to <= from) return;
    auto green = hex("#8BF06B");
    double band = 2.6;
    cairo_move_to(cr, from, bar.top - 0.8);
    cairo_line_to(cr, to, bar.top - 0.8);
    cairo_line_to(cr, to, bar.top + band);
    // Drips hang from the band at uneven intervals, each ending in a drop.
    double x = to;
    int index = 0;
    while (x > from + 6) {
        double gap = 14 + 18 * noise(seedOf(index, 21));
        x -= gap;
        if (x < from + 4) break;
        double width = 2.2 + 1.6 * noise(seedOf(index, 23));
        double length = 4 + 9 * noise(seedOf(index, 25));
        cairo_line_to(cr, x + width, bar.top + band);
        cairo_curve_to(cr, x + width * 0.5, bar.top + band + 1, x + width * 0.6, bar.top + band + length - width,
                       x + width * 0.6, bar.top + band + length - width * 0.4);
        cairo_arc(cr, x, bar.top + band + length - width * 0.4, width * 0.6, 0, pi);
        cairo_curve_to(cr, x - width * 0.6, bar.top + band + length - width, x - width * 0.5, bar.top + band + 1,
                       x - width, bar.top + band);
        ++index;
    }
    cairo_line_to(cr, from, bar.top + band);
    cairo_close_path(cr);
    setColor(cr, green, 0.92);
    cairo_fill_preserve(cr);
    setColor(cr, darker(green, 0.35), 0.6);
    cairo_set_line_width(cr, 0.6);
    cairo_stroke(cr);
}

void leafGarland(cairo_t* cr, const LocalBar& bar, double radius) {
    double from = 0, to = 0;
    edgeRun(bar, radius, from, to);
    int count = std::max(static_cast<int>((to - from) / 9), 1);
    double step = (to - from) / count;
    for (int i = 0; i <= count; ++i) {
        double x = from + i * step;
        double angle = (noise(seedOf(i, 31)) - 0.5) * 1.6;
        leaf(cr, x, bar.top + 0.5 + (noise(seedOf(i, 33)) - 0.5) * 2.5, 3.4 + 1.6 * noise(seedOf(i, 35)), angle,
             autumn[i % autumn.size()]);
    }
}

void bulbShape(cairo_t* cr, DockTheme::Bulb shape, double x, double y, double k, RGBColor color, double glow) {
    // The light first, under the glass.
    cairo_pattern_t* halo = cairo_pattern_create_radial(x, y + 3 * k, 0, x, y + 3 * k, 8 * k);
    addStop(halo, 0, color, 0.55 * glow);
    addStop(halo, 1, color, 0);
    cairo_set_source(cr, halo);
    cairo_arc(cr, x, y + 3 * k, 8 * k, 0, 2 * pi);
    cairo_fill(cr);
    cairo_pattern_destroy(halo);
    switch (shape) {
    case DockTheme::Bulb::bulb:
        cairo_rectangle(cr, x - 1.3 * k, y, 2.6 * k, 2 * k);
        cairo_set_source_rgba(cr, 0.2, 0.22, 0.2, 1);
        cairo_fill(cr);
        cairo_save(cr);
        cairo_translate(cr, x, y + 4.6 * k);
        cairo_scale(cr, 2.3 * k, 3.2 * k);
        cairo_arc(cr, 0, 0, 1, 0, 2 * pi);
        cairo_restore(cr);
        setColor(cr, lighter(color, 0.15 * glow));
        cairo_fill(cr);
        cairo_arc(cr, x - 0.8 * k, y + 3.8 * k, 0.7 * k, 0, 2 * pi);
        cairo_set_source_rgba(cr, 1, 1, 1, 0.7);
        cairo_fill(cr);
        break;
    case DockTheme::Bulb::pumpkin:
        cairo_rectangle(cr, x - 0.5 * k, y, 1 * k, 2 * k);
        setColor(cr, hex("#3F7D2C"));
        cairo_fill(cr);
        for (double dx : {-1.6, 1.6, 0.0}) {
            cairo_save(cr);
            cairo_translate(cr, x + dx * k, y + 4.5 * k);
            cairo_scale(cr, 2.2 * k, 2.8 * k);
            cairo_arc(cr, 0, 0, 1, 0, 2 * pi);
            cairo_restore(cr);
            setColor(cr, dx == 0 ? lighter(color, 0.15) : color);
            cairo_fill_preserve(cr);
            setColor(cr, darker(color, 0.35), 0.6);
            cairo_set_line_width(cr, 0.4);
            cairo_stroke(cr);
        }
        break;
    case DockTheme::Bulb::ghost: {
        double w = 2.8 * k, top = y + 1 * k, bottom = y + 8 * k;
        cairo_move_to(cr, x - w, bottom);
        cairo_line_to(cr, x - w, top + w);
        cairo_arc(cr, x, top + w, w, pi, 2 * pi);
        cairo_line_to(cr, x + w, bottom);
        for (int i = 0; i < 3; ++i) {
            double x1 = x + w - (i + 1) * 2 * w / 3;
            cairo_curve_to(cr, x1 + w / 3, bottom - 1.3 * k, x1 + w / 3, bottom - 1.3 * k, x1, bottom);
        }
        cairo_close_path(cr);
        setColor(cr, lighter(color, 0.55), 0.95);
        cairo_fill(cr);
        cairo_set_source_rgba(cr, 0.1, 0.1, 0.15, 0.9);
        for (int side : {-1, 1}) {
            cairo_arc(cr, x + side * 1.1 * k, top + w * 1.1, 0.55 * k, 0, 2 * pi);
            cairo_fill(cr);
        }
        break;
    }
    }
}

} // namespace

void drawOutline(cairo_t* cr, const DockTheme::Outline& outline, const LocalBar& bar, double seconds,
                 const std::function<void()>& path) {
    double width = std::clamp(bar.thickness() * 0.055, 2.0, 4.0);
    double dash = width * 2.2;
    double offset = -seconds * 6;
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    if (outline.kind == DockTheme::Outline::Kind::stripes) {
        path();
        cairo_set_source_rgba(cr, 1, 1, 1, 1);
        cairo_stroke(cr);
        double pattern[] = {dash, dash};
        cairo_set_dash(cr, pattern, 2, offset);
        path();
        setColor(cr, hex(outline.hex.value_or("#D7263D")));
        cairo_stroke(cr);
    } else {
        const std::array<RGBColor, 3> candy = {hex("#F07C1A"), hex("#FFD23F"), hex("#FFF8EC")};
        double pattern[] = {dash, dash * 2};
        for (std::size_t i = 0; i < candy.size(); ++i) {
            cairo_set_dash(cr, pattern, 2, offset + static_cast<double>(i) * dash);
            path();
            setColor(cr, candy[i]);
            cairo_stroke(cr);
        }
    }
    cairo_set_dash(cr, nullptr, 0, 0);
}

void drawEdgeCover(cairo_t* cr, DockTheme::EdgeCover cover, const LocalBar& bar, double cornerRadius) {
    switch (cover) {
    case EdgeCover::snow: snowCap(cr, bar, cornerRadius); break;
    case EdgeCover::cobwebs: cobwebs(cr, bar, cornerRadius); break;
    case EdgeCover::slime: slime(cr, bar, cornerRadius); break;
    case EdgeCover::leaves: leafGarland(cr, bar, cornerRadius); break;
    }
}

void drawLights(cairo_t* cr, const DockTheme::Decoration& decoration, const LocalBar& bar, double cornerRadius,
                double iconSize, double seconds) {
    if (decoration.lightHexes.empty()) return;
    double from = 0, to = 0;
    edgeRun(bar, cornerRadius, from, to);
    double k = std::clamp(iconSize / 40, 0.7, 1.9);
    double spacing = std::max(iconSize * 0.7, 22.0);
    int spans = std::max(static_cast<int>((to - from) / spacing), 1);
    double step = (to - from) / spans;
    double sag = 4.5 * k, wireY = bar.top + 0.5;
    cairo_move_to(cr, from, wireY);
    for (int i = 0; i < spans; ++i) {
        double x0 = from + i * step;
        cairo_curve_to(cr, x0 + step * 0.3, wireY + sag, x0 + step * 0.7, wireY + sag, x0 + step, wireY);
    }
    cairo_set_source_rgba(cr, 0.12, 0.16, 0.12, 0.9);
    cairo_set_line_width(cr, 0.9);
    cairo_stroke(cr);
    for (int i = 0; i < spans; ++i) {
        double x = from + (i + 0.5) * step;
        // A bézier with these controls dips to three quarters of its control depth halfway along.
        double y = wireY + sag * 0.75;
        auto color = hex(decoration.lightHexes[static_cast<std::size_t>(i) % decoration.lightHexes.size()]);
        double twinkle = 0.7 + 0.3 * std::sin(seconds * 2.6 + i * 1.9);
        bulbShape(cr, decoration.bulb, x, y - 0.5 * k, k, color, twinkle);
    }
}

void drawParticles(cairo_t* cr, DockTheme::Particles particles, const LocalBar& bar, double iconSize,
                   double seconds) {
    double k = std::clamp(iconSize / 48, 0.6, 1.6);
    double left = bar.start - 10, span = bar.length() + 20;
    double high = std::max(bar.top - bar.thickness() * 1.2, 0.0);
    double range = bar.bottom - high;
    switch (particles) {
    case Particles::snow: {
        int count = std::clamp(static_cast<int>(bar.length() / 11), 8, 160);
        for (int i = 0; i < count; ++i) {
            double speed = 10 + 14 * noise(seedOf(i, 41));
            double v = wrapped(high + noise(seedOf(i, 43)) * range + seconds * speed, high, range);
            double u = wrapped(left + noise(seedOf(i, 45)) * span + 3 * std::sin(seconds * 0.9 + i), left, span);
            double size = (0.8 + 1.5 * noise(seedOf(i, 47))) * k;
            cairo_arc(cr, u, v, size, 0, 2 * pi);
            cairo_set_source_rgba(cr, 1, 1, 1, 0.55 + 0.4 * noise(seedOf(i, 49)));
            cairo_fill(cr);
        }
        break;
    }
    case Particles::bats: {
        int count = std::clamp(static_cast<int>(bar.length() / 110), 2, 9);
        for (int i = 0; i < count; ++i) {
            double speed = (18 + 22 * noise(seedOf(i, 51))) * (i % 2 ? 1 : -1);
            double u = wrapped(left + noise(seedOf(i, 53)) * span + seconds * speed, left, span);
            double v = high + (bar.top - high + bar.thickness() * 0.2) * noise(seedOf(i, 55)) +
                       2.5 * std::sin(seconds * 2 + i);
            bat(cr, u, v, (4.5 + 2 * noise(seedOf(i, 57))) * k, std::sin(seconds * 13 + i * 2.1));
        }
        break;
    }
    case Particles::fog: {
        int count = std::clamp(static_cast<int>(bar.length() / 90), 3, 14);
        for (int i = 0; i < count; ++i) {
            double u = wrapped(left + noise(seedOf(i, 61)) * span + seconds * (4 + 5 * noise(seedOf(i, 63))), left,
                               span);
            double v = bar.top + bar.thickness() * (0.35 + 0.6 * noise(seedOf(i, 65)));
            double rx = (40 + 40 * noise(seedOf(i, 67))) * k, ry = (7 + 6 * noise(seedOf(i, 69))) * k;
            cairo_save(cr);
            cairo_translate(cr, u, v);
            cairo_scale(cr, rx, ry);
            cairo_pattern_t* puff = cairo_pattern_create_radial(0, 0, 0, 0, 0, 1);
            cairo_pattern_add_color_stop_rgba(puff, 0, 0.85, 1, 0.9, 0.16);
            cairo_pattern_add_color_stop_rgba(puff, 1, 0.85, 1, 0.9, 0);
            cairo_set_source(cr, puff);
            cairo_arc(cr, 0, 0, 1, 0, 2 * pi);
            cairo_fill(cr);
            cairo_pattern_destroy(puff);
            cairo_restore(cr);
        }
        break;
    }
    case Particles::leaves: {
        int count = std::clamp(static_cast<int>(bar.length() / 45), 4, 40);
        for (int i = 0; i < count; ++i) {
            double speed = 7 + 9 * noise(seedOf(i, 71));
            double v = wrapped(high + noise(seedOf(i, 73)) * range + seconds * speed, high, range);
            double u = wrapped(left + noise(seedOf(i, 75)) * span + 6 * std::sin(seconds * 0.7 + i * 1.3), left, span);
            leaf(cr, u, v, (2.6 + 1.4 * noise(seedOf(i, 77))) * k, seconds * (0.8 + noise(seedOf(i, 79))) + i,
                 autumn[static_cast<std::size_t>(i) % autumn.size()]);
        }
        break;
    }
    }
}

} // namespace corvane::paint
