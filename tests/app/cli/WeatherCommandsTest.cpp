#include "CorvaneApp/cli/Tool.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/weather/WeatherService.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/ScriptedProcessRunner.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace corvane;

namespace {

// Friday 29 March 2024, 11:00 UTC: noon in Oslo.
const Date now = Date::fromUnixTime(1711710000);

/// The tool in this process, answering the network from canned replies.
struct Tool {
    TemporaryDirectory data;
    CannedHttpClient http;
    ScriptedProcessRunner runner;
    RecordingNotifier notifier;
    CapturingLog log;
    ManualClock clock{now};
    FixedOffsetCalendar calendar{0};
    // Designated, so that services added for other commands keep their defaults here.
    ToolServices services{
        .environment = {{"HOME", data.path().string()}, {"LANG", "nb_NO.UTF-8"}},
        .notifier = notifier,
        .log = log,
        .clock = clock,
        .openDock = [](const std::optional<std::filesystem::path>&) { return DockAccess{}; },
        .openSecrets = {},
        .calendar = calendar,
        .http = http,
        .runner = runner,
        .openDefaults = [](const std::filesystem::path&) { return std::make_unique<InMemoryUserDefaults>(); },
    };

    struct Output {
        int status;
        std::string out, err;
    };
    Output run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"corvane", "--data-dir", data.path().string()});
        std::vector<const char*> argv;
        for (const auto& a : arguments)
            argv.push_back(a.c_str());
        std::ostringstream out, err;
        auto status = runTool(static_cast<int>(argv.size()), argv.data(), services, out, err);
        return {status, out.str(), err.str()};
    }
};

std::string sample(const std::string& name) {
    return readText(std::string(CORVANE_TEST_DATA) + "/weather/" + name);
}

} // namespace

TEST(WeatherCommands, ACityIsLookedUpThenItsWeatherIsShownInItsOwnCalendar) {
    Tool tool;
    tool.http.reply(*WeatherService::searchURL("Oslo", "nb"), 200, sample("search-oslo.json"));
    tool.http.reply(*WeatherService::forecastURL(59.91273, 10.74609, WeatherUnit::celsius), 200,
                    sample("forecast-oslo.json"));
    auto result = tool.run({"weather", "Oslo"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Oslo, Oslo, Norway\n"
                          "  5°C  Rain, feels like 1°C\n"
                          "\n"
                          "  Today  6° /  0°  Rain\n"
                          "  Sat    7° / -2°  Cloudy\n"
                          "  Sun    9° /  0°  Clear sky\n"
                          "  Mon    3° / -3°  Snow\n"
                          "  Tue    6° /  1°  Thunderstorm\n");

    auto json = tool.run({"weather", "Oslo", "--json"});
    ASSERT_EQ(json.status, 0) << json.err;
    EXPECT_NE(json.out.find("\"place\": {\n    \"latitude\": 59.91273"), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"temperature\": 4.6"), std::string::npos);
    EXPECT_NE(json.out.find("\"timeZone\": \"Europe/Oslo\""), std::string::npos);

    // The places to choose from, as the window's place search lists them; no forecast is read.
    auto requests = tool.http.requests().size();
    auto places = tool.run({"weather", "Oslo", "--places"});
    ASSERT_EQ(places.status, 0) << places.err;
    EXPECT_EQ(places.out, "Oslo, Oslo, Norway  59.9127, 10.7461\n"
                          "Oslo, Minnesota, United States  48.1955, -97.1317\n"
                          "Oslo Islet  -10.5000, 105.6000\n"
                          "Empty Region, Chile  1.0000, 2.0000\n");
    auto placesJson = tool.run({"weather", "Oslo", "--places", "--json"});
    EXPECT_EQ(Json::parse(placesJson.out)["places"][1]["longitude"], -97.13175) << placesJson.out;
    EXPECT_EQ(tool.http.requests().size(), requests + 2);
    EXPECT_EQ(tool.run({"weather", "--lat", "1", "--lon", "2", "--places"}).err,
              "corvane: --places looks up a city, not a position\n");
}

TEST(WeatherCommands, APositionAndAUnitNeedNoSearch) {
    Tool tool;
    tool.http.reply(*WeatherService::forecastURL(-33.45, -70.66, WeatherUnit::fahrenheit), 200,
                    R"({"current": {"temperature_2m": 71.5, "weather_code": 2, "is_day": 0}})");
    auto result = tool.run({"weather", "--lat", "-33.45", "--lon", "-70.66", "--unit", "fahrenheit"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "-33.4500, -70.6600\n  72°F  Partly cloudy\n");
    EXPECT_EQ(tool.http.requests().size(), 1u);
}

TEST(WeatherCommands, BadArgumentsAndUnreachableServicesFailInOneLine) {
    Tool tool;
    const std::vector<std::pair<std::vector<std::string>, std::string>> usage = {
        {{"weather"}, "corvane: give a city, or --lat and --lon\n"},
        {{"weather", "Oslo", "--lat", "1", "--lon", "2"},
         "corvane: give a city or --lat and --lon, not both\n"},
        {{"weather", "--lat", "1"}, "corvane: --lat and --lon go together\n"},
        {{"weather", "--lat", "91", "--lon", "0"},
         "corvane: --lat must be within -90 and 90, --lon within -180 and 180\n"},
        {{"weather", " a "}, "corvane: a city name needs at least two letters\n"},
    };
    for (const auto& [arguments, message] : usage) {
        auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 2) << arguments.back();
        EXPECT_EQ(result.err, message);
    }
    EXPECT_EQ(tool.run({"weather", "Oslo", "--unit", "kelvin"}).status, 2);
    EXPECT_TRUE(tool.http.requests().empty());

    // Offline is not the same as nowhere.
    auto offline = tool.run({"weather", "Atlantis"});
    EXPECT_EQ(offline.status, 1);
    EXPECT_EQ(offline.err, "corvane: could not search for \"Atlantis\": Could not resolve host\n");
    tool.http.reply(*WeatherService::searchURL("Atlantis", "nb"), 200, "{\"generationtime_ms\": 0.5}");
    auto nowhere = tool.run({"weather", "Atlantis"});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.err, "corvane: could not find a place called \"Atlantis\"\n");
    EXPECT_EQ(nowhere.out, "");

    tool.http.reply(*WeatherService::forecastURL(1, 2, WeatherUnit::celsius), 503,
                    "<html>Service Unavailable</html>");
    auto down = tool.run({"weather", "--lat", "1", "--lon", "2", "--json"});
    EXPECT_EQ(down.status, 1);
    EXPECT_EQ(down.err, "corvane: could not read the weather for 1.0000, 2.0000\n");
    EXPECT_EQ(down.out, "");
}
