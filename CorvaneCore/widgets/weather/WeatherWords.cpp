#include "CorvaneCore/widgets/weather/WeatherWords.hpp"

#include <array>
#include <cmath>
#include <cstdio>

namespace corvane::WeatherWords {

namespace {

std::string wholeNumber(double value) {
    if (!std::isfinite(value)) return "–";
    auto rounded = std::round(value);
    if (rounded == 0) rounded = 0; // -0.4 rounds to -0, which reads "-0"
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%.0f", rounded);
    return buffer;
}

} // namespace

std::string_view describe(WeatherCondition condition) {
    switch (condition) {
    case WeatherCondition::clear:
        return "Clear sky";
    case WeatherCondition::partlyCloudy:
        return "Partly cloudy";
    case WeatherCondition::cloudy:
        return "Cloudy";
    case WeatherCondition::fog:
        return "Fog";
    case WeatherCondition::drizzle:
        return "Drizzle";
    case WeatherCondition::rain:
        return "Rain";
    case WeatherCondition::snow:
        return "Snow";
    case WeatherCondition::thunderstorm:
        return "Thunderstorm";
    }
    return "Cloudy";
}

std::string degrees(double value, WeatherUnit unit) {
    return wholeNumber(value) + (unit == WeatherUnit::celsius ? "°C" : "°F");
}

std::string shortDegrees(double value) {
    return wholeNumber(value) + "°";
}

std::string dayName(Date date, bool isToday, const Calendar& calendar) {
    if (isToday) return "Today";
    static constexpr std::array<const char*, 7> names = {"Thu", "Fri", "Sat", "Sun", "Mon", "Tue", "Wed"};
    // 1970-01-01, day number 0, was a Thursday.
    auto number = calendar.day(date).dayNumber();
    return names[static_cast<std::size_t>(((number % 7) + 7) % 7)];
}

} // namespace corvane::WeatherWords
