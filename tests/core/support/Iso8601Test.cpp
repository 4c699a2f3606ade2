#include "CorvaneCore/support/Iso8601.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(Iso8601, WritesUtcWithMillisecondsAndReadsCommonForms) {
    auto date = Date::fromUnixTime(1700000000.25);
    EXPECT_EQ(iso8601(date), "2023-11-14T22:13:20.250Z");
    EXPECT_EQ(iso8601(date, false), "2023-11-14T22:13:20Z");
    EXPECT_EQ(parseIso8601("2023-11-14T22:13:20.250Z"), date);
    EXPECT_EQ(parseIso8601("2023-11-14T22:13:20Z"), Date::fromUnixTime(1700000000));
    EXPECT_EQ(parseIso8601("2023-11-14T23:13:20+01:00"), Date::fromUnixTime(1700000000));
    EXPECT_EQ(parseIso8601(iso8601(Date{0})), Date{0}) << "the reference date itself";
    for (auto bad : {"", "2023-11-14", "2023-11-14T22:13:20", "yesterday", "2023-11-14T22:13:20Zjunk",
                     "2023-11-14T22:13:20.Z", "2023-11-14T22:13:20+0100", "2023-1-14T22:13:20Z",
                     // once made the date library negate the smallest integer
                     "2026-1-25T05:16:3326-E-"})
        EXPECT_FALSE(parseIso8601(bad)) << bad;
}
