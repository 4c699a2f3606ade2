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

TEST(Iso8601, TranscriptTimestampsReadTheSameOnTheQuickPathAndTheGeneralOne) {
    // To the microsecond; offsets, day ends and impossible days read as the date library reads them.
    EXPECT_EQ(parseIso8601("2025-06-10T14:23:45.123456Z"), Date::fromUnixTime(1749565425.123456));
    EXPECT_EQ(parseIso8601("2025-06-10T14:23:45.5Z"), Date::fromUnixTime(1749565425.5));
    EXPECT_EQ(parseIso8601("2025-06-10T00:30:00-02:30"), Date::fromUnixTime(1749524400));
    EXPECT_EQ(parseIso8601("2024-02-29T23:59:59Z"), Date::fromUnixTime(1709251199));
    EXPECT_EQ(parseIso8601("1969-12-31T23:59:59Z"), Date::fromUnixTime(-1));
    for (auto bad : {"2023-02-29T00:00:00Z", "2023-13-01T00:00:00Z", "2023-11-14T24:00:00Z", "2023-11-14T22:13:20+0100",
                     "2023-11-14 22:13:20Z", "2023-11-14T22:13:20-", "2023-11-14T22:13:20+:",
                     "9999-12-31T23:59:20-01:00", "9999-12-31T23:59:20-25:30"})
        EXPECT_FALSE(parseIso8601(bad)) << bad;
}
