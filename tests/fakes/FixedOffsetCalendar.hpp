#pragma once

#include "CorvaneCore/platform/Calendar.hpp"

#include <cmath>

namespace corvane {

/// A Gregorian calendar at a fixed offset from UTC, so tests can place moments on exact local
/// days and hours.
class FixedOffsetCalendar final : public Calendar {
public:
    explicit FixedOffsetCalendar(double offsetSeconds = 0) : offset_(offsetSeconds) {}

    CalendarDay day(Date date) const override {
        auto local = date.unixTime() + offset_;
        return CalendarDay::fromDayNumber(static_cast<std::int64_t>(std::floor(local / 86400)));
    }

    /// The moment that reads `hour`:`minute` on `day` in this calendar.
    Date at(CalendarDay day, int hour = 0, int minute = 0, double second = 0) const {
        auto local = static_cast<double>(day.dayNumber()) * 86400 + hour * 3600 + minute * 60 + second;
        return Date::fromUnixTime(local - offset_);
    }

private:
    double offset_;
};

} // namespace corvane
