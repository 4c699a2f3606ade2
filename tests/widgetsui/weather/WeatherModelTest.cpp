#include "CorvaneWidgetsUI/weather/WeatherModel.hpp"
#include "CorvaneCore/widgets/weather/WeatherService.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/ManualSerialQueue.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

const std::string oslo = *WeatherService::forecastURL(59.91, 10.75, WeatherUnit::celsius);
const std::string osloFahrenheit = *WeatherService::forecastURL(59.91, 10.75, WeatherUnit::fahrenheit);

std::string forecast(double temperature) {
    return R"({"timezone": "Europe/Oslo", "current": {"temperature_2m": )" + std::to_string(temperature) +
           R"(, "weather_code": 0, "is_day": 1}})";
}

WeatherSettings placed(WeatherUnit unit = WeatherUnit::celsius) {
    WeatherSettings settings;
    settings.cityName = "Oslo";
    settings.latitude = 59.91;
    settings.longitude = 10.75;
    settings.unit = unit;
    return settings;
}

struct WeatherHarness {
    ManualClock clock;
    ManualScheduler scheduler{clock};
    ManualSerialQueue work;
    CannedHttpClient http;
    WeatherFetch fetch{http, clock};
    Uuid id = Uuid::generate();

    DockWidget widget(WeatherSettings settings) { return DockWidget{id, "Weather", std::nullopt, settings}; }
    ConnectedWidgetServices services() { return {scheduler, scheduler, work}; }
    /// The fetch under way comes back and is published.
    void finishFetch() {
        work.runAll();
        scheduler.runPending();
    }
};

} // namespace

TEST(WeatherFetch, OnlyAWholeReplyWithStatus200GivesAReadingAndShortCitiesAskNothing) {
    WeatherHarness h;
    h.http.reply(oslo, 200, forecast(4.6));
    auto reading = h.fetch.reading(59.91, 10.75, WeatherUnit::celsius);
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->temperature, 4.6);
    EXPECT_EQ(reading->readAt, h.clock.now());
    auto request = h.http.requests().at(0);
    EXPECT_EQ(request.url, oslo);
    EXPECT_EQ(request.connectTimeout, 12);
    EXPECT_EQ(request.totalTimeout, 12);

    for (auto [status, body] : {std::pair<long, std::string>{500, forecast(1)},
                                {200, "<html>maintenance</html>"},
                                {200, ""},
                                {304, forecast(1)}}) {
        h.http.reply(oslo, status, body);
        EXPECT_FALSE(h.fetch.reading(59.91, 10.75, WeatherUnit::celsius)) << status << body;
    }
    EXPECT_FALSE(h.fetch.reading(59.91, 10.75, WeatherUnit::fahrenheit)); // no route to the host
    EXPECT_FALSE(h.fetch.reading(123, 10.75, WeatherUnit::celsius));

    auto before = h.http.requests().size();
    EXPECT_TRUE(h.fetch.search(" a ", "en").empty());
    EXPECT_EQ(h.http.requests().size(), before);
    h.http.reply(
        *WeatherService::searchURL("Oslo", "en"), 200,
        R"({"results": [{"name": "Oslo", "latitude": 59.9, "longitude": 10.7, "country": "Norway"}]})");
    auto places = h.fetch.search(" Oslo ", "en");
    ASSERT_EQ(places.size(), 1u);
    EXPECT_EQ(places[0].region, "Norway");
    EXPECT_TRUE(h.fetch.search("Bergen", "en").empty());
}

TEST(WeatherModel, RefreshesOnItsTimerOneFetchAtATimeAndKeepsTheLastReadingOnFailure) {
    WeatherHarness h;
    h.http.reply(oslo, 200, forecast(4.6));
    WeatherModel model(h.widget(placed()), h.fetch, h.services());
    int changes = 0;
    model.onChange = [&] { ++changes; };
    model.start();
    h.scheduler.advance(1199);
    EXPECT_EQ(h.work.pendingCount(), 0u);
    h.scheduler.advance(1);
    EXPECT_TRUE(model.isLoading());
    model.refresh(); // a fetch is under way already
    EXPECT_EQ(h.work.pendingCount(), 1u);
    h.finishFetch();
    EXPECT_FALSE(model.isLoading());
    ASSERT_TRUE(model.reading());
    EXPECT_EQ(model.reading()->temperature, 4.6);
    EXPECT_FALSE(model.failed());
    EXPECT_EQ(changes, 2);

    h.http.reply(oslo, 502, "<html>Bad Gateway</html>");
    h.scheduler.advance(1200);
    h.finishFetch();
    EXPECT_TRUE(model.failed());
    EXPECT_EQ(model.reading()->temperature, 4.6);

    h.http.reply(oslo, 200, forecast(-3));
    model.setSavesEnergy(true);
    h.scheduler.advance(3599);
    EXPECT_EQ(h.work.pendingCount(), 0u);
    h.scheduler.advance(1);
    h.finishFetch();
    EXPECT_FALSE(model.failed());
    EXPECT_EQ(model.reading()->temperature, -3);

    model.stop();
    h.scheduler.advance(10 * 3600);
    EXPECT_EQ(h.work.pendingCount(), 0u);
}

TEST(WeatherModel, NoPlaceNoFetchAndANewUnitReplacesAFetchUnderWay) {
    WeatherHarness h;
    WeatherSettings unplaced;
    unplaced.latitude = 59.91; // a latitude alone is not a place
    WeatherModel model(h.widget(unplaced), h.fetch, h.services());
    model.refresh();
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(h.work.pendingCount(), 0u);

    h.http.reply(oslo, 200, forecast(10));
    h.http.reply(osloFahrenheit, 200, forecast(50));
    model.setWidget(h.widget(placed())); // a place is set: fetch at once
    EXPECT_TRUE(model.isLoading());
    model.setWidget(h.widget(placed(WeatherUnit::fahrenheit)));
    h.finishFetch(); // the Celsius fetch comes back, is dropped, and the Fahrenheit one starts
    EXPECT_FALSE(model.reading());
    EXPECT_TRUE(model.isLoading());
    h.finishFetch();
    ASSERT_TRUE(model.reading());
    EXPECT_EQ(model.reading()->temperature, 50);

    auto renamed = placed(WeatherUnit::fahrenheit);
    renamed.cityName = "Christiania";
    model.setWidget(h.widget(renamed));
    EXPECT_FALSE(model.isLoading());
    EXPECT_TRUE(model.reading());
}

TEST(WeatherModel, AFetchThatComesBackAfterTheModelIsGoneIsDropped) {
    WeatherHarness h;
    h.http.reply(oslo, 200, forecast(1));
    {
        WeatherModel model(h.widget(placed()), h.fetch, h.services());
        model.start();
        model.refresh();
    }
    h.finishFetch();
    h.scheduler.advance(1200);
    EXPECT_EQ(h.work.pendingCount(), 0u);
}
