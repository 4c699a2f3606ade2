#include "CorvaneCore/widgets/weather/WeatherService.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/support/TimeZoneCalendar.hpp"

#include <cmath>
#include <cstdio>
#include <utility>

namespace corvane::WeatherService {

namespace {

using nlohmann::json;

std::string percentEncoded(std::string_view text) {
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : text) {
        bool unreserved = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                          c == '-' || c == '.' || c == '_' || c == '~' || c == ',';
        if (unreserved) {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 0xF];
        }
    }
    return out;
}

std::string url(std::string_view host, std::string_view path,
                const std::vector<std::pair<std::string_view, std::string>>& query) {
    std::string out = std::string(host) + std::string(path);
    for (std::size_t i = 0; i < query.size(); ++i)
        out += (i ? "&" : "?") + std::string(query[i].first) + "=" + percentEncoded(query[i].second);
    return out;
}

std::string fourDecimals(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.4f", value);
    return buffer;
}

std::optional<double> finite(const json& value) {
    if (!value.is_number()) return std::nullopt;
    auto number = value.get<double>();
    if (!std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<double> finite(const json& object, std::string_view key) {
    auto found = lenient::value(object, key);
    return found ? finite(*found) : std::nullopt;
}

// WMO codes are small integers; anything else (a fraction, a number past any code) is unknown,
// which the code table counts as cloudy.
WeatherCondition condition(const json* value) {
    if (!value || !value->is_number()) return weatherCondition(-1);
    auto number = value->get<double>();
    if (!std::isfinite(number) || number != std::floor(number) || std::fabs(number) > 1e6)
        return weatherCondition(-1);
    return weatherCondition(static_cast<std::int64_t>(number));
}

// Strictly "yyyy-MM-dd".
std::optional<CalendarDay> calendarDay(const json& value) {
    if (!value.is_string()) return std::nullopt;
    const auto& text = value.get_ref<const std::string&>();
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    for (std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9})
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
    CalendarDay day{std::stoi(text.substr(0, 4)), std::stoi(text.substr(5, 2)), std::stoi(text.substr(8, 2))};
    if (day.month < 1 || day.month > 12 || day.day < 1) return std::nullopt;
    // A day that does not exist (February 30) comes back as another one.
    if (CalendarDay::fromDayNumber(day.dayNumber()) != day) return std::nullopt;
    return day;
}

// The reply's zone by name; failing that its offset (which misses daylight-saving changes
// within the forecast); failing both, UTC.
TimeZoneCalendar replyCalendar(const json& reply) {
    if (auto name = lenient::string(reply, "timezone"))
        if (auto calendar = TimeZoneCalendar::named(*name)) return *calendar;
    if (auto offset = finite(reply, "utc_offset_seconds"); offset && std::fabs(*offset) <= 18 * 3600)
        return TimeZoneCalendar::fixedOffset(*offset);
    return TimeZoneCalendar::fixedOffset(0);
}

const json& arrayOrEmpty(const json& object, std::string_view key) {
    static const json empty = json::array();
    auto found = lenient::value(object, key);
    return found && found->is_array() ? *found : empty;
}

std::vector<WeatherDay> days(const json& reply) {
    auto daily = lenient::value(reply, "daily");
    if (!daily || !daily->is_object()) return {};
    const auto& times = arrayOrEmpty(*daily, "time");
    const auto& codes = arrayOrEmpty(*daily, "weather_code");
    const auto& highs = arrayOrEmpty(*daily, "temperature_2m_max");
    const auto& lows = arrayOrEmpty(*daily, "temperature_2m_min");
    auto calendar = replyCalendar(reply);
    std::vector<WeatherDay> result;
    for (std::size_t i = 0; i < times.size() && i < highs.size() && i < lows.size(); ++i) {
        // The service sends null for a value it does not have; such a day cannot be drawn.
        auto day = calendarDay(times[i]);
        auto high = finite(highs[i]), low = finite(lows[i]);
        if (!day || !high || !low) continue;
        result.push_back(WeatherDay{calendar.startOfDay(*day), *high, *low,
                                    condition(i < codes.size() ? &codes[i] : nullptr)});
    }
    return result;
}

} // namespace

std::optional<std::string> forecastURL(double latitude, double longitude, WeatherUnit unit) {
    if (!std::isfinite(latitude) || !std::isfinite(longitude) || std::fabs(latitude) > 90 ||
        std::fabs(longitude) > 180)
        return std::nullopt;
    return url(forecastHost, "/v1/forecast",
               {{"latitude", fourDecimals(latitude)},
                {"longitude", fourDecimals(longitude)},
                {"current", "temperature_2m,apparent_temperature,weather_code,is_day"},
                {"daily", "weather_code,temperature_2m_max,temperature_2m_min"},
                {"forecast_days", std::to_string(forecastDays)},
                {"timezone", "auto"},
                {"temperature_unit", std::string(caseName(unit))}});
}

std::optional<std::string> searchURL(std::string_view city, std::string_view language) {
    auto name = text::trimmed(city);
    if (text::utf8Characters(name).size() < 2) return std::nullopt;
    return url(geocodingHost, "/v1/search",
               {{"name", std::string(name)},
                {"count", std::to_string(searchCount)},
                {"language", std::string(language)},
                {"format", "json"}});
}

std::optional<WeatherReading> reading(std::string_view data, Date now) {
    auto reply = lenient::document(data);
    if (!reply || !reply->is_object()) return std::nullopt;
    auto current = lenient::value(*reply, "current");
    if (!current || !current->is_object()) return std::nullopt;
    auto temperature = finite(*current, "temperature_2m");
    if (!temperature) return std::nullopt;

    WeatherReading result;
    result.temperature = *temperature;
    result.apparent = finite(*current, "apparent_temperature");
    result.condition = condition(lenient::value(*current, "weather_code"));
    auto isDay = finite(*current, "is_day");
    result.isDay = isDay && *isDay == 1;
    result.days = days(*reply);
    result.readAt = now;
    if (auto zone = lenient::string(*reply, "timezone"); zone && TimeZoneCalendar::named(*zone))
        result.timeZone = zone;
    return result;
}

std::vector<WeatherPlace> places(std::string_view data) {
    auto reply = lenient::document(data);
    if (!reply) return {};
    std::vector<WeatherPlace> result;
    for (const auto& entry : arrayOrEmpty(*reply, "results")) {
        auto name = lenient::string(entry, "name");
        auto latitude = finite(entry, "latitude"), longitude = finite(entry, "longitude");
        if (!name || !latitude || !longitude) continue;
        WeatherPlace place{*name, std::nullopt, *latitude, *longitude};
        std::string region;
        for (const char* key : {"admin1", "country"})
            if (auto part = lenient::string(entry, key); part && !part->empty())
                region += (region.empty() ? "" : ", ") + *part;
        if (!region.empty()) place.region = region;
        result.push_back(std::move(place));
    }
    return result;
}

} // namespace corvane::WeatherService
