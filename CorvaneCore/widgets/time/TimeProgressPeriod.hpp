#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <string_view>

namespace corvane {

namespace TimeProgress {

/// The day, week (Monday to Sunday), month or year that holds a moment, in the user's calendar.
struct Period {
    Date start;
    Date end;

    /// How much of the period lies behind `now`, 0…1.
    double fraction(Date now) const;
    bool operator==(const Period&) const = default;
};

Period period(Scope scope, Date now, const Calendar& calendar);

/// The tile's text: "37%", whole percent rounded down, so 100% only at the very end.
std::string percentText(double fraction);

/// When the whole percent next turns (the period's end at the latest, where a new one begins).
Date nextChange(const Period& period, Date now);

/// "Day", "Week", "Month", "Year".
std::string_view title(Scope scope);

} // namespace TimeProgress

} // namespace corvane
