#include "fakes/CapturingLog.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/LocalTimeCalendar.hpp"
#include "platform/posix/LogUserAlerts.hpp"
#include "platform/posix/ProcSystemLoad.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

using namespace corvane;

namespace {

/// Sets TZ for one test and puts the old value back.
class TimeZone {
  public:
    explicit TimeZone(const char* zone) {
        if (const char* old = std::getenv("TZ")) old_ = old;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone() {
        if (old_)
            setenv("TZ", old_->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

  private:
    std::optional<std::string> old_;
};

Date utc(CalendarDay day, int hour, int minute, int second) {
    return Date::fromUnixTime(static_cast<double>(day.dayNumber()) * 86400 + hour * 3600 + minute * 60 +
                              second);
}

} // namespace

TEST(LocalTimeCalendar, DaysFollowTheTimeZoneAcrossDaylightSaving) {
    {
        TimeZone zone("UTC0");
        LocalTimeCalendar calendar;
        EXPECT_EQ(calendar.day(utc({2024, 2, 29}, 23, 59, 59)), (CalendarDay{2024, 2, 29}));
        EXPECT_EQ(calendar.day(utc({2024, 3, 1}, 0, 0, 0)), (CalendarDay{2024, 3, 1}));
        EXPECT_EQ(calendar.day(Date{-0.5}), (CalendarDay{2000, 12, 31}))
            << "half a second before the reference date";
    }
    // New York by rule, so the test needs no time-zone database: EST, and EDT from the second
    // Sunday of March.
    TimeZone zone("EST5EDT,M3.2.0,M11.1.0");
    LocalTimeCalendar calendar;
    EXPECT_EQ(calendar.day(utc({2024, 3, 10}, 4, 59, 59)), (CalendarDay{2024, 3, 9}));
    EXPECT_EQ(calendar.day(utc({2024, 3, 10}, 5, 0, 0)), (CalendarDay{2024, 3, 10}));
    EXPECT_EQ(calendar.day(utc({2024, 3, 11}, 3, 59, 59)), (CalendarDay{2024, 3, 10}))
        << "midnight is an hour earlier in EDT";
    EXPECT_EQ(calendar.day(utc({2024, 3, 11}, 4, 0, 0)), (CalendarDay{2024, 3, 11}));
    EXPECT_TRUE(calendar.isSameDay(utc({2024, 3, 10}, 5, 0, 0), utc({2024, 3, 11}, 3, 59, 59)))
        << "the day that lost an hour is 23 hours long";
}

TEST(LogUserAlerts, EachAlertIsOneLogLine) {
    CapturingLog log;
    LogUserAlerts alerts(log);
    alerts.playSound("Glass");
    alerts.requestAttention(UserAlerts::Attention::critical);
    alerts.scheduleNotification({"dev.tessik.corvane.pomodoro.X", "Break over", "", 299.6});
    alerts.withdrawNotification("dev.tessik.corvane.pomodoro.X");
    ASSERT_EQ(log.lines.size(), 4u);
    EXPECT_EQ(log.lines[0].category, "alerts");
    EXPECT_EQ(log.lines[0].message, "sound: Glass");
    EXPECT_EQ(log.lines[1].message, "attention requested: critical");
    EXPECT_EQ(log.lines[2].message,
              "notification scheduled: dev.tessik.corvane.pomodoro.X \"Break over\" in 300s");
    EXPECT_EQ(log.lines[3].message, "notification withdrawn: dev.tessik.corvane.pomodoro.X");
}

TEST(ProcSystemLoad, ProcessorShareBetweenReadingsAndMemoryInUse) {
    TemporaryDirectory proc;
    ProcSystemLoad load(proc.path());
    EXPECT_EQ(load.cpu(), std::nullopt) << "no /proc/stat";
    EXPECT_EQ(load.memory(), std::nullopt);

    writeText(proc / "stat", "cpu  100 0 100 700 100 0 0 0 0 0\ncpu0 1 2 3 4\n");
    EXPECT_EQ(load.cpu(), std::nullopt) << "a first reading has nothing to compare with";
    writeText(proc / "stat", "cpu  250 0 150 780 120 0 0 0 0 0\n");
    EXPECT_NEAR(*load.cpu(), 200.0 / 300.0, 1e-12) << "idle and waiting for the disk are both idle";
    EXPECT_EQ(load.cpu(), std::nullopt) << "no time passed";

    writeText(proc / "meminfo",
              "MemTotal:       1000 kB\nMemFree:         100 kB\nMemAvailable:    250 kB\n");
    EXPECT_DOUBLE_EQ(*load.memory(), 0.75);
    EXPECT_FALSE(load.isHot());
}
