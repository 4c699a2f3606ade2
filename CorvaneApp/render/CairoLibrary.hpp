#pragma once

// Cairo, opened on the first drawing instead of linked. Linked, it would be loaded in every run of
// the command-line tool with the two dozen libraries it needs (pixman, fontconfig, freetype,
// libpng, X11, ...): most of the tool's start-up time, although only a few commands draw. Drawing
// code includes "CorvaneApp/render/Cairo.hpp" and calls Cairo as usual.

#include <cairo.h>

// Every Cairo function the program calls. One missing here is a link error of the tool, which
// does not link Cairo.
#define CORVANE_CAIRO_FUNCTIONS(X) \
    X(cairo_arc) \
    X(cairo_clip) \
    X(cairo_clip_extents) \
    X(cairo_close_path) \
    X(cairo_create) \
    X(cairo_curve_to) \
    X(cairo_destroy) \
    X(cairo_fill) \
    X(cairo_fill_preserve) \
    X(cairo_get_source) \
    X(cairo_identity_matrix) \
    X(cairo_image_surface_create) \
    X(cairo_image_surface_create_for_data) \
    X(cairo_image_surface_create_from_png) \
    X(cairo_image_surface_get_data) \
    X(cairo_image_surface_get_format) \
    X(cairo_image_surface_get_height) \
    X(cairo_image_surface_get_stride) \
    X(cairo_image_surface_get_width) \
    X(cairo_line_to) \
    X(cairo_mask) \
    X(cairo_matrix_init) \
    X(cairo_move_to) \
    X(cairo_new_path) \
    X(cairo_new_sub_path) \
    X(cairo_paint) \
    X(cairo_pattern_add_color_stop_rgba) \
    X(cairo_pattern_create_linear) \
    X(cairo_pattern_create_radial) \
    X(cairo_pattern_destroy) \
    X(cairo_pattern_set_filter) \
    X(cairo_pop_group_to_source) \
    X(cairo_push_group) \
    X(cairo_rectangle) \
    X(cairo_restore) \
    X(cairo_rotate) \
    X(cairo_save) \
    X(cairo_scale) \
    X(cairo_select_font_face) \
    X(cairo_set_dash) \
    X(cairo_set_font_size) \
    X(cairo_set_line_cap) \
    X(cairo_set_line_width) \
    X(cairo_set_operator) \
    X(cairo_set_source) \
    X(cairo_set_source_rgb) \
    X(cairo_set_source_rgba) \
    X(cairo_set_source_surface) \
    X(cairo_show_text) \
    X(cairo_status_to_string) \
    X(cairo_stroke) \
    X(cairo_stroke_preserve) \
    X(cairo_surface_destroy) \
    X(cairo_surface_flush) \
    X(cairo_surface_status) \
    X(cairo_surface_write_to_png) \
    X(cairo_surface_write_to_png_stream) \
    X(cairo_text_extents) \
    X(cairo_transform) \
    X(cairo_translate)

namespace corvane {

struct CairoLibrary {
#define CORVANE_CAIRO_POINTER(name) decltype(&::name) name = nullptr;
    CORVANE_CAIRO_FUNCTIONS(CORVANE_CAIRO_POINTER)
#undef CORVANE_CAIRO_POINTER
};

/// Cairo's functions: those of a Cairo the program already holds (an executable that links it),
/// else of the library opened on the first call. Throws `std::runtime_error` when Cairo is not
/// installed; it is asked once.
const CairoLibrary& cairoLibrary();

} // namespace corvane
