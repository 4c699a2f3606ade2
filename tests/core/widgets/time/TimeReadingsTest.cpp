#include "CorvaneCore/support/TimeZoneCalendar.hpp"
#include "CorvaneCore/widgets/time/ClockFace.hpp"
#include "CorvaneCore/widgets/time/Countdown.hpp"
#include "CorvaneCore/widgets/time/TimeProgressPeriod.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

Date utc(int year, int month, int day, int hour = 0, int minute = 0, double second = 0) {
    return FixedOffsetCalendar().at({year, month, day}, hour, minute, second);
}

} // namespace

TEST(ClockFace, TimeOfDayInTheZoneAcrossMidnightAndDaylightSaving) {
    auto oslo = *TimeZoneCalendar::named("Europe/Oslo");
    // 22:59:30 UTC in winter is 23:59:30 in Oslo; in summer it is already the next day.
    auto winter = utc(2026, 1, 15, 22, 59, 30), summer = utc(2026, 7, 15, 22, 59, 30);
    EXPECT_EQ(ClockFace::time(winter, oslo.utcOffset(winter), true, true), "23:59:30");
    EXPECT_EQ(ClockFace::time(summer, oslo.utcOffset(summer), true, false), "00:59");
    EXPECT_EQ(ClockFace::time(summer, oslo.utcOffset(summer), false, false), "12:59 AM");
    EXPECT_EQ(ClockFace::time(utc(2026, 1, 15, 12), 0, false, false), "12:00 PM");

    // Kathmandu's quarter-hour offset still turns minutes on the minute.
    auto kathmandu = *TimeZoneCalendar::named("Asia/Kathmandu");
    auto now = utc(2026, 3, 1, 10, 0, 10);
    EXPECT_EQ(ClockFace::time(now, kathmandu.utcOffset(now), true, false), "15:45");
    EXPECT_EQ(ClockFace::nextChange(now, kathmandu.utcOffset(now), false), utc(2026, 3, 1, 10, 1));
    EXPECT_EQ(ClockFace::nextChange(now + 0.5, 0, true), now + 1);

    EXPECT_EQ(ClockFace::city("America/Argentina/Buenos_Aires"), "Buenos Aires");
    EXPECT_EQ(ClockFace::relativeDay(11, 10), "Tomorrow");
    EXPECT_EQ(ClockFace::relativeDay(9, 10), "Yesterday");
    EXPECT_EQ(ClockFace::relativeDay(10, 10), std::nullopt);
}

TEST(Countdown, TextAndTurnsAtEachUnitBoundary) {
    auto target = utc(2026, 12, 24, 18);
    EXPECT_EQ(Countdown::text(target, target - (3 * 86400 + 4 * 3600 + 59), false), "3d 4h");
    EXPECT_EQ(Countdown::text(target, target - 86400, false), "1d 0h");
    EXPECT_EQ(Countdown::text(target, target - 86399, false), "23h 59m");
    EXPECT_EQ(Countdown::text(target, target - 3600, false), "1h 0m");
    EXPECT_EQ(Countdown::text(target, target - 3599.5, false), "1h 0m") << "seconds round up on the way down";
    EXPECT_EQ(Countdown::text(target, target - 3599, false), "59:59");
    EXPECT_EQ(Countdown::text(target, target - 0.2, false), "0:01") << "never 0:00 before the moment";
    EXPECT_EQ(Countdown::text(target, target, false), "Now");
    EXPECT_EQ(Countdown::text(target, target + 3 * 3600 + 90, true), "+3h 1m");

    // Each planned change is the moment the text differs, not a fixed period.
    EXPECT_EQ(Countdown::nextChange(target, target - 86400.5, false), target - 86399);
    EXPECT_EQ(Countdown::nextChange(target, target - 7200, false), target - 7199);
    EXPECT_EQ(Countdown::nextChange(target, target - 10.25, false), target - 10);
    EXPECT_EQ(Countdown::nextChange(target, target - 1, false), target);
    EXPECT_EQ(Countdown::nextChange(target, target, false), std::nullopt) << "a finished countdown rests";
    EXPECT_EQ(Countdown::nextChange(target, target + 3599.5, true), target + 3600);
    EXPECT_EQ(Countdown::nextChange(target, target + 3600, true), target + 3660);
    for (auto now : {target - 90000.0, target - 3601.0, target - 59.7, target + 12.3})
        EXPECT_NE(Countdown::text(target, now, true),
                  Countdown::text(target, *Countdown::nextChange(target, now, true), true));
}

TEST(TimeProgress, PeriodsOfTheUsersCalendar) {
    FixedOffsetCalendar calendar(2 * 3600);
    // Thursday 2026-01-01 10:00 local.
    auto now = calendar.at({2026, 1, 1}, 10);
    auto day = TimeProgress::period(TimeProgress::Scope::day, now, calendar);
    EXPECT_EQ(day.start, calendar.at({2026, 1, 1}));
    EXPECT_NEAR(day.fraction(now), 10.0 / 24, 1e-12);
    auto week = TimeProgress::period(TimeProgress::Scope::week, now, calendar);
    EXPECT_EQ(week.start, calendar.at({2025, 12, 29})) << "weeks start on Monday, across the year's end";
    EXPECT_EQ(week.end, calendar.at({2026, 1, 5}));
    auto month = TimeProgress::period(TimeProgress::Scope::month, calendar.at({2028, 2, 29}, 12), calendar);
    EXPECT_EQ(month.end - month.start, 29 * 86400.0) << "a leap February";
    auto year =
        TimeProgress::period(TimeProgress::Scope::year, calendar.at({2026, 12, 31}, 23, 59), calendar);
    EXPECT_EQ(year.end, calendar.at({2027, 1, 1}));

    EXPECT_EQ(TimeProgress::percentText(day.fraction(calendar.at({2026, 1, 1}, 23, 59, 59))), "99%");
    EXPECT_EQ(TimeProgress::percentText(0.5), "50%");
    EXPECT_EQ(TimeProgress::percentText(1), "100%");
    // 10:00 is 41.67%: the text turns to 42% at 10:04:48.
    EXPECT_EQ(TimeProgress::nextChange(day, now), calendar.at({2026, 1, 1}, 10, 4, 48));
    EXPECT_EQ(TimeProgress::nextChange(day, calendar.at({2026, 1, 1}, 23, 59)), day.end);
}

TEST(TimeProgress, DayLengthFollowsClockChanges) {
    auto berlin = *TimeZoneCalendar::named("Europe/Berlin");
    // The last Sunday of March 2026 has 23 hours.
    auto noon = utc(2026, 3, 29, 10);
    auto day = TimeProgress::period(TimeProgress::Scope::day, noon, berlin);
    EXPECT_EQ(day.end - day.start, 23 * 3600.0);
    EXPECT_NEAR(day.fraction(noon), 11.0 / 23, 1e-12);
}
