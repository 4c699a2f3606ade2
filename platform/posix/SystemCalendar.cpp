#include "platform/posix/SystemCalendar.hpp"

#include <cmath>
#include <ctime>

namespace corvane {

CalendarDay SystemCalendar::day(Date date) const {
    const auto seconds = static_cast<std::time_t>(std::floor(date.unixTime()));
    std::tm local{};
    if (!::localtime_r(&seconds, &local)) return CalendarDay::fromDayNumber(static_cast<std::int64_t>(seconds / 86400));
    return CalendarDay{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
}

} // namespace corvane
