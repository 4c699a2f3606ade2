#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <compare>
#include <cstdint>
#include <string>

namespace corvane {

/// A day of the proleptic Gregorian calendar, as the user's calendar names it.
struct CalendarDay {
    int year = 0;
    int month = 0;
    int day = 0;

    /// Days since 1970-01-01 (negative before).
    std::int64_t dayNumber() const;
    static CalendarDay fromDayNumber(std::int64_t number);

    /// The day `days` later (earlier when negative), across month and year ends.
    CalendarDay adding(int days) const { return fromDayNumber(dayNumber() + days); }
    /// "%04d-%02d-%02d": the key daily records are filed under.
    std::string key() const;

    auto operator<=>(const CalendarDay&) const = default;
};

/// The user's calendar and time zone: which day a moment falls on. The time zone and its
/// daylight-saving rules live in the adapter, so day arithmetic never assumes 24-hour days.
class Calendar {
public:
    virtual ~Calendar() = default;
    /// Any thread.
    virtual CalendarDay day(Date date) const = 0;
    /// The first moment of `day`: usually midnight, later where a clock change skips midnight.
    /// The default searches `day` for the boundary, so adapters need not know their time zone's
    /// rules twice. Any thread.
    virtual Date startOfDay(CalendarDay day) const;

    bool isSameDay(Date a, Date b) const { return day(a) == day(b); }
};

} // namespace corvane
