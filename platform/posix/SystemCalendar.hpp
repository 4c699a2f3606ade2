#pragma once

#include "CorvaneCore/platform/Calendar.hpp"

namespace corvane {

/// The Gregorian calendar in the process's time zone (`TZ`, else the system's).
class SystemCalendar final : public Calendar {
public:
    CalendarDay day(Date date) const override;
};

} // namespace corvane
