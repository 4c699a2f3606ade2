#include "CorvaneApp/cli/WeatherCommands.hpp"

#include "CorvaneApp/cli/TextColumns.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/TimeZoneCalendar.hpp"
#include "CorvaneCore/widgets/weather/WeatherCodingJson.hpp"
#include "CorvaneCore/widgets/weather/WeatherService.hpp"
#include "CorvaneCore/widgets/weather/WeatherWords.hpp"
#include "CorvaneWidgetsUI/weather/WeatherFetch.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace corvane {

namespace {

struct Arguments {
    std::vector<std::string> city;
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::string unit = "celsius";
    bool places = false;
    bool json = false;
};

/// The user's language for place names: the locale's language code ("de" of "de_CH.UTF-8"),
/// English when the locale names none.
std::string languageCode(const ProcessEnvironment& environment) {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        auto found = environment.find(name);
        if (found == environment.end() || found->second.empty()) continue;
        auto code = found->second.substr(0, found->second.find_first_of("_.@"));
        if (code == "C" || code == "POSIX" || code.empty()) break;
        return code;
    }
    return "en";
}

std::string position(double latitude, double longitude) {
    char buffer[96];
    std::snprintf(buffer, sizeof buffer, "%.4f, %.4f", latitude, longitude);
    return buffer;
}

void printReading(std::ostream& out, const std::string& heading, const WeatherReading& reading,
                  WeatherUnit unit, Date now) {
    // Days are named in the place's own calendar: its "Today" is not always the viewer's.
    auto calendar = reading.timeZone ? TimeZoneCalendar::named(*reading.timeZone) : std::nullopt;
    if (!calendar) calendar = TimeZoneCalendar::fixedOffset(0);

    out << heading << "\n";
    out << "  " << WeatherWords::degrees(reading.temperature, unit) << "  "
        << WeatherWords::describe(reading.condition);
    if (reading.apparent) out << ", feels like " << WeatherWords::degrees(*reading.apparent, unit);
    out << "\n";
    if (reading.days.empty()) return;

    std::vector<std::array<std::string, 4>> rows;
    for (const auto& day : reading.days)
        rows.push_back({WeatherWords::dayName(day.date, calendar->isSameDay(day.date, now), *calendar),
                        WeatherWords::shortDegrees(day.high), WeatherWords::shortDegrees(day.low),
                        std::string(WeatherWords::describe(day.condition))});
    std::array<std::size_t, 3> widths{};
    for (const auto& row : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], displayWidth(row[i]));
    out << "\n";
    for (const auto& row : rows)
        out << "  " << padded(row[0], widths[0]) << "  " << rightAligned(row[1], widths[1]) << " / "
            << rightAligned(row[2], widths[2]) << "  " << row[3] << "\n";
}

} // namespace

void addWeatherCommands(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();
    auto* weather = app.add_subcommand("weather", "The weather now and for the next days, from Open-Meteo");
    weather->add_option("CITY", args->city, "A city to look up; the first place found is used");
    weather->add_option("--lat", args->latitude, "Latitude of the place, -90 to 90");
    weather->add_option("--lon", args->longitude, "Longitude of the place, -180 to 180");
    weather->add_option("--unit", args->unit, "celsius (default) or fahrenheit")
        ->check(CLI::IsMember({"celsius", "fahrenheit"}));
    weather->add_flag("--places", args->places,
                      "List the places the city's name finds, to choose one, instead of the weather");
    weather->add_flag("--json", args->json, "Print the reading as JSON");
    weather->callback([&context, args] {
        bool byPosition = args->latitude || args->longitude;
        if (byPosition && !args->city.empty()) throw UsageError("give a city or --lat and --lon, not both");
        if (!byPosition && args->city.empty()) throw UsageError("give a city, or --lat and --lon");
        if (byPosition && args->places) throw UsageError("--places looks up a city, not a position");
        if (byPosition && !(args->latitude && args->longitude))
            throw UsageError("--lat and --lon go together");
        auto unit = *fromCaseName<WeatherUnit>(args->unit);
        WeatherFetch fetch(context.services.http, context.services.clock);

        std::optional<WeatherPlace> place;
        double latitude = 0, longitude = 0;
        if (byPosition) {
            latitude = *args->latitude;
            longitude = *args->longitude;
            if (!WeatherService::forecastURL(latitude, longitude, unit))
                throw UsageError("--lat must be within -90 and 90, --lon within -180 and 180");
        } else {
            std::string city;
            for (const auto& word : args->city)
                city += (city.empty() ? "" : " ") + word;
            if (!WeatherService::searchURL(city, "en"))
                throw UsageError("a city name needs at least two letters");
            auto search = fetch.lookUp(city, languageCode(context.services.environment));
            auto quoted = "\"" + std::string(text::trimmed(city)) + "\"";
            if (search.failure)
                throw std::runtime_error("could not search for " + quoted + ": " + *search.failure);
            if (search.places.empty()) throw std::runtime_error("could not find a place called " + quoted);
            if (args->places) {
                if (args->json) {
                    Json found = Json::array();
                    for (const auto& each : search.places) found.push_back(encodeWeatherPlace(each));
                    context.out << prettyJson(Json::object({{"places", found}}));
                    return;
                }
                for (const auto& each : search.places)
                    context.out << each.displayName() << "  " << position(each.latitude, each.longitude) << "\n";
                return;
            }
            place = search.places.front();
            latitude = place->latitude;
            longitude = place->longitude;
        }

        auto heading = place ? place->displayName() : position(latitude, longitude);
        auto reading = fetch.reading(latitude, longitude, unit);
        if (!reading) throw std::runtime_error("could not read the weather for " + heading);

        if (args->json) {
            Json document = Json::object({{"reading", encodeWeatherReading(*reading)}});
            if (place) document["place"] = encodeWeatherPlace(*place);
            context.out << prettyJson(document);
            return;
        }
        printReading(context.out, heading, *reading, unit, context.services.clock.now());
    });
}

} // namespace corvane
