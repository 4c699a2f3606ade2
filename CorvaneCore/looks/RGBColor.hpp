#pragma once

#include <optional>
#include <string_view>

namespace corvane {

/// An opaque sRGB colour, each channel 0…1. Opacity is never part of it: backgrounds and
/// borders carry their own.
struct RGBColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    /// What an unreadable colour text draws as, so a typo never makes a part invisible.
    static constexpr RGBColor neutralGray() { return {0.5, 0.5, 0.5}; }

    /// "#RRGGBB" or "RRGGBB", white space around it ignored; any other form is none.
    static std::optional<RGBColor> parseHex(std::string_view text);
    /// The one reading of every hex colour field: `parseHex`, else neutral gray.
    static RGBColor fromHex(std::string_view text);

    bool operator==(const RGBColor&) const = default;
};

} // namespace corvane
