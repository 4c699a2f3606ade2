#pragma once

#include "CorvaneCore/platform/Calendar.hpp"

namespace corvane {

/// The C library's local time: the time zone of `TZ`, else the system's, with its
/// daylight-saving rules.
class LocalTimeCalendar final : public Calendar {
  public:
    LocalTimeCalendar();
    CalendarDay day(Date date) const override;
};

} // namespace corvane
