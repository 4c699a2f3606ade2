#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/HttpClient.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/weather/WeatherReading.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The weather widget's network calls. Each call blocks while the request runs: callers keep
/// them off the main thread. Every failure (no URL, no network, a status other than 200, a body
/// that does not read) gives no reading or no places.
class WeatherFetch {
  public:
    /// Seconds allowed to connect, and for the whole exchange.
    static constexpr double timeout = 12;

    WeatherFetch(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {}

    std::optional<WeatherReading> reading(double latitude, double longitude, WeatherUnit unit) const;
    /// No request at all for a city text shorter than two characters.
    std::vector<WeatherPlace> search(std::string_view city, std::string_view language) const;

    struct PlaceSearch {
        std::vector<WeatherPlace> places;
        /// Why the search could not be made (no network, a status other than 200), for callers
        /// that tell the user this apart from a search that found nothing.
        std::optional<std::string> failure;
    };
    PlaceSearch lookUp(std::string_view city, std::string_view language) const;

  private:
    std::optional<std::string> body(const std::string& url,
                                    std::optional<std::string>* failure = nullptr) const;

    HttpClient& http_;
    const Clock& clock_;
};

} // namespace corvane
