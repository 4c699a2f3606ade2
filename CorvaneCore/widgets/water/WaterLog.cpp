#include "CorvaneCore/widgets/water/WaterLog.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace corvane {

namespace {

double refillSeconds(int refillMinutes) { return std::max(refillMinutes, 1) * 60.0; }

bool goalReached(int total, int goal) { return goal >= 1 && total >= goal; }

} // namespace

int WaterLog::total(Date on, const Calendar& calendar) const {
    auto dayKey = key(on, calendar);
    for (const auto& entry : days)
        if (entry.day == dayKey) return entry.millilitres;
    return 0;
}

void WaterLog::add(int millilitres, Date at, const Calendar& calendar) {
    auto dayKey = key(at, calendar);
    auto it = std::find_if(days.begin(), days.end(), [&](const WaterDay& d) { return d.day == dayKey; });
    if (it == days.end()) it = days.insert(days.end(), WaterDay{dayKey, 0});
    it->millilitres = std::max(0, it->millilitres + millilitres);
    if (millilitres > 0) lastPour = at;
    // Newest by date, not by arrival: a late entry for an old day must not push out a newer one.
    while (days.size() > historyLength)
        days.erase(std::min_element(days.begin(), days.end(),
                                    [](const WaterDay& a, const WaterDay& b) { return a.day < b.day; }));
}

void WaterLog::remove(int millilitres, Date at, const Calendar& calendar) {
    auto dayKey = key(at, calendar);
    for (auto& entry : days)
        if (entry.day == dayKey) entry.millilitres = std::max(0, entry.millilitres - std::max(0, millilitres));
}

void WaterLog::clear(Date at, const Calendar& calendar) {
    auto dayKey = key(at, calendar);
    std::erase_if(days, [&](const WaterDay& d) { return d.day == dayKey; });
    if (lastPour && calendar.isSameDay(*lastPour, at)) lastPour.reset();
}

std::vector<WaterDay> WaterLog::week(Date now, const Calendar& calendar) const {
    auto today = calendar.day(now);
    std::vector<WaterDay> result;
    for (int back = weekLength - 1; back >= 0; --back) {
        auto dayKey = today.adding(-back).key();
        auto it = std::find_if(days.begin(), days.end(), [&](const WaterDay& d) { return d.day == dayKey; });
        result.push_back(WaterDay{dayKey, it == days.end() ? 0 : it->millilitres});
    }
    return result;
}

double WaterLog::tankLevel(Date now, int goal, int refillMinutes, const Calendar& calendar) const {
    auto today = total(now, calendar);
    if (today < 1) return 0;
    if (!lastPour || !calendar.isSameDay(*lastPour, now)) return 0;
    if (goalReached(today, goal)) return 1;
    return std::clamp(1 - (now - *lastPour) / refillSeconds(refillMinutes), 0.0, 1.0);
}

std::optional<Date> WaterLog::nextGlass(Date now, int goal, int refillMinutes, const Calendar& calendar) const {
    auto today = total(now, calendar);
    if (today < 1 || !lastPour || !calendar.isSameDay(*lastPour, now)) return std::nullopt;
    if (goalReached(today, goal)) return std::nullopt;
    return *lastPour + refillSeconds(refillMinutes);
}

double WaterAmount::ounces(int millilitres) { return millilitres / millilitresPerOunce; }

int WaterAmount::millilitres(double ounces) {
    return static_cast<int>(std::lround(ounces * millilitresPerOunce));
}

std::string WaterAmount::ouncesText(int millilitres) {
    auto value = ounces(millilitres);
    char buffer[32];
    // Decide on the rounded value, so 9.96 oz reads "10" rather than "10.0".
    if (std::round(value * 10) / 10 < 10)
        std::snprintf(buffer, sizeof buffer, "%.1f", value);
    else
        std::snprintf(buffer, sizeof buffer, "%.0f", value);
    return buffer;
}

std::string waterLogText(const WaterLog& log) {
    auto days = Json::array();
    for (const auto& entry : log.days) days.push_back(Json::object({{"day", entry.day}, {"millilitres", entry.millilitres}}));
    Json object = Json::object({{"days", std::move(days)}});
    if (log.lastPour) object["lastPour"] = log.lastPour->sinceReferenceDate;
    return prettyJson(object);
}

WaterLog waterLogFromText(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    WaterLog log;
    if (auto days = reader.optional("days")) {
        for (const auto& entry : days->array()) {
            entry.object();
            WaterDay day{entry["day"].string(), 0};
            if (auto amount = entry.optional("millilitres")) day.millilitres = std::max(0, amount->integer<int>());
            log.days.push_back(std::move(day));
        }
    }
    if (auto lastPour = reader.optional("lastPour")) log.lastPour = Date{lastPour->number()};
    return log;
}

} // namespace corvane
