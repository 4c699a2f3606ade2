#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <cmath>
#include <cstdint>

namespace corvane {

const std::optional<ClaudeUsageWindow>& ClaudeUsageLimits::window(ClaudeUsageShows shows) const {
    static const std::optional<ClaudeUsageWindow> none;
    switch (shows) {
    case ClaudeUsageShows::fiveHourLimit: return fiveHour;
    case ClaudeUsageShows::weeklyLimit: return sevenDay;
    case ClaudeUsageShows::tokens: return none;
    }
    return none;
}

namespace {

Json encodeWindow(const ClaudeUsageWindow& window) {
    Json object = Json::object();
    object["usedPercentage"] = window.usedPercentage;
    if (window.resetsAt) object["resetsAt"] = window.resetsAt->sinceReferenceDate;
    return object;
}

ClaudeUsageWindow decodeWindow(const JsonReader& reader) {
    ClaudeUsageWindow window;
    reader.object();
    if (auto used = reader.optional("usedPercentage")) window.usedPercentage = used->number();
    if (auto resets = reader.optional("resetsAt")) window.resetsAt = Date{resets->number()};
    return window;
}

// The payload is Claude Code's, so only a value of the wrong type spoils it; keys we do not
// read may hold anything.
std::optional<double> number(const Json& object, const char* key) {
    auto it = object.find(key);
    if (it == object.end() || it->is_null()) return std::nullopt;
    if (!it->is_number()) throw std::invalid_argument(key);
    return it->get<double>();
}

const Json* object(const Json& parent, const char* key) {
    auto it = parent.find(key);
    if (it == parent.end() || it->is_null()) return nullptr;
    if (!it->is_object()) throw std::invalid_argument(key);
    return &*it;
}

std::optional<ClaudeUsageWindow> payloadWindow(const Json* window) {
    if (!window) return std::nullopt;
    auto used = number(*window, "used_percentage");
    auto utilization = number(*window, "utilization");
    auto resets = number(*window, "resets_at");
    if (!used && !utilization) return std::nullopt;
    ClaudeUsageWindow result{used ? *used : *utilization * 100};
    // A share past any double says nothing, and would not survive being written out.
    if (!std::isfinite(result.usedPercentage)) return std::nullopt;
    if (resets) result.resetsAt = Date::fromUnixTime(*resets);
    return result;
}

} // namespace

Json encodeClaudeUsageLimits(const ClaudeUsageLimits& limits) {
    Json object = Json::object();
    if (limits.fiveHour) object["fiveHour"] = encodeWindow(*limits.fiveHour);
    if (limits.sevenDay) object["sevenDay"] = encodeWindow(*limits.sevenDay);
    if (limits.subscriptionType) object["subscriptionType"] = *limits.subscriptionType;
    object["readAt"] = limits.readAt.sinceReferenceDate;
    return object;
}

ClaudeUsageLimits decodeClaudeUsageLimits(const JsonReader& reader) {
    ClaudeUsageLimits limits;
    reader.object();
    if (auto window = reader.optional("fiveHour")) limits.fiveHour = decodeWindow(*window);
    if (auto window = reader.optional("sevenDay")) limits.sevenDay = decodeWindow(*window);
    if (auto plan = reader.optional("subscriptionType")) limits.subscriptionType = plan->string();
    limits.readAt = Date{reader["readAt"].number()};
    return limits;
}

namespace ClaudeUsageLimitsFormat {

std::optional<ClaudeUsageLimits> limits(std::string_view payload, Date readAt) {
    try {
        auto document = Json::parse(payload);
        if (!document.is_object()) return std::nullopt;
        ClaudeUsageLimits limits;
        limits.readAt = readAt;
        if (const auto* rates = object(document, "rate_limits")) {
            limits.fiveHour = payloadWindow(object(*rates, "five_hour"));
            limits.sevenDay = payloadWindow(object(*rates, "seven_day"));
        }
        if (auto it = document.find("subscription_type"); it != document.end() && !it->is_null()) {
            if (!it->is_string()) return std::nullopt;
            limits.subscriptionType = it->get<std::string>();
        }
        if (limits.isEmpty()) return std::nullopt;
        return limits;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<std::string> untilReset(std::optional<Date> resetsAt, Date now) {
    if (!resetsAt || *resetsAt <= now) return std::nullopt;
    const double ahead = std::trunc(*resetsAt - now);
    // Beyond any real reset; keeps the integer conversion defined for absurd payload values.
    const auto s = static_cast<std::int64_t>(std::min(ahead, 1e15));
    const auto h = s / 3600, m = (s - h * 3600) / 60;
    if (s < 3600) return std::to_string(m) + "m";
    if (s < 86400) return std::to_string(h) + "h " + std::to_string(m) + "m";
    return std::to_string(h / 24) + "d " + std::to_string(h % 24) + "h";
}

std::optional<ClaudeUsageWindow> shownWindow(const std::optional<ClaudeUsageLimits>& limits, ClaudeUsageShows shows,
                                             Date now) {
    if (!limits || now - limits->readAt > freshSeconds) return std::nullopt;
    const auto& window = limits->window(shows);
    if (!window || window->hasReset(now)) return std::nullopt;
    return window;
}

} // namespace ClaudeUsageLimitsFormat

} // namespace corvane
