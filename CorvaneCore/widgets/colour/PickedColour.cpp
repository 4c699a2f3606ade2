#include "CorvaneCore/widgets/colour/PickedColour.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace corvane {

namespace {

double linearised(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

template <typename... Args> std::string formatted(const char* format, Args... args) {
    char buffer[96];
    std::snprintf(buffer, sizeof buffer, format, args...);
    return buffer;
}

} // namespace

std::array<double, 3> PickedColour::channels() const { return {red / 255.0, green / 255.0, blue / 255.0}; }

double PickedColour::luminance() const {
    auto [r, g, b] = channels();
    return 0.2126 * linearised(r) + 0.7152 * linearised(g) + 0.0722 * linearised(b);
}

HSL PickedColour::hsl() const {
    auto [r, g, b] = channels();
    const double maximum = std::max({r, g, b});
    const double minimum = std::min({r, g, b});
    const double delta = maximum - minimum;
    HSL result;
    result.lightness = (maximum + minimum) / 2;
    if (delta == 0) return result;
    result.saturation =
        result.lightness > 0.5 ? delta / (2 - maximum - minimum) : delta / (maximum + minimum);
    double sector;
    if (maximum == r)
        sector = (g - b) / delta;
    else if (maximum == g)
        sector = (b - r) / delta + 2;
    else
        sector = (r - g) / delta + 4;
    result.hue = std::fmod(sector * 60, 360);
    if (result.hue < 0) result.hue += 360;
    return result;
}

std::string formattedColour(ColourFormat format, const PickedColour& colour) {
    const int R = colour.red, G = colour.green, B = colour.blue;
    auto [r, g, b] = colour.channels();
    switch (format) {
    case ColourFormat::hex:
        return formatted("#%02X%02X%02X", R, G, B);
    case ColourFormat::hexLowercase:
        return formatted("#%02x%02x%02x", R, G, B);
    case ColourFormat::rgb:
        return formatted("rgb(%d, %d, %d)", R, G, B);
    case ColourFormat::hsl: {
        auto hsl = colour.hsl();
        return formatted("hsl(%.0f, %.0f%%, %.0f%%)", hsl.hue, hsl.saturation * 100, hsl.lightness * 100);
    }
    case ColourFormat::swiftUI:
        return formatted("Color(red: %.3f, green: %.3f, blue: %.3f)", r, g, b);
    case ColourFormat::nsColor:
        return formatted("NSColor(srgbRed: %.3f, green: %.3f, blue: %.3f, alpha: 1)", r, g, b);
    case ColourFormat::cssVariable:
        return formatted("--colour: #%02x%02x%02x;", R, G, B);
    }
    return {};
}

} // namespace corvane
