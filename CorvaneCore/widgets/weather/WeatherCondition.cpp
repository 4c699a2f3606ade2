#include "CorvaneCore/widgets/weather/WeatherCondition.hpp"

namespace corvane {

WeatherCondition weatherCondition(std::int64_t wmoCode) {
    switch (wmoCode) {
    case 0:
        return WeatherCondition::clear;
    case 1:
    case 2:
        return WeatherCondition::partlyCloudy;
    case 45:
    case 48:
        return WeatherCondition::fog;
    case 51:
    case 53:
    case 55:
    case 56:
    case 57:
        return WeatherCondition::drizzle;
    case 61:
    case 63:
    case 65:
    case 66:
    case 67:
    case 80:
    case 81:
    case 82:
        return WeatherCondition::rain;
    case 71:
    case 73:
    case 75:
    case 77:
    case 85:
    case 86:
        return WeatherCondition::snow;
    case 95:
    case 96:
    case 99:
        return WeatherCondition::thunderstorm;
    default:
        return WeatherCondition::cloudy;
    }
}

std::string_view symbolName(WeatherCondition condition, bool isDay) {
    switch (condition) {
    case WeatherCondition::clear:
        return isDay ? "sun.max.fill" : "moon.stars.fill";
    case WeatherCondition::partlyCloudy:
        return isDay ? "cloud.sun.fill" : "cloud.moon.fill";
    case WeatherCondition::cloudy:
        return "cloud.fill";
    case WeatherCondition::fog:
        return "cloud.fog.fill";
    case WeatherCondition::drizzle:
        return "cloud.drizzle.fill";
    case WeatherCondition::rain:
        return "cloud.rain.fill";
    case WeatherCondition::snow:
        return "cloud.snow.fill";
    case WeatherCondition::thunderstorm:
        return "cloud.bolt.rain.fill";
    }
    return "cloud.fill";
}

} // namespace corvane
