#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/weather/WeatherCondition.hpp"

#include <string>
#include <string_view>

namespace corvane {

/// The words and numbers the weather tile and panel show.
namespace WeatherWords {

/// "Clear sky", "Partly cloudy", …
std::string_view describe(WeatherCondition condition);
/// Rounded to a whole number, halves away from zero, then "°C" or "°F"; never "-0".
std::string degrees(double value, WeatherUnit unit);
/// Rounded as `degrees`, then "°".
std::string shortDegrees(double value);
/// "Today" for today, else the short weekday name ("Mon") of the day `date` falls on in
/// `calendar`.
std::string dayName(Date date, bool isToday, const Calendar& calendar);

} // namespace WeatherWords

} // namespace corvane
