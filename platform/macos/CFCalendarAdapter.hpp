#pragma once

#include "CorvaneCore/platform/Calendar.hpp"

namespace corvane {

/// The user's current calendar and time zone, as System Settings has them.
class CFCalendarAdapter final : public Calendar {
  public:
    CalendarDay day(Date date) const override;
};

} // namespace corvane
