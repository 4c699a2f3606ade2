#include "CorvaneApp/render/BarIcons.hpp"

#include "CorvaneApp/looks/IconImage.hpp"
#include "CorvaneApp/looks/IconOverrides.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <cstring>
#include <map>

namespace corvane {

BarImage barImage(const IconImage& image) {
    auto* surface = image.surface();
    cairo_surface_flush(surface);
    BarImage result{.width = image.width(), .height = image.height()};
    result.pixels.resize(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height));
    // Both are premultiplied ARGB in native byte order; only Cairo's row stride may differ.
    const auto* data = cairo_image_surface_get_data(surface);
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    const auto row = static_cast<std::size_t>(result.width);
    for (std::size_t y = 0; y < static_cast<std::size_t>(result.height); ++y)
        std::memcpy(result.pixels.data() + y * row, data + y * stride, row * sizeof(std::uint32_t));
    // A PNG without alpha decodes to RGB24, whose unused top byte is no opacity.
    if (cairo_image_surface_get_format(surface) == CAIRO_FORMAT_RGB24)
        for (auto& pixel : result.pixels) pixel |= 0xff000000U;
    return result;
}

BarIconSource barIcons(IconOverrides& overrides, const IconPack* pack) {
    // Converted once per application for as long as the source lives.
    auto converted = std::make_shared<std::map<std::string, std::shared_ptr<const BarImage>>>();
    return [&overrides, pack, converted](const std::string& appPath) -> std::shared_ptr<const BarImage> {
        if (auto known = converted->find(appPath); known != converted->end()) return known->second;
        std::optional<IconImage> icon;
        if (pack && overrides.resolve(appPath).source != IconOverrides::Resolution::Source::custom)
            icon = overrides.image(*pack, appPath);
        else
            icon = overrides.image(appPath);
        std::shared_ptr<const BarImage> image;
        auto format = icon ? cairo_image_surface_get_format(icon->surface()) : CAIRO_FORMAT_INVALID;
        if (format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24)
            image = std::make_shared<const BarImage>(barImage(*icon));
        converted->emplace(appPath, image);
        return image;
    };
}

} // namespace corvane
