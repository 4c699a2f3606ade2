#include "CorvaneCore/platform/Calendar.hpp"

#include <cmath>
#include <cstdio>

namespace corvane {

// Howard Hinnant's civil-day algorithms, written out so that the header stays free of <chrono>
// calendar types the toolchains disagree on.
std::int64_t CalendarDay::dayNumber() const {
    const std::int64_t y = year - (month <= 2 ? 1 : 0);
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t shiftedMonth = month > 2 ? month - 3 : month + 9;
    const std::int64_t dayOfYear = (153 * shiftedMonth + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

CalendarDay CalendarDay::fromDayNumber(std::int64_t number) {
    const std::int64_t z = number + 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const std::int64_t dayOfEra = z - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int d = static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
    const int m = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    const int y = static_cast<int>(yearOfEra + era * 400 + (m <= 2 ? 1 : 0));
    return CalendarDay{y, m, d};
}

std::string CalendarDay::key() const {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", year, month, day);
    return buffer;
}

Date Calendar::startOfDay(CalendarDay target) const {
    // Every time zone lies within a day of UTC, so the boundary sits between these two whole
    // seconds; day boundaries fall on whole seconds, so bisecting seconds finds it exactly.
    const double utcMidnight = static_cast<double>(target.dayNumber()) * 86400;
    double before = utcMidnight - 30 * 3600, after = utcMidnight + 30 * 3600;
    while (day(Date::fromUnixTime(before)) >= target) before -= 86400;
    while (day(Date::fromUnixTime(after)) < target) after += 86400;
    while (after - before > 1) {
        double middle = std::floor((before + after) / 2);
        (day(Date::fromUnixTime(middle)) < target ? before : after) = middle;
    }
    return Date::fromUnixTime(after);
}

} // namespace corvane
