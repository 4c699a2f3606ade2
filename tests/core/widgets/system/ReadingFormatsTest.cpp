#include "CorvaneCore/widgets/converter/UnitConversion.hpp"
#include "CorvaneCore/widgets/system/ByteRate.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(ByteRate, RatesAcrossWrapsAndRestarts) {
    EXPECT_EQ(ByteRate::between(1000, 3000, 2), 1000.0);
    EXPECT_EQ(ByteRate::between(1000, 1000, 0.5), 0.0);
    // A 32-bit counter that passed its top carries on from zero.
    EXPECT_EQ(ByteRate::between(0xFFFFFF00ull, 0x100ull, 1), 512.0);
    // A 64-bit counter that went down restarted: the interval means nothing.
    EXPECT_EQ(ByteRate::between(0x1'0000'0000ull, 10, 1), std::nullopt);
    EXPECT_EQ(ByteRate::between(0, 10, 0), std::nullopt);

    EXPECT_EQ(ByteRate::text(0), "0 B/s");
    EXPECT_EQ(ByteRate::text(999), "999 B/s");
    EXPECT_EQ(ByteRate::text(1234), "1.2 KB/s");
    EXPECT_EQ(ByteRate::text(34'000'000), "34 MB/s");
    EXPECT_EQ(ByteRate::text(999'600), "1.0 MB/s") << "rounding never shows 1000 KB";
}

TEST(UnitConversion, EveryCategoryConvertsBothWaysAndDefaultsAreKnown) {
    EXPECT_NEAR(*UnitConversion::convert(1, ConversionCategory::length, "m", "ft"), 3.28084, 1e-5);
    EXPECT_NEAR(*UnitConversion::convert(100, ConversionCategory::temperature, "°C", "°F"), 212, 1e-9);
    EXPECT_NEAR(*UnitConversion::convert(-40, ConversionCategory::temperature, "°F", "°C"), -40, 1e-9);
    EXPECT_NEAR(*UnitConversion::convert(0, ConversionCategory::temperature, "K", "°C"), -273.15, 1e-9);
    EXPECT_NEAR(*UnitConversion::convert(1, ConversionCategory::data, "GiB", "MB"), 1073.741824, 1e-9);
    EXPECT_EQ(UnitConversion::convert(1, ConversionCategory::mass, "m", "kg"), std::nullopt)
        << "a unit of another category";
    for (auto category : {ConversionCategory::length, ConversionCategory::mass,
                          ConversionCategory::temperature, ConversionCategory::volume,
                          ConversionCategory::speed, ConversionCategory::area, ConversionCategory::data}) {
        auto [from, to] = ConverterSettings::defaultUnits(category);
        auto there = UnitConversion::convert(7.5, category, from, to);
        ASSERT_TRUE(there) << caseName(category);
        EXPECT_NEAR(*UnitConversion::convert(*there, category, to, from), 7.5, 1e-9);
    }

    EXPECT_EQ(UnitConversion::number(3.28084), "3.281");
    EXPECT_EQ(UnitConversion::number(1200), "1200");
    EXPECT_EQ(UnitConversion::number(2.5), "2.5");
    EXPECT_EQ(UnitConversion::number(0), "0");
    EXPECT_EQ(UnitConversion::number(1.5e12), "1.500e+12");
}
