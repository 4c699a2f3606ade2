#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/weather/WeatherReading.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The Open-Meteo forecast and geocoding services: the requests the widget makes and how their
/// replies are read. Replies are outside data: anything unexpected gives no reading or no
/// places, never an error.
namespace WeatherService {

inline constexpr std::string_view forecastHost = "https://api.open-meteo.com";
inline constexpr std::string_view geocodingHost = "https://geocoding-api.open-meteo.com";
/// Places asked of a search.
inline constexpr int searchCount = 8;
inline constexpr int forecastDays = 5;

/// None for a place that is not on the globe.
std::optional<std::string> forecastURL(double latitude, double longitude, WeatherUnit unit);
/// None when the trimmed city text is shorter than two characters: no request is worth making.
std::optional<std::string> searchURL(std::string_view city, std::string_view language);

/// The weather in a forecast reply's bytes, read at `now`; none without a current temperature.
/// Days are the reply's own calendar days, each starting at midnight in the reply's time zone.
std::optional<WeatherReading> reading(std::string_view data, Date now);
/// The places of a search reply's bytes that have a name and a position, in the reply's order.
std::vector<WeatherPlace> places(std::string_view data);

} // namespace WeatherService

} // namespace corvane
