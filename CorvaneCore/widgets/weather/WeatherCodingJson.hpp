#pragma once

// The JSON values of the weather records, for commands that print them inside a larger document.

#include "CorvaneCore/widgets/weather/WeatherReading.hpp"

#include <nlohmann/json_fwd.hpp>

namespace corvane {

nlohmann::json encodeWeatherReading(const WeatherReading& reading);
nlohmann::json encodeWeatherPlace(const WeatherPlace& place);

} // namespace corvane
