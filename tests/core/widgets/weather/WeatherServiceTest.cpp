#include "CorvaneCore/widgets/weather/WeatherService.hpp"
#include "CorvaneCore/support/TimeZoneCalendar.hpp"
#include "CorvaneCore/widgets/weather/WeatherWords.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

Date utc(int year, int month, int day, double hour = 0) {
    return Date::fromUnixTime(static_cast<double>(CalendarDay{year, month, day}.dayNumber()) * 86400 +
                              hour * 3600);
}

std::string sample(const std::string& name) {
    return readText(std::string(CORVANE_TEST_DATA) + "/weather/" + name);
}

const Date now = utc(2024, 3, 29, 11);

std::string forecastWithDaily(const std::string& zone, const std::string& times) {
    return R"({"timezone": )" + zone + R"(, "utc_offset_seconds": 19800, "current": {"temperature_2m": 1},
               "daily": {"time": )" +
           times + R"(, "weather_code": [0, 0],
                         "temperature_2m_max": [1, 1], "temperature_2m_min": [0, 0]}})";
}

} // namespace

TEST(WeatherService, RequestsCarryTheirQueryItemsInOrder) {
    EXPECT_EQ(WeatherService::forecastURL(59.91273, 10.74609, WeatherUnit::celsius),
              "https://api.open-meteo.com/v1/forecast?latitude=59.9127&longitude=10.7461"
              "&current=temperature_2m,apparent_temperature,weather_code,is_day"
              "&daily=weather_code,temperature_2m_max,temperature_2m_min"
              "&forecast_days=5&timezone=auto&temperature_unit=celsius");
    EXPECT_NE(WeatherService::forecastURL(-33.9, -70.6, WeatherUnit::fahrenheit)
                  ->find("latitude=-33.9000&longitude=-70.6000"),
              std::string::npos);
    EXPECT_TRUE(
        WeatherService::forecastURL(0, 0, WeatherUnit::fahrenheit)->ends_with("temperature_unit=fahrenheit"));
    EXPECT_FALSE(WeatherService::forecastURL(91, 0, WeatherUnit::celsius));
    EXPECT_FALSE(WeatherService::forecastURL(0, std::nan(""), WeatherUnit::celsius));

    EXPECT_EQ(WeatherService::searchURL(" Zaragoza \n", "nb"),
              "https://geocoding-api.open-meteo.com/v1/search?name=Zaragoza&count=8&language=nb&format=json");
    EXPECT_FALSE(WeatherService::searchURL("a", "en"));
    EXPECT_FALSE(WeatherService::searchURL("  a  ", "en"));
    EXPECT_FALSE(WeatherService::searchURL("", "en"));
    // Two characters, one of them outside ASCII, are enough; the query is escaped.
    EXPECT_EQ(
        WeatherService::searchURL("Å&b", "en"),
        "https://geocoding-api.open-meteo.com/v1/search?name=%C3%85%26b&count=8&language=en&format=json");
    EXPECT_NE(WeatherService::searchURL("São Paulo+", "pt")->find("name=S%C3%A3o%20Paulo%2B&"),
              std::string::npos);
}

TEST(WeatherCondition, WmoCodesFoldIntoConditions) {
    const std::vector<std::pair<std::vector<int>, WeatherCondition>> table = {
        {{0}, WeatherCondition::clear},
        {{1, 2}, WeatherCondition::partlyCloudy},
        {{3, 4, 100, -1, 44, 50}, WeatherCondition::cloudy},
        {{45, 48}, WeatherCondition::fog},
        {{51, 53, 55, 56, 57}, WeatherCondition::drizzle},
        {{61, 63, 65, 66, 67, 80, 81, 82}, WeatherCondition::rain},
        {{71, 73, 75, 77, 85, 86}, WeatherCondition::snow},
        {{95, 96, 99}, WeatherCondition::thunderstorm},
    };
    for (const auto& [codes, condition] : table)
        for (auto code : codes)
            EXPECT_EQ(weatherCondition(code), condition) << code;
    EXPECT_EQ(symbolName(WeatherCondition::drizzle, true), "cloud.drizzle.fill");
    EXPECT_EQ(symbolName(WeatherCondition::thunderstorm, false), "cloud.bolt.rain.fill");
    EXPECT_NE(symbolName(WeatherCondition::clear, true), symbolName(WeatherCondition::clear, false));
    EXPECT_NE(symbolName(WeatherCondition::partlyCloudy, true),
              symbolName(WeatherCondition::partlyCloudy, false));
}

TEST(WeatherService, ReadsAForecastWithDaysStartingAtMidnightInThePlacesZone) {
    auto reading = WeatherService::reading(sample("forecast-oslo.json"), now);
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->temperature, 4.6);
    EXPECT_EQ(reading->apparent, 0.9);
    EXPECT_EQ(reading->condition, WeatherCondition::rain);
    EXPECT_TRUE(reading->isDay);
    EXPECT_EQ(reading->readAt, now);
    EXPECT_EQ(reading->timeZone, "Europe/Oslo");
    ASSERT_EQ(reading->days.size(), 5u);
    // Oslo moves its clocks on the 31st: midnights before are at UTC+1, after at UTC+2.
    EXPECT_EQ(reading->days[0], (WeatherDay{utc(2024, 3, 28, 23), 6.1, 0.4, WeatherCondition::rain}));
    EXPECT_EQ(reading->days[2].date, utc(2024, 3, 30, 23));
    EXPECT_EQ(reading->days[3].date, utc(2024, 3, 31, 22));
    EXPECT_EQ(reading->days[3].condition, WeatherCondition::snow);
    EXPECT_EQ(reading->days[4].condition, WeatherCondition::thunderstorm);

    // Santiago skips midnight when its clocks go forward: the day starts at 01:00, UTC-3.
    auto santiago = WeatherService::reading(
        forecastWithDaily(R"("America/Santiago")", R"(["2024-09-07", "2024-09-08"])"), now);
    ASSERT_EQ(santiago->days.size(), 2u);
    EXPECT_EQ(santiago->days[0].date, utc(2024, 9, 7, 4));
    EXPECT_EQ(santiago->days[1].date, utc(2024, 9, 8, 4));
    // An unknown zone falls back on the reply's offset; without either, UTC.
    auto offset = WeatherService::reading(forecastWithDaily(R"("Mars/Olympus")", R"(["2024-09-07"])"), now);
    EXPECT_EQ(offset->days.at(0).date, utc(2024, 9, 6, 18.5));
    EXPECT_FALSE(offset->timeZone);
    auto plain = WeatherService::reading(R"({"current": {"temperature_2m": -2, "is_day": 0},
        "daily": {"time": ["2024-09-07"], "temperature_2m_max": [3], "temperature_2m_min": [-4]}})",
                                         now);
    EXPECT_EQ(plain->days.at(0), (WeatherDay{utc(2024, 9, 7), 3, -4, WeatherCondition::cloudy}));
    EXPECT_FALSE(plain->isDay);
    EXPECT_FALSE(plain->apparent);
    EXPECT_EQ(plain->condition, WeatherCondition::cloudy);
}

TEST(WeatherService, UnreadableForecastsGiveNoReading) {
    const std::vector<std::string> replies = {
        "",
        "<!DOCTYPE html><html><body>502 Bad Gateway</body></html>",
        "null",
        "[1, 2]",
        R"({"daily": {"time": []}})",
        R"({"current": {}})",
        R"({"current": []})",
        R"({"current": {"temperature_2m": null}})",
        R"({"current": {"temperature_2m": "12.5"}})",
        R"({"current": {"temperature_2m": 1e400}})",
        R"({"current": {"temperature_2m": 12.5)",
        std::string(100000, '[') + std::string(100000, ']'),
        std::string("{\"current\": {\"temperature_2m\": 1\0}}", 33),
    };
    for (const auto& reply : replies)
        EXPECT_FALSE(WeatherService::reading(reply, now)) << reply.substr(0, 60);
}

TEST(WeatherService, OddDailyValuesCostOnlyTheirOwnDay) {
    auto reading = WeatherService::reading(R"({"timezone": 7, "utc_offset_seconds": 1e300,
        "current": {"temperature_2m": 1e300, "weather_code": 1e300, "is_day": "1", "apparent_temperature": "cold"},
        "daily": {"time": ["2024-02-30", "2024-13-01", "24-01-01", 20240101, "2024-01-02", "2024-01-03", "2024-01-04", "2024-01-05"],
                  "weather_code": [0, 0, 0, 0, 2.5, -99999999999999999999],
                  "temperature_2m_max": [1, 1, 1, 1, 5, 6, null, 8],
                  "temperature_2m_min": [0, 0, 0, 0, -5, -6, 0]}})",
                                           now);
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->temperature, 1e300);
    EXPECT_EQ(reading->condition, WeatherCondition::cloudy);
    EXPECT_FALSE(reading->isDay);
    EXPECT_FALSE(reading->apparent);
    // Impossible dates, a null maximum and a day past the shortest array are dropped; odd codes are cloudy.
    ASSERT_EQ(reading->days.size(), 2u);
    EXPECT_EQ(reading->days[0], (WeatherDay{utc(2024, 1, 2), 5, -5, WeatherCondition::cloudy}));
    EXPECT_EQ(reading->days[1], (WeatherDay{utc(2024, 1, 3), 6, -6, WeatherCondition::cloudy}));
    EXPECT_EQ(WeatherService::reading(R"({"current": {"temperature_2m": 3}, "daily": []})", now)->days.size(),
              0u);
}

TEST(WeatherService, PlacesNeedANameAndAPositionAndJoinTheirRegion) {
    auto places = WeatherService::places(sample("search-oslo.json"));
    ASSERT_EQ(places.size(), 4u);
    EXPECT_EQ(places[0], (WeatherPlace{"Oslo", "Oslo, Norway", 59.91273, 10.74609}));
    EXPECT_EQ(places[0].id(), "Oslo|59.91273|10.74609");
    EXPECT_EQ(places[1].displayName(), "Oslo, Minnesota, United States");
    EXPECT_EQ(places[1].id(), "Oslo|48.19551|-97.13175");
    EXPECT_EQ(places[2], (WeatherPlace{"Oslo Islet", std::nullopt, -10.5, 105.6}));
    EXPECT_EQ(places[2].id(), "Oslo Islet|-10.5|105.6");
    EXPECT_EQ((WeatherPlace{"Pole", std::nullopt, -90, 0.1 + 0.2}).id(), "Pole|-90|0.30000000000000004");
    EXPECT_EQ((WeatherPlace{"Tiny", std::nullopt, 0.0001, 1e21}).id(), "Tiny|1e-04|1e+21");
    EXPECT_EQ(places[2].displayName(), "Oslo Islet");
    EXPECT_EQ(places[3].region, "Chile");

    for (const auto& reply : {"", "<html>", "{}", R"({"results": null})", R"({"results": {"name": "Oslo"}})",
                              R"({"results": [1, "two", [3], null]})",
                              R"({"results": [{"name": 5, "latitude": 1, "longitude": 1}]})"})
        EXPECT_TRUE(WeatherService::places(reply).empty()) << reply;
}

TEST(WeatherWords, DegreesRoundHalvesAwayFromZeroAndNeverShowMinusZero) {
    EXPECT_EQ(WeatherWords::degrees(21.5, WeatherUnit::celsius), "22°C");
    EXPECT_EQ(WeatherWords::degrees(-21.5, WeatherUnit::celsius), "-22°C");
    EXPECT_EQ(WeatherWords::degrees(-0.4, WeatherUnit::celsius), "0°C");
    EXPECT_EQ(WeatherWords::degrees(71.49, WeatherUnit::fahrenheit), "71°F");
    EXPECT_EQ(WeatherWords::shortDegrees(-0.5), "-1°");
    EXPECT_EQ(WeatherWords::shortDegrees(0.49), "0°");
    EXPECT_EQ(WeatherWords::describe(WeatherCondition::partlyCloudy), "Partly cloudy");
    EXPECT_EQ(WeatherWords::describe(WeatherCondition::clear), "Clear sky");

    FixedOffsetCalendar tokyo(9 * 3600);
    EXPECT_EQ(WeatherWords::dayName(utc(2024, 3, 29), true, tokyo), "Today");
    EXPECT_EQ(WeatherWords::dayName(utc(2024, 3, 29), false, tokyo), "Fri");
    // Tokyo's midnight on Saturday is still Friday in UTC.
    EXPECT_EQ(WeatherWords::dayName(utc(2024, 3, 29, 15), false, tokyo), "Sat");
    EXPECT_EQ(WeatherWords::dayName(utc(2024, 3, 29, 15), false, FixedOffsetCalendar(0)), "Fri");
    EXPECT_EQ(WeatherWords::dayName(utc(1969, 12, 28), false, FixedOffsetCalendar(0)), "Sun");
}

TEST(WeatherReading, JsonRoundTripsAndZoneCalendarsNameTheirDays) {
    auto reading = *WeatherService::reading(sample("forecast-oslo.json"), now);
    EXPECT_EQ(weatherReadingFromText(weatherReadingText(reading)), reading);
    EXPECT_NE(weatherReadingText(reading).find("\"condition\": \"rain\""), std::string::npos);

    auto oslo = TimeZoneCalendar::named("Europe/Oslo");
    ASSERT_TRUE(oslo);
    EXPECT_EQ(oslo->day(utc(2024, 3, 31, 22)), (CalendarDay{2024, 4, 1}));
    EXPECT_EQ(oslo->day(utc(2024, 3, 31, 21.9)), (CalendarDay{2024, 3, 31}));
    EXPECT_FALSE(TimeZoneCalendar::named("Europe/Nowhere"));
    EXPECT_FALSE(TimeZoneCalendar::named("../../etc/passwd"));
    EXPECT_FALSE(TimeZoneCalendar::named(""));
    auto india = TimeZoneCalendar::fixedOffset(19800);
    EXPECT_EQ(india.name(), "UTC+05:30");
    EXPECT_EQ(india.startOfDay({2024, 1, 1}), utc(2023, 12, 31, 18.5));
    EXPECT_EQ(india.day(Date{1e300}), (CalendarDay{1970, 1, 1}));
}
