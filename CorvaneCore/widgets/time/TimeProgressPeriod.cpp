#include "CorvaneCore/widgets/time/TimeProgressPeriod.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::TimeProgress {

double Period::fraction(Date now) const {
    double length = end - start;
    if (!(length > 0)) return 0;
    return std::clamp((now - start) / length, 0.0, 1.0);
}

Period period(Scope scope, Date now, const Calendar& calendar) {
    auto today = calendar.day(now);
    CalendarDay first = today, next = today.adding(1);
    switch (scope) {
    case Scope::day:
        break;
    case Scope::week: {
        // Day 0 of the count, 1970-01-01, was a Thursday: +3 makes Monday 0.
        auto number = today.dayNumber();
        auto weekday = ((number + 3) % 7 + 7) % 7;
        first = today.adding(-static_cast<int>(weekday));
        next = first.adding(7);
        break;
    }
    case Scope::month:
        first = {today.year, today.month, 1};
        next = today.month == 12 ? CalendarDay{today.year + 1, 1, 1}
                                 : CalendarDay{today.year, today.month + 1, 1};
        break;
    case Scope::year:
        first = {today.year, 1, 1};
        next = {today.year + 1, 1, 1};
        break;
    }
    return {calendar.startOfDay(first), calendar.startOfDay(next)};
}

std::string percentText(double fraction) {
    auto percent = static_cast<int>(std::floor(std::clamp(fraction, 0.0, 1.0) * 100 + 1e-9));
    return std::to_string(percent) + "%";
}

Date nextChange(const Period& period, Date now) {
    double length = period.end - period.start;
    if (!(length > 0)) return period.end;
    double percent = std::floor(period.fraction(now) * 100 + 1e-9);
    // Multiplying first keeps whole-second turns exact.
    auto next = period.start + (percent + 1) * length / 100;
    return std::min(next, period.end);
}

std::string_view title(Scope scope) {
    switch (scope) {
    case Scope::day:
        return "Day";
    case Scope::week:
        return "Week";
    case Scope::month:
        return "Month";
    case Scope::year:
        return "Year";
    }
    return "Day";
}

} // namespace corvane::TimeProgress
