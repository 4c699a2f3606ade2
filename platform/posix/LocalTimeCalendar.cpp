#include "platform/posix/LocalTimeCalendar.hpp"

#include <cmath>
#include <ctime>

namespace corvane {

LocalTimeCalendar::LocalTimeCalendar() {
    // localtime_r need not read TZ itself; reading it once here makes every call agree.
    tzset();
}

CalendarDay LocalTimeCalendar::day(Date date) const {
    double seconds = std::floor(date.unixTime());
    std::tm local{};
    auto time = static_cast<std::time_t>(seconds);
    if (std::isfinite(seconds) && localtime_r(&time, &local))
        return CalendarDay{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
    // Beyond what the C library can place: the UTC day is the best there is.
    double days = std::isfinite(seconds) ? std::floor(seconds / 86400) : 0;
    return CalendarDay::fromDayNumber(static_cast<std::int64_t>(days));
}

} // namespace corvane
