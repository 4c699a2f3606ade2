#include "CorvaneCore/widgets/weather/WeatherReading.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/weather/WeatherCodingJson.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace corvane {

std::string shortestNumberText(double value) {
    if (!std::isfinite(value)) return "0";
    // Floating-point to_chars does this in one call, but macOS's C++ library has it only from
    // 13.3 on; this gives the same text: the fewest significant digits that read back as the same
    // number, written plain or with an exponent, whichever is shorter (plain on a tie).
    char scientific[32];
    int digits = 1;
    for (; digits < 17; ++digits) {
        std::snprintf(scientific, sizeof scientific, "%.*e", digits - 1, value);
        if (std::strtod(scientific, nullptr) == value) break;
    }
    std::snprintf(scientific, sizeof scientific, "%.*e", digits - 1, value);
    int exponent = std::atoi(std::strchr(scientific, 'e') + 1);
    char plain[400];
    std::snprintf(plain, sizeof plain, "%.*f", std::max(0, digits - 1 - exponent), value);
    return std::strlen(plain) <= std::strlen(scientific) ? plain : scientific;
}

std::string WeatherPlace::id() const {
    return name + "|" + shortestNumberText(latitude) + "|" + shortestNumberText(longitude);
}

std::string WeatherPlace::displayName() const {
    return region ? name + ", " + *region : name;
}

Json encodeWeatherReading(const WeatherReading& reading) {
    auto days = Json::array();
    for (const auto& day : reading.days)
        days.push_back(Json::object({{"date", day.date.sinceReferenceDate},
                                     {"high", day.high},
                                     {"low", day.low},
                                     {"condition", caseName(day.condition)}}));
    Json object = Json::object({{"temperature", reading.temperature},
                                {"condition", caseName(reading.condition)},
                                {"isDay", reading.isDay},
                                {"days", std::move(days)},
                                {"readAt", reading.readAt.sinceReferenceDate}});
    if (reading.apparent) object["apparent"] = *reading.apparent;
    if (reading.timeZone) object["timeZone"] = *reading.timeZone;
    return object;
}

Json encodeWeatherPlace(const WeatherPlace& place) {
    Json object =
        Json::object({{"name", place.name}, {"latitude", place.latitude}, {"longitude", place.longitude}});
    if (place.region) object["region"] = *place.region;
    return object;
}

std::string weatherReadingText(const WeatherReading& reading) {
    return prettyJson(encodeWeatherReading(reading));
}

WeatherReading weatherReadingFromText(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    auto condition = [](const JsonReader& object) {
        auto found = object.optional("condition");
        return found ? found->rawValue<WeatherCondition>(
                           [](std::string_view name) { return fromCaseName<WeatherCondition>(name); },
                           "WeatherCondition")
                     : WeatherCondition::cloudy;
    };
    WeatherReading reading;
    reading.temperature = reader["temperature"].number();
    if (auto apparent = reader.optional("apparent")) reading.apparent = apparent->number();
    reading.condition = condition(reader);
    if (auto isDay = reader.optional("isDay")) reading.isDay = isDay->boolean();
    if (auto days = reader.optional("days")) {
        for (const auto& entry : days->array()) {
            entry.object();
            reading.days.push_back(WeatherDay{Date{entry["date"].number()}, entry["high"].number(),
                                              entry["low"].number(), condition(entry)});
        }
    }
    if (auto readAt = reader.optional("readAt")) reading.readAt = Date{readAt->number()};
    if (auto zone = reader.optional("timeZone")) reading.timeZone = zone->string();
    return reading;
}

std::string weatherPlacesText(const std::vector<WeatherPlace>& places) {
    auto array = Json::array();
    for (const auto& place : places)
        array.push_back(encodeWeatherPlace(place));
    return prettyJson(array);
}

} // namespace corvane
