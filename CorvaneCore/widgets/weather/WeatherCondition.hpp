#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <array>
#include <cstdint>
#include <string_view>

namespace corvane {

/// The few kinds of weather the widget draws, folded from the WMO weather codes.
enum class WeatherCondition { clear, partlyCloudy, cloudy, fog, drizzle, rain, snow, thunderstorm };
template <> struct EnumCases<WeatherCondition> {
    static constexpr std::string_view typeName = "WeatherCondition";
    static constexpr std::array<std::string_view, 8> names = {
        "clear", "partlyCloudy", "cloudy", "fog", "drizzle", "rain", "snow", "thunderstorm"};
};

/// The condition of a WMO weather code; overcast (3) and every code without a case of its own
/// count as `cloudy`.
WeatherCondition weatherCondition(std::int64_t wmoCode);

/// The system symbol drawn for `condition`; clear and partly cloudy skies have night variants.
std::string_view symbolName(WeatherCondition condition, bool isDay);

} // namespace corvane
