#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/weather/WeatherCondition.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// One day of the forecast.
struct WeatherDay {
    /// The day's first moment in the place's own time zone.
    Date date;
    double high = 0;
    double low = 0;
    WeatherCondition condition = WeatherCondition::cloudy;

    bool operator==(const WeatherDay&) const = default;
};

/// The weather at one place at the moment it was fetched, temperatures in the requested unit.
struct WeatherReading {
    double temperature = 0;
    /// The felt temperature, when the service gave one.
    std::optional<double> apparent;
    WeatherCondition condition = WeatherCondition::cloudy;
    bool isDay = true;
    std::vector<WeatherDay> days;
    Date readAt;
    /// The place's IANA time zone as the service named it, so that days can be named in the
    /// place's own calendar rather than the viewer's.
    std::optional<std::string> timeZone;

    bool operator==(const WeatherReading&) const = default;
};

/// A place found by a city search.
struct WeatherPlace {
    std::string name;
    /// The present ones of the region and the country, joined by ", ".
    std::optional<std::string> region;
    double latitude = 0;
    double longitude = 0;

    /// Name, latitude and longitude joined with "|": two towns of one name stay apart.
    std::string id() const;
    /// "Oslo, Oslo, Norway": the name and then the region, when there is one.
    std::string displayName() const;

    bool operator==(const WeatherPlace&) const = default;
};

/// The shortest text that reads back as `value` ("59.91", "10.75"); "0" for values that are not
/// finite.
std::string shortestNumberText(double value);

/// Pretty-printed JSON, keys sorted; dates as seconds since 2001-01-01.
std::string weatherReadingText(const WeatherReading& reading);
/// Throws `DecodingError`; a missing key takes its default, except "temperature".
WeatherReading weatherReadingFromText(std::string_view text);
/// A JSON array of places: "name", "region", "latitude", "longitude".
std::string weatherPlacesText(const std::vector<WeatherPlace>& places);

} // namespace corvane
