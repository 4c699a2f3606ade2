#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/water/WaterLog.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

const FixedOffsetCalendar calendar(2 * 3600);
const CalendarDay march3{2026, 3, 3};

Date on(CalendarDay day, int hour, int minute = 0) { return calendar.at(day, hour, minute); }

} // namespace

TEST(CalendarDay, DayNumbersRoundTripAcrossLeapDaysAndCenturies) {
    for (CalendarDay day : {CalendarDay{1970, 1, 1}, CalendarDay{2000, 2, 29}, CalendarDay{1900, 3, 1},
                            CalendarDay{2024, 12, 31}, CalendarDay{1969, 12, 31}})
        EXPECT_EQ(CalendarDay::fromDayNumber(day.dayNumber()), day) << day.key();
    EXPECT_EQ(CalendarDay({1970, 1, 1}).dayNumber(), 0);
    EXPECT_EQ(CalendarDay({2024, 2, 28}).adding(1), (CalendarDay{2024, 2, 29}));
    EXPECT_EQ(CalendarDay({2023, 2, 28}).adding(1), (CalendarDay{2023, 3, 1}));
    EXPECT_EQ(CalendarDay({2026, 1, 1}).adding(-1).key(), "2025-12-31");
}

TEST(WaterLog, KeysFollowTheCalendarsDayNotUtc) {
    // 23:30 UTC on the 2nd is already the 3rd two hours east of Greenwich.
    auto lateUtc = Date::fromUnixTime(static_cast<double>(CalendarDay{2026, 3, 2}.dayNumber()) * 86400 + 23.5 * 3600);
    EXPECT_EQ(WaterLog::key(lateUtc, calendar), "2026-03-03");
    EXPECT_EQ(WaterLog::key(lateUtc, FixedOffsetCalendar(0)), "2026-03-02");
    EXPECT_EQ(CalendarDay({987, 4, 5}).key(), "0987-04-05");
}

TEST(WaterLog, AddAppendsNewDaysNeverGoesNegativeAndOnlyPoursMoveLastPour) {
    WaterLog log;
    log.add(250, on(march3, 9), calendar);
    log.add(250, on(march3, 10), calendar);
    EXPECT_EQ(log.total(on(march3, 23, 59), calendar), 500);
    EXPECT_EQ(log.lastPour, on(march3, 10));

    log.add(-800, on(march3, 11), calendar);
    EXPECT_EQ(log.total(on(march3, 12), calendar), 0);
    EXPECT_EQ(log.lastPour, on(march3, 10));

    // A late entry for an earlier day still goes to the end: the list records arrival order.
    log.add(100, on(march3.adding(-5), 12), calendar);
    ASSERT_EQ(log.days.size(), 2u);
    EXPECT_EQ(log.days.back(), (WaterDay{"2026-02-26", 100}));
    EXPECT_EQ(log.total(on(march3.adding(1), 8), calendar), 0);
}

TEST(WaterLog, SixtyOneDaysOfPoursKeepTheNewestSixty) {
    WaterLog log;
    for (int i = 0; i < 61; ++i) log.add(200, on(march3.adding(i), 12), calendar);
    ASSERT_EQ(log.days.size(), WaterLog::historyLength);
    EXPECT_EQ(log.days.front().day, march3.adding(1).key());
    EXPECT_EQ(log.days.back().day, march3.adding(60).key());

    // A late entry older than every kept day goes at once instead of pushing out a newer day.
    log.add(200, on(march3.adding(-10), 12), calendar);
    ASSERT_EQ(log.days.size(), WaterLog::historyLength);
    EXPECT_EQ(log.total(on(march3.adding(-10), 13), calendar), 0);
    EXPECT_EQ(log.total(on(march3.adding(1), 13), calendar), 200);
}

TEST(WaterLog, RemoveUndoesWithoutRefillingAndClearResetsOnlyThatDay) {
    WaterLog log;
    log.add(300, on(march3.adding(-1), 20), calendar);
    log.add(250, on(march3, 8), calendar);
    log.add(250, on(march3, 9), calendar);

    log.remove(250, on(march3, 9, 1), calendar);
    EXPECT_EQ(log.total(on(march3, 10), calendar), 250);
    EXPECT_EQ(log.lastPour, on(march3, 9));
    log.remove(1000, on(march3, 9, 2), calendar);
    EXPECT_EQ(log.total(on(march3, 10), calendar), 0);
    log.remove(100, on(march3.adding(-2), 9), calendar);
    EXPECT_EQ(log.days.size(), 2u);

    log.add(250, on(march3, 11), calendar);
    log.clear(on(march3, 12), calendar);
    EXPECT_EQ(log.days, (std::vector<WaterDay>{{"2026-03-02", 300}}));
    EXPECT_FALSE(log.lastPour);

    // Clearing a day the last pour was not on leaves the pour in place.
    log.add(250, on(march3, 13), calendar);
    log.clear(on(march3.adding(-1), 12), calendar);
    EXPECT_EQ(log.lastPour, on(march3, 13));
}

TEST(WaterLog, WeekCoversTheSevenDaysEndingTodayAcrossAMonthEnd) {
    WaterLog log;
    log.add(400, on({2026, 2, 27}, 9), calendar);
    log.add(900, on({2026, 3, 2}, 9), calendar);
    log.add(100, on({2026, 2, 20}, 9), calendar);
    auto week = log.week(on(march3, 7), calendar);
    EXPECT_EQ(week, (std::vector<WaterDay>{{"2026-02-25", 0},
                                           {"2026-02-26", 0},
                                           {"2026-02-27", 400},
                                           {"2026-02-28", 0},
                                           {"2026-03-01", 0},
                                           {"2026-03-02", 900},
                                           {"2026-03-03", 0}}));
}

TEST(WaterLog, TankLevelFillsOnEachPourAndDrainsOverTheRefillTime) {
    struct Case {
        const char* name;
        int pourHour, pourMinute, pour, nowHour, nowMinute, goal, refillMinutes;
        double level;
    };
    const Case cases[] = {
        {"just poured", 10, 0, 250, 10, 0, 2000, 45, 1.0},
        {"a third of the way down", 10, 0, 250, 10, 15, 2000, 45, 2.0 / 3.0},
        {"drained", 10, 0, 250, 11, 0, 2000, 45, 0.0},
        {"zero refill drains in a minute", 10, 0, 250, 10, 1, 2000, 0, 0.0},
        {"negative refill acts as one minute", 10, 0, 250, 10, 0, 2000, -5, 1.0},
        {"goal reached stays full all day", 8, 0, 2000, 23, 59, 2000, 45, 1.0},
        {"no goal never pins the level", 8, 0, 2000, 9, 0, 0, 45, 0.0},
        {"nothing poured", 10, 0, 0, 10, 0, 2000, 45, 0.0},
    };
    for (const auto& c : cases) {
        WaterLog log;
        log.add(c.pour, on(march3, c.pourHour, c.pourMinute), calendar);
        EXPECT_NEAR(log.tankLevel(on(march3, c.nowHour, c.nowMinute), c.goal, c.refillMinutes, calendar), c.level,
                    1e-9)
            << c.name;
    }
    WaterLog log;
    log.add(250, on(march3, 10), calendar);
    EXPECT_NEAR(log.tankLevel(on(march3, 10) + 30, 2000, 0, calendar), 0.5, 1e-9);
}

TEST(WaterLog, APourBeforeMidnightLeavesAnEmptyTankAfterIt) {
    WaterLog log;
    log.add(250, on(march3, 23, 50), calendar);
    EXPECT_GT(log.tankLevel(on(march3, 23, 55), 2000, 45, calendar), 0.8);
    EXPECT_EQ(log.tankLevel(on(march3.adding(1), 0, 5), 2000, 45, calendar), 0);
    EXPECT_FALSE(log.nextGlass(on(march3.adding(1), 0, 5), 2000, 45, calendar));
}

TEST(WaterLog, NextGlassIsDueOneRefillAfterTheLastPourUntilTheGoalIsMet) {
    WaterLog log;
    EXPECT_FALSE(log.nextGlass(on(march3, 8), 2000, 45, calendar));
    log.add(250, on(march3, 9), calendar);
    EXPECT_EQ(log.nextGlass(on(march3, 9, 10), 2000, 45, calendar), on(march3, 9, 45));
    // Overdue: the due time stays where it was.
    EXPECT_EQ(log.nextGlass(on(march3, 14), 2000, 45, calendar), on(march3, 9, 45));
    EXPECT_EQ(log.nextGlass(on(march3, 9, 10), 2000, 0, calendar), on(march3, 9, 1));
    log.add(1750, on(march3, 10), calendar);
    EXPECT_FALSE(log.nextGlass(on(march3, 10, 1), 2000, 45, calendar));
}

TEST(WaterLog, FileRoundTripsAndToleratesMissingKeys) {
    WaterLog log;
    log.add(250, on(march3, 9), calendar);
    log.add(500, on(march3.adding(1), 9), calendar);
    auto text = waterLogText(log);
    EXPECT_EQ(waterLogFromText(text), log);
    EXPECT_NE(text.find("\"lastPour\""), std::string::npos);

    EXPECT_EQ(waterLogFromText("{}"), WaterLog{});
    auto lenient = waterLogFromText(R"({"days": [{"day": "2026-03-03"}, {"day": "2026-03-04", "millilitres": -40}]})");
    EXPECT_EQ(lenient.days, (std::vector<WaterDay>{{"2026-03-03", 0}, {"2026-03-04", 0}}));
    EXPECT_THROW(waterLogFromText(R"({"days": [{"millilitres": 3}]})"), DecodingError);
    EXPECT_THROW(waterLogFromText("[1]"), DecodingError);
}

TEST(WaterAmount, OuncesShowATenthForSmallAmountsAndWholeOuncesAbove) {
    EXPECT_EQ(WaterAmount::ouncesText(250), "8.5");
    EXPECT_EQ(WaterAmount::ouncesText(0), "0.0");
    EXPECT_EQ(WaterAmount::ouncesText(295), "10");
    EXPECT_EQ(WaterAmount::ouncesText(2000), "68");
    EXPECT_EQ(WaterAmount::millilitres(8), 237);
}
