#include "CorvaneWidgetsUI/weather/WeatherFetch.hpp"

#include "CorvaneCore/widgets/weather/WeatherService.hpp"

namespace corvane {

std::optional<std::string> WeatherFetch::body(const std::string& url,
                                              std::optional<std::string>* failure) const {
    HttpRequest request;
    request.url = url;
    request.headers["Accept"] = "application/json";
    request.connectTimeout = timeout;
    request.totalTimeout = timeout;
    auto result = http_.get(request);
    if (!result.ok()) {
        if (failure)
            *failure = result.response
                           ? "the service answered with status " + std::to_string(result.response->status)
                           : result.failure.description;
        return std::nullopt;
    }
    return std::move(result.response->body);
}

std::optional<WeatherReading> WeatherFetch::reading(double latitude, double longitude,
                                                    WeatherUnit unit) const {
    auto url = WeatherService::forecastURL(latitude, longitude, unit);
    if (!url) return std::nullopt;
    auto data = body(*url);
    if (!data) return std::nullopt;
    return WeatherService::reading(*data, clock_.now());
}

std::vector<WeatherPlace> WeatherFetch::search(std::string_view city, std::string_view language) const {
    return lookUp(city, language).places;
}

WeatherFetch::PlaceSearch WeatherFetch::lookUp(std::string_view city, std::string_view language) const {
    PlaceSearch search;
    auto url = WeatherService::searchURL(city, language);
    if (!url) return search;
    if (auto data = body(*url, &search.failure)) search.places = WeatherService::places(*data);
    return search;
}

} // namespace corvane
