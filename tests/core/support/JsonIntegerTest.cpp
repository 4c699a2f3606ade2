#include "CorvaneCore/support/JsonCoding.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using namespace corvane;

namespace {

template <typename Int> bool fits(const Json& json) {
    try {
        JsonReader(json).integer<Int>();
        return true;
    } catch (const DecodingError&) {
        return false;
    }
}

} // namespace

// The range is checked in integers: on arm64 a long double is a double, which would round the
// 64-bit bounds and let 2^63 through as a signed value.
TEST(JsonInteger, TakesEveryValueOfTheTypeAndNothingBeyond) {
    constexpr auto int64Max = std::numeric_limits<std::int64_t>::max();
    constexpr auto int64Min = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(JsonReader(Json(int64Max)).integer<std::int64_t>(), int64Max);
    EXPECT_EQ(JsonReader(Json(int64Min)).integer<std::int64_t>(), int64Min);
    EXPECT_EQ(JsonReader(Json(std::uint64_t(1) << 63)).integer<std::uint64_t>(), std::uint64_t(1) << 63);
    EXPECT_FALSE(fits<std::int64_t>(Json(std::uint64_t(1) << 63)));
    EXPECT_FALSE(fits<std::int64_t>(Json(9223372036854775808.0))) << "2^63 as a double";
    EXPECT_TRUE(fits<std::int64_t>(Json(-9223372036854775808.0))) << "-2^63 as a double";
    EXPECT_FALSE(fits<std::uint64_t>(Json(18446744073709551616.0))) << "2^64 as a double";
    EXPECT_FALSE(fits<std::uint64_t>(Json(-1)));
    EXPECT_EQ(JsonReader(Json(42.0)).integer<int>(), 42);
    EXPECT_FALSE(fits<int>(Json(2147483648LL)));
    EXPECT_FALSE(fits<std::uint8_t>(Json(256)));
    EXPECT_FALSE(fits<int>(Json(1.5)));
    EXPECT_FALSE(fits<int>(Json("1")));
}
