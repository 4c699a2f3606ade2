#pragma once

// The bar's chrome is drawn in local coordinates: `u` runs along the bar from its start and `v`
// across it, growing towards the screen edge, as if every bar sat at the bottom of the screen.
// A side bar turns that space into place. Included from .cpp files only.

#include "CorvaneCore/bar/DockMetrics.hpp"
#include "CorvaneCore/bar/Geometry.hpp"
#include "CorvaneCore/dock/DockPosition.hpp"
#include "CorvaneCore/looks/DockTheme.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <functional>

namespace corvane::paint {

/// The bar's background in local coordinates.
struct LocalBar {
    double start = 0;
    double end = 0;
    double top = 0;
    double bottom = 0;

    double length() const { return end - start; }
    double thickness() const { return bottom - top; }
    Rect rect() const { return {start, top, length(), thickness()}; }
    LocalBar inset(double d) const { return {start + d, end - d, top + d, bottom - d}; }
};

/// The turn from local coordinates to the view's.
struct LocalSpace {
    DockPosition position = DockPosition::bottom;
    /// The view's extent across the bar.
    double thickness = 0;

    void apply(cairo_t* cr) const {
        cairo_matrix_t turn;
        switch (position) {
        case DockPosition::bottom: return;
        case DockPosition::left: cairo_matrix_init(&turn, 0, 1, -1, 0, thickness, 0); break;
        case DockPosition::right: cairo_matrix_init(&turn, 0, 1, 1, 0, 0, 0); break;
        }
        cairo_transform(cr, &turn);
    }
    /// A view rectangle's centre along the bar.
    double along(const Rect& r) const { return position == DockPosition::bottom ? r.midX() : r.midY(); }
    LocalBar bar(const Rect& viewBar, const DockMetrics& metrics) const {
        double bottom = thickness - metrics.bottomMargin;
        bool horizontal = position == DockPosition::bottom;
        return {horizontal ? viewBar.minX() : viewBar.minY(), horizontal ? viewBar.maxX() : viewBar.maxY(),
                bottom - metrics.barHeight(), bottom};
    }
};

/// A striped or candy outline along the path `outline` traces, moving with time.
void drawOutline(cairo_t* cr, const DockTheme::Outline& outline, const LocalBar& bar, double seconds,
                 const std::function<void()>& path);
/// Snow, cobwebs, slime or leaves along the bar's far edge.
void drawEdgeCover(cairo_t* cr, DockTheme::EdgeCover cover, const LocalBar& bar, double cornerRadius);
/// A string of lights hung along the far edge, twinkling with time.
void drawLights(cairo_t* cr, const DockTheme::Decoration& decoration, const LocalBar& bar, double cornerRadius,
                double iconSize, double seconds);
/// Falling or drifting particles at the given moment.
void drawParticles(cairo_t* cr, DockTheme::Particles particles, const LocalBar& bar, double iconSize,
                   double seconds);

} // namespace corvane::paint
