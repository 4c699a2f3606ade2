#include "CorvaneApp/render/BarRenderer.hpp"

#include "CorvaneApp/render/BarDecorations.hpp"
#include "CorvaneApp/render/CairoSupport.hpp"
#include "CorvaneApp/render/TileArt.hpp"
#include "CorvaneCore/bar/DockTileGeometry.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace corvane {

using namespace paint;

namespace {

using Background = DockTheme::Background;

// Colours the system draws where a theme leaves a part to the default.
const RGBColor darkDefault = rgb(0.11, 0.11, 0.12);
const RGBColor lightDefault = rgb(0.96, 0.96, 0.97);

// Whether the bar's surface is dark enough to want light marks on it.
bool isDarkSurface(const DockTheme& theme) {
    auto colors = theme.background.colors();
    if (!colors) return false;
    double l = luminance(hex(colors->topHex));
    if (colors->bottomHex) l = (l + luminance(hex(*colors->bottomHex))) / 2;
    // A faint tint over the desktop reads as the desktop, which is assumed light.
    return l < 0.45 && colors->opacity >= 0.4;
}

RGBColor indicatorColor(const BarScene& scene) {
    if (scene.indicatorHex) return hex(*scene.indicatorHex);
    if (scene.theme.indicatorHex) return hex(*scene.theme.indicatorHex);
    return isDarkSurface(scene.theme) ? lightDefault : darkDefault;
}

RGBColor separatorColor(const BarScene& scene, double& alpha) {
    if (scene.theme.separatorHex) {
        alpha = 0.75;
        return hex(*scene.theme.separatorHex);
    }
    bool dark = isDarkSurface(scene.theme);
    alpha = dark ? 0.3 : 0.22;
    return dark ? lightDefault : darkDefault;
}

double cornerRadius(const BarScene& scene, const LocalBar& bar) {
    return std::clamp(scene.theme.cornerRadiusScale * scene.metrics.iconSize, 0.0, bar.thickness() / 2);
}

// The path of the bar's outline in local coordinates. A shelf is a slab seen from above, so its
// far edge is shorter than its near one.
void barPath(cairo_t* cr, const BarScene& scene, const LocalBar& bar) {
    double radius = cornerRadius(scene, bar);
    if (scene.theme.background.kind() != Background::Kind::shelf) {
        roundedRect(cr, bar.rect(), radius);
        return;
    }
    double slant = bar.thickness() * 0.35;
    double top = bar.top + bar.thickness() * 0.3;
    double r = std::min(radius, bar.thickness() / 4);
    cairo_new_sub_path(cr);
    cairo_move_to(cr, bar.start + slant + r, top);
    cairo_line_to(cr, bar.end - slant - r, top);
    cairo_curve_to(cr, bar.end - slant, top, bar.end - slant, top, bar.end - slant + r * 0.35, top + r);
    cairo_line_to(cr, bar.end - r * 0.35, bar.bottom - r);
    cairo_curve_to(cr, bar.end, bar.bottom, bar.end, bar.bottom, bar.end - r, bar.bottom);
    cairo_line_to(cr, bar.start + r, bar.bottom);
    cairo_curve_to(cr, bar.start, bar.bottom, bar.start, bar.bottom, bar.start + r * 0.35, bar.bottom - r);
    cairo_line_to(cr, bar.start + slant - r * 0.35, top + r);
    cairo_curve_to(cr, bar.start + slant, top, bar.start + slant, top, bar.start + slant + r, top);
    cairo_close_path(cr);
}

void drawGlow(cairo_t* cr, const BarScene& scene, const LocalBar& bar) {
    if (!scene.theme.glowHex) return;
    auto color = hex(*scene.theme.glowHex);
    // Wide faint strokes under narrower ones: a halo without a blur filter.
    for (int pass = 7; pass >= 1; --pass) {
        barPath(cr, scene, bar);
        setColor(cr, color, 0.055);
        cairo_set_line_width(cr, pass * 2.4);
        cairo_stroke(cr);
    }
}

void topSheen(cairo_t* cr, const LocalBar& bar, double alpha, double depth) {
    cairo_pattern_t* sheen = cairo_pattern_create_linear(0, bar.top, 0, bar.top + bar.thickness() * depth);
    cairo_pattern_add_color_stop_rgba(sheen, 0, 1, 1, 1, alpha);
    cairo_pattern_add_color_stop_rgba(sheen, 1, 1, 1, 1, 0);
    cairo_set_source(cr, sheen);
    cairo_fill_preserve(cr);
    cairo_pattern_destroy(sheen);
}

void innerEdge(cairo_t* cr, const BarScene& scene, const LocalBar& bar, double light, double dark) {
    LocalBar inner = bar.inset(0.5);
    barPath(cr, scene, inner);
    cairo_set_source_rgba(cr, 1, 1, 1, light);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
    if (dark > 0) {
        barPath(cr, scene, bar.inset(-0.5));
        cairo_set_source_rgba(cr, 0, 0, 0, dark);
        cairo_set_line_width(cr, 1);
        cairo_stroke(cr);
    }
}

void drawBackground(cairo_t* cr, const BarScene& scene, const LocalBar& bar) {
    const auto& background = scene.theme.background;
    switch (background.kind()) {
    case Background::Kind::none:
        return;
    case Background::Kind::glass:
        barPath(cr, scene, bar);
        setColor(cr, lightDefault, 0.42);
        cairo_fill_preserve(cr);
        topSheen(cr, bar, 0.3, 0.5);
        cairo_new_path(cr);
        innerEdge(cr, scene, bar, 0.55, 0.12);
        return;
    case Background::Kind::liquid: {
        auto colors = background.colors();
        auto tint = colors ? hex(colors->topHex) : RGBColor{1, 1, 1};
        double opacity = std::get<Background::Liquid>(background.value).opacity;
        barPath(cr, scene, bar);
        setColor(cr, tint, opacity);
        cairo_fill_preserve(cr);
        // Liquid glass bends light at its rim: bright along the top, a glint along the bottom.
        topSheen(cr, bar, 0.45, 0.42);
        cairo_new_path(cr);
        barPath(cr, scene, bar);
        cairo_pattern_t* glint = cairo_pattern_create_linear(0, bar.bottom - bar.thickness() * 0.25, 0, bar.bottom);
        cairo_pattern_add_color_stop_rgba(glint, 0, 1, 1, 1, 0);
        cairo_pattern_add_color_stop_rgba(glint, 1, 1, 1, 1, 0.22);
        cairo_set_source(cr, glint);
        cairo_fill(cr);
        cairo_pattern_destroy(glint);
        innerEdge(cr, scene, bar, 0.7, 0.1);
        return;
    }
    case Background::Kind::frosted: {
        auto colors = *background.colors();
        barPath(cr, scene, bar);
        setColor(cr, hex(colors.topHex), colors.opacity);
        cairo_fill_preserve(cr);
        topSheen(cr, bar, 0.08, 0.3);
        cairo_new_path(cr);
        return;
    }
    case Background::Kind::gradient: {
        auto colors = *background.colors();
        barPath(cr, scene, bar);
        fillVertical(cr, bar.rect(), hex(colors.topHex), hex(*colors.bottomHex), colors.opacity);
        cairo_new_path(cr);
        return;
    }
    case Background::Kind::shelf: {
        auto colors = *background.colors();
        auto top = hex(colors.topHex), bottom = hex(colors.bottomHex.value_or(colors.topHex));
        barPath(cr, scene, bar);
        fillVertical(cr, {bar.start, bar.top + bar.thickness() * 0.3, bar.length(), bar.thickness() * 0.7}, top,
                     bottom, colors.opacity);
        cairo_new_path(cr);
        // The shelf's front lip.
        double lip = std::max(bar.thickness() * 0.08, 2.0);
        double r = std::min(cornerRadius(scene, bar), bar.thickness() / 4);
        roundedRect(cr, {bar.start, bar.bottom - lip, bar.length(), lip}, std::min(r, lip / 2));
        setColor(cr, darker(bottom, 0.25), std::min(colors.opacity + 0.15, 1.0));
        cairo_fill(cr);
        cairo_move_to(cr, bar.start + bar.thickness() * 0.35, bar.top + bar.thickness() * 0.3 + 0.5);
        cairo_line_to(cr, bar.end - bar.thickness() * 0.35, bar.top + bar.thickness() * 0.3 + 0.5);
        cairo_set_source_rgba(cr, 1, 1, 1, 0.85);
        cairo_set_line_width(cr, 1);
        cairo_stroke(cr);
        return;
    }
    }
}

void drawBorder(cairo_t* cr, const BarScene& scene, const LocalBar& bar) {
    if (!scene.theme.borderHex || scene.theme.borderWidth <= 0) return;
    double width = scene.theme.borderWidth;
    barPath(cr, scene, bar.inset(width / 2));
    setColor(cr, hex(*scene.theme.borderHex), 0.85);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

bool drawsArt(const BarTile& tile) {
    return tile.kind != BarTile::Kind::spacer && tile.kind != BarTile::Kind::separator;
}

// Mirror images of the icons in the strip of bar below them, fading out downwards. Only a bottom
// bar has a floor to reflect on.
void drawReflections(cairo_t* cr, const BarScene& scene, const BarFrame& frame, const LocalBar& bar,
                     const TileArtPainter& paint) {
    if (!scene.theme.showsReflections || scene.style.position != DockPosition::bottom) return;
    cairo_save(cr);
    barPath(cr, scene, bar);
    cairo_clip(cr);
    for (std::size_t i = 0; i < frame.tiles.size(); ++i)
        if (drawsArt(scene.tiles[i])) paint(cr, i, frame.tiles[i].drawn, TileArtRole::reflection);
    cairo_restore(cr);
}

void drawSeparators(cairo_t* cr, const BarScene& scene, const BarFrame& frame, const LocalBar& bar,
                    const LocalSpace& space) {
    double alpha = 0;
    auto color = separatorColor(scene, alpha);
    double inset = scene.metrics.verticalPadding * 0.9;
    for (std::size_t i = 0; i < frame.tiles.size(); ++i) {
        if (scene.tiles[i].kind != BarTile::Kind::separator) continue;
        // On a pixel's centre, so that a one-point line stays one crisp pixel.
        double along = std::round(space.along(frame.tiles[i].drawn) - 0.5) + 0.5;
        cairo_move_to(cr, along, bar.top + inset);
        cairo_line_to(cr, along, bar.bottom - inset);
    }
    setColor(cr, color, alpha);
    cairo_set_line_width(cr, std::max(1.0, scene.metrics.iconSize / 48));
    cairo_stroke(cr);
}

void drawIndicators(cairo_t* cr, const BarScene& scene, const BarFrame& frame, const LocalBar& bar,
                    const LocalSpace& space) {
    if (!scene.showsProcessIndicators) return;
    auto color = indicatorColor(scene);
    double size = scene.metrics.indicatorSize;
    // Halfway between the icons' resting base and the bar's edge.
    double across = bar.bottom - scene.metrics.verticalPadding / 2;
    bool dash = scene.style.indicatorStyle == IndicatorStyle::dash;
    for (std::size_t i = 0; i < frame.tiles.size(); ++i) {
        if (!scene.tiles[i].isRunning) continue;
        double along = space.along(frame.tiles[i].drawn);
        Rect mark = dash ? Rect{along - scene.metrics.iconSize * 0.16, across - size * 0.4,
                                scene.metrics.iconSize * 0.32, size * 0.8}
                         : Rect{along - size * 0.65, across - size * 0.65, size * 1.3, size * 1.3};
        if (isDarkSurface(scene.theme)) {
            roundedRect(cr, inset(mark, -1.5), mark.height);
            setColor(cr, color, 0.3);
            cairo_fill(cr);
        }
        roundedRect(cr, mark, mark.height / 2);
        setColor(cr, color);
        cairo_fill(cr);
    }
}

void drawLabel(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame) {
    if (!frame.hovered) return;
    const auto& tile = scene.tiles[*frame.hovered];
    if (tile.label.empty() || !drawsArt(tile)) return;
    const Rect& drawn = frame.tiles[*frame.hovered].drawn;
    double size = std::clamp(scene.metrics.iconSize * 0.27, 10.0, 14.0);
    cairo_select_font_face(cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, size);
    cairo_text_extents_t extents;
    cairo_text_extents(cr, tile.label.c_str(), &extents);
    double width = extents.x_advance + size * 1.3, height = size * 1.75, gap = 6;
    Rect pill;
    switch (scene.style.position) {
    case DockPosition::bottom:
        pill = {std::clamp(drawn.midX() - width / 2, 2.0, std::max(layout.width() - width - 2, 2.0)),
                drawn.minY() - gap - height, width, height};
        break;
    case DockPosition::left:
        pill = {drawn.maxX() + gap, drawn.midY() - height / 2, width, height};
        break;
    case DockPosition::right:
        pill = {drawn.minX() - gap - width, drawn.midY() - height / 2, width, height};
        break;
    }
    // A side bar's view may be too narrow for a long name; half a label would be worse than none.
    if (pill.minX() < 0 || pill.maxX() > layout.width()) return;
    roundedRect(cr, pill, height / 2);
    cairo_set_source_rgba(cr, 0.12, 0.12, 0.13, 0.85);
    cairo_fill(cr);
    roundedRect(cr, inset(pill, 0.5), height / 2);
    cairo_set_source_rgba(cr, 1, 1, 1, 0.12);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
    centredText(cr, tile.label, pill.midX(), pill.midY(), size, {1, 1, 1}, 0.95, false);
}

void drawBackdrop(cairo_t* cr, const BarLayout& layout) {
    cairo_rectangle(cr, 0, 0, layout.width(), layout.height());
    cairo_pattern_t* sky = cairo_pattern_create_linear(0, 0, layout.width() * 0.3, layout.height());
    addStop(sky, 0, hex("#3A5A8C"));
    addStop(sky, 0.6, hex("#8C6D9E"));
    addStop(sky, 1, hex("#E0A47A"));
    cairo_set_source(cr, sky);
    cairo_fill(cr);
    cairo_pattern_destroy(sky);
}

} // namespace

void drawTileReflection(cairo_t* cr, const BarTile& tile, const Rect& drawn, TrashIcon trashIcon) {
    // Mirror about the icon's visible base rather than its tile's edge.
    double air = drawn.height * (1 - DockTileGeometry::iconBodyRatio) / 2;
    double floor = drawn.maxY() - air;
    // A group as small as the reflection: a group spans the clip, and the bar is long.
    cairo_save(cr);
    cairo_rectangle(cr, drawn.minX() - 2, floor, drawn.width + 4, drawn.height * 0.4);
    cairo_clip(cr);
    cairo_push_group(cr);
    cairo_translate(cr, 0, 2 * floor);
    cairo_scale(cr, 1, -1);
    drawTileArt(cr, tile, drawn, trashIcon);
    cairo_pop_group_to_source(cr);
    cairo_pattern_t* fade = cairo_pattern_create_linear(0, floor, 0, floor + drawn.height * 0.35);
    cairo_pattern_add_color_stop_rgba(fade, 0, 0, 0, 0, 0.38);
    cairo_pattern_add_color_stop_rgba(fade, 1, 0, 0, 0, 0);
    cairo_mask(cr, fade);
    cairo_pattern_destroy(fade);
    cairo_restore(cr);
}

TileArtPainter directTileArt(const BarScene& scene) {
    return [&scene](cairo_t* cr, std::size_t index, const Rect& drawn, TileArtRole role) {
        if (role == TileArtRole::reflection) drawTileReflection(cr, scene.tiles[index], drawn, scene.style.trashIcon);
        else drawTileArt(cr, scene.tiles[index], drawn, scene.style.trashIcon);
    };
}

bool animatesChrome(const BarScene& scene) {
    const auto& decoration = scene.theme.decoration;
    return decoration && decoration->outline;
}

void drawBarLayers(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
                   const BarMoment& moment, unsigned layers, const TileArtPainter& paint) {
    if (frame.tiles.size() != scene.tiles.size())
        throw std::invalid_argument("bar frame and scene differ in their tile count");
    cairo_save(cr);
    cairo_rectangle(cr, 0, 0, layout.width(), layout.height());
    cairo_clip(cr);
    cairo_new_path(cr);

    LocalSpace space{scene.style.position, scene.metrics.windowHeight()};
    LocalBar bar = space.bar(frame.bar, scene.metrics);
    const auto& decoration = scene.theme.decoration;

    if (layers & BarLayer::chrome) {
        if (moment.backdrop) drawBackdrop(cr, layout);
        // Chrome, drawn along the bar as if it sat at the bottom and turned into place.
        cairo_save(cr);
        space.apply(cr);
        drawGlow(cr, scene, bar);
        drawBackground(cr, scene, bar);
        if (decoration && decoration->outline)
            drawOutline(cr, *decoration->outline, bar, moment.seconds, [&] { barPath(cr, scene, bar.inset(1.5)); });
        else
            drawBorder(cr, scene, bar);
        cairo_restore(cr);
    }

    if (layers & BarLayer::tiles) {
        drawReflections(cr, scene, frame, bar, paint);

        cairo_save(cr);
        space.apply(cr);
        double radius = cornerRadius(scene, bar);
        if (decoration && decoration->edgeCover) drawEdgeCover(cr, *decoration->edgeCover, bar, radius);
        if (decoration && !decoration->lightHexes.empty())
            drawLights(cr, *decoration, bar, radius, scene.metrics.iconSize, moment.seconds);
        drawSeparators(cr, scene, frame, bar, space);
        cairo_restore(cr);

        // The hovered tile last, so that it lies over the neighbours it grew into.
        for (std::size_t i = 0; i < frame.tiles.size(); ++i)
            if (i != frame.hovered && drawsArt(scene.tiles[i])) paint(cr, i, frame.tiles[i].drawn, TileArtRole::icon);
        if (frame.hovered && drawsArt(scene.tiles[*frame.hovered]))
            paint(cr, *frame.hovered, frame.tiles[*frame.hovered].drawn, TileArtRole::icon);
    }

    if (layers & BarLayer::overlay) {
        cairo_save(cr);
        space.apply(cr);
        drawIndicators(cr, scene, frame, bar, space);
        if (decoration && decoration->particles)
            drawParticles(cr, *decoration->particles, bar, scene.metrics.iconSize, moment.seconds);
        cairo_restore(cr);
        drawLabel(cr, scene, layout, frame);
    }
    cairo_restore(cr);
}

void drawBar(cairo_t* cr, const BarScene& scene, const BarLayout& layout, const BarFrame& frame,
             const BarMoment& moment) {
    drawBarLayers(cr, scene, layout, frame, moment, BarLayer::all, directTileArt(scene));
}

namespace {

BarImage rasterized(int width, int height, const std::function<void(cairo_t*)>& draw) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        throw std::runtime_error("cannot make a " + std::to_string(width) + "×" + std::to_string(height) + " image");
    }
    cairo_t* cr = cairo_create(surface);
    draw(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface);

    BarImage image{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height)};
    const unsigned char* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    for (int row = 0; row < height; ++row)
        std::memcpy(image.pixels.data() + static_cast<std::size_t>(row) * width, data + static_cast<std::size_t>(row) * stride,
                    static_cast<std::size_t>(width) * 4);
    cairo_surface_destroy(surface);
    return image;
}

} // namespace

BarImage rasterizeBar(const BarScene& scene, const BarLayout& layout, const BarFrame& frame, const BarMoment& moment,
                      int width, int height) {
    if (width <= 0) width = static_cast<int>(std::ceil(layout.width()));
    if (height <= 0) height = static_cast<int>(std::ceil(layout.height()));
    return rasterized(width, height, [&](cairo_t* cr) { drawBar(cr, scene, layout, frame, moment); });
}

BarImage rasterizeTile(const BarTile& tile, int size, TrashIcon trashIcon) {
    return rasterized(size, size, [&](cairo_t* cr) {
        drawTileArt(cr, tile, Rect{0, 0, static_cast<double>(size), static_cast<double>(size)}, trashIcon);
    });
}

std::string encodePNG(const BarImage& image) {
    if (image.width <= 0 || image.height <= 0) throw std::invalid_argument("an empty image has no PNG form");
    // Cairo only reads through this pointer while writing the PNG.
    auto* data = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels.data()));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, image.width, image.height, image.width * 4);
    std::string bytes;
    auto status = cairo_surface_write_to_png_stream(
        surface,
        [](void* closure, const unsigned char* chunk, unsigned int length) {
            static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(chunk), length);
            return CAIRO_STATUS_SUCCESS;
        },
        &bytes);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string("cannot encode the image: ") + cairo_status_to_string(status));
    return bytes;
}

} // namespace corvane
