#include "CorvaneCore/widgets/colour/PickedColour.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
PickedColour rgb(int r, int g, int b) { return PickedColour{Uuid::generate(), r, g, b}; }
} // namespace

TEST(PickedColour, EveryFormatWritesTheExactText) {
    struct Case {
        PickedColour colour;
        std::array<const char*, 7> texts; // in ColourFormat order
    };
    const Case cases[] = {
        {rgb(255, 255, 255),
         {"#FFFFFF", "#ffffff", "rgb(255, 255, 255)", "hsl(0, 0%, 100%)", "Color(red: 1.000, green: 1.000, blue: 1.000)",
          "NSColor(srgbRed: 1.000, green: 1.000, blue: 1.000, alpha: 1)", "--colour: #ffffff;"}},
        {rgb(0, 0, 0),
         {"#000000", "#000000", "rgb(0, 0, 0)", "hsl(0, 0%, 0%)", "Color(red: 0.000, green: 0.000, blue: 0.000)",
          "NSColor(srgbRed: 0.000, green: 0.000, blue: 0.000, alpha: 1)", "--colour: #000000;"}},
        {rgb(255, 159, 10),
         {"#FF9F0A", "#ff9f0a", "rgb(255, 159, 10)", "hsl(36, 100%, 52%)",
          "Color(red: 1.000, green: 0.624, blue: 0.039)",
          "NSColor(srgbRed: 1.000, green: 0.624, blue: 0.039, alpha: 1)", "--colour: #ff9f0a;"}},
    };
    for (const auto& c : cases)
        for (std::size_t f = 0; f < c.texts.size(); ++f)
            EXPECT_EQ(formattedColour(static_cast<ColourFormat>(f), c.colour), c.texts[f])
                << caseName(static_cast<ColourFormat>(f));
}

TEST(PickedColour, HueComesFromTheSectorOfTheLargestChannel) {
    struct Case {
        PickedColour colour;
        const char* hsl;
    };
    const Case cases[] = {
        {rgb(255, 0, 0), "hsl(0, 100%, 50%)"},
        {rgb(200, 10, 20), "hsl(357, 90%, 41%)"}, // red sector below zero wraps round
        {rgb(10, 200, 20), "hsl(123, 90%, 41%)"},
        {rgb(10, 20, 200), "hsl(237, 90%, 41%)"},
        {rgb(230, 200, 250), "hsl(276, 83%, 88%)"}, // light: saturation on the upper side
        {rgb(128, 128, 128), "hsl(0, 0%, 50%)"},
    };
    for (const auto& c : cases) EXPECT_EQ(formattedColour(ColourFormat::hsl, c.colour), c.hsl);
}

TEST(PickedColour, LuminanceDecidesTheLabelShade) {
    EXPECT_DOUBLE_EQ(rgb(255, 255, 255).luminance(), 1.0);
    EXPECT_DOUBLE_EQ(rgb(0, 0, 0).luminance(), 0.0);
    EXPECT_NEAR(rgb(128, 128, 128).luminance(), 0.216, 0.001);
    EXPECT_NEAR(rgb(100, 100, 100).luminance(), 0.127, 0.001);
    EXPECT_NEAR(rgb(0, 255, 0).luminance(), 0.7152, 1e-9);
    EXPECT_TRUE(rgb(255, 255, 255).wantsDarkLabel());
    EXPECT_TRUE(rgb(128, 128, 128).wantsDarkLabel());
    EXPECT_FALSE(rgb(100, 100, 100).wantsDarkLabel());
    EXPECT_FALSE(rgb(0, 0, 255).wantsDarkLabel());
}
