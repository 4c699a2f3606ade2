// The weather service's replies, the forecast and the place search read from the same input:
// whatever the bytes, no exception. A reading holds only finite numbers and comes back unchanged
// from its own text; every place has a position on the globe's number line and writes out.

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/weather/WeatherService.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>

using namespace corvane;

namespace {

void checkReading(std::string_view reply) {
    const Date now{760000000};
    auto reading = WeatherService::reading(reply, now);
    if (!reading) return;
    FUZZ_CHECK(std::isfinite(reading->temperature));
    FUZZ_CHECK(!reading->apparent || std::isfinite(*reading->apparent));
    FUZZ_CHECK(reading->readAt == now);
    for (const auto& day : reading->days) {
        FUZZ_CHECK(std::isfinite(day.date.sinceReferenceDate));
        FUZZ_CHECK(std::isfinite(day.high) && std::isfinite(day.low));
    }
    FUZZ_CHECK(weatherReadingFromText(weatherReadingText(*reading)) == *reading);
}

void checkPlaces(std::string_view reply) {
    auto places = WeatherService::places(reply);
    for (const auto& place : places) {
        FUZZ_CHECK(std::isfinite(place.latitude) && std::isfinite(place.longitude));
        FUZZ_CHECK(!place.region || !place.region->empty());
        FUZZ_CHECK(place.id().starts_with(place.name + "|"));
        FUZZ_CHECK(place.displayName().starts_with(place.name));
    }
    auto written = parseJson(weatherPlacesText(places));
    FUZZ_CHECK(written.is_array() && written.size() == places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        FUZZ_CHECK(written[i]["name"] == places[i].name);
        FUZZ_CHECK(written[i]["latitude"].get<double>() == places[i].latitude);
        FUZZ_CHECK(written[i]["longitude"].get<double>() == places[i].longitude);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = fuzz::text(data, size);
    checkReading(text);
    checkPlaces(text);
    return 0;
}
