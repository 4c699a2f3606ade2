#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <array>
#include <string>

namespace corvane {

/// Hue in degrees (0…360), saturation and lightness as fractions.
struct HSL {
    double hue = 0;
    double saturation = 0;
    double lightness = 0;
};

/// One colour taken from the screen.
struct PickedColour {
    Uuid id;
    /// 0…255 each.
    int red = 0;
    int green = 0;
    int blue = 0;
    Date pickedAt;
    bool isPinned = false;

    /// Each channel over 255.
    std::array<double, 3> channels() const;
    /// WCAG relative luminance, 0 for black to 1 for white.
    double luminance() const;
    /// Whether a label drawn on the swatch reads better dark than light.
    bool wantsDarkLabel() const { return luminance() > 0.179; }
    HSL hsl() const;

    bool sameColour(const PickedColour& other) const {
        return red == other.red && green == other.green && blue == other.blue;
    }

    bool operator==(const PickedColour&) const = default;
};

/// The text copied for `colour` in `format`.
std::string formattedColour(ColourFormat format, const PickedColour& colour);

} // namespace corvane
