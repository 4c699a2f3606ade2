#pragma once

#include "CorvaneCore/platform/Calendar.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The Gregorian calendar of one IANA time zone ("Europe/Oslo"), read from the system's zone
/// database, or of a fixed offset from UTC where no zone is known. Any thread.
class TimeZoneCalendar final : public Calendar {
  public:
    /// None when the system's zone database has no zone of that name.
    static std::optional<TimeZoneCalendar> named(std::string_view name);
    /// Seconds east of UTC, without daylight saving.
    static TimeZoneCalendar fixedOffset(double offsetSeconds);
    /// The zone the system is set to; UTC when it cannot be told.
    static TimeZoneCalendar current();

    /// The zone's name, or "UTC+hh:mm" for a fixed offset.
    const std::string& name() const { return name_; }

    /// Seconds east of UTC at `date`, daylight saving included: what a clock of the zone adds to
    /// UTC to show its time of day.
    double utcOffset(Date date) const;

    CalendarDay day(Date date) const override;
    /// The first moment of `day`: its midnight, or the end of the gap where a clock change skips
    /// midnight.
    Date startOfDay(CalendarDay day) const override;

  private:
    TimeZoneCalendar(const void* zone, double offset, std::string name)
        : zone_(zone), offset_(offset), name_(std::move(name)) {}

    /// A `date::time_zone` of the database, which lives as long as the program; none for a fixed
    /// offset.
    const void* zone_;
    double offset_;
    std::string name_;
};

} // namespace corvane
