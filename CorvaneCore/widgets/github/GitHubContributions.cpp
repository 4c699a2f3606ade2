#include "CorvaneCore/widgets/github/GitHubContributions.hpp"

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>
#include <cmath>
#include <map>

namespace corvane {

namespace {

// Strictly "yyyy-mm-dd" naming a real day.
std::optional<std::int64_t> dayNumber(const std::string& text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    for (std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9})
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
    CalendarDay day{std::stoi(text.substr(0, 4)), std::stoi(text.substr(5, 2)), std::stoi(text.substr(8, 2))};
    if (day.month < 1 || day.month > 12 || day.day < 1) return std::nullopt;
    auto number = day.dayNumber();
    if (CalendarDay::fromDayNumber(number) != day) return std::nullopt;
    return number;
}

// Sunday is 0; 1970-01-01, day 0, was a Thursday.
std::int64_t weekday(std::int64_t number) {
    return ((number + 4) % 7 + 7) % 7;
}

// The days by day number; of two entries for one date the later one wins.
std::map<std::int64_t, const GitHubContributionDay*> byDay(const std::vector<GitHubContributionDay>& days) {
    std::map<std::int64_t, const GitHubContributionDay*> result;
    for (const auto& day : days)
        if (auto number = dayNumber(day.date)) result[*number] = &day;
    return result;
}

} // namespace

GitHubContributions::GitHubContributions(std::vector<GitHubContributionDay> someDays, std::int64_t aTotal)
    : days(std::move(someDays)), total(aTotal) {
    std::vector<std::int64_t> counts;
    for (const auto& day : days)
        if (day.count >= 1) counts.push_back(day.count);
    if (counts.empty()) return;
    std::sort(counts.begin(), counts.end());
    auto at = [&](double q) {
        auto index = static_cast<std::size_t>(std::lround(q * static_cast<double>(counts.size() - 1)));
        return counts[std::min(index, counts.size() - 1)];
    };
    steps = Steps{at(0.25), at(0.5), at(0.75)};
}

int GitHubContributions::shade(std::int64_t count) const {
    if (count <= 0) return 0;
    if (count <= steps.first) return 1;
    if (count <= steps.second) return 2;
    if (count <= steps.third) return 3;
    return 4;
}

std::vector<GitHubContributions::Week> GitHubContributions::columns(int weeks) const {
    auto known = byDay(days);
    if (weeks <= 0 || known.empty()) return {};
    auto first = known.begin()->first, last = known.rbegin()->first;
    auto lastWeekStart = last - weekday(last);
    auto start = std::max(lastWeekStart - static_cast<std::int64_t>(weeks - 1) * 7, first - weekday(first));
    std::vector<Week> result;
    for (auto weekStart = start; weekStart <= lastWeekStart; weekStart += 7) {
        Week week;
        for (int slot = 0; slot < 7; ++slot)
            if (auto found = known.find(weekStart + slot); found != known.end()) week[slot] = *found->second;
        result.push_back(std::move(week));
    }
    return result;
}

int GitHubContributions::streak() const {
    auto known = byDay(days);
    if (known.empty()) return 0;
    auto day = known.rbegin()->first;
    if (known.rbegin()->second->count <= 0) --day;
    int length = 0;
    for (auto found = known.find(day); found != known.end() && found->second->count > 0;
         found = known.find(--day))
        ++length;
    return length;
}

std::optional<GitHubContributionDay> GitHubContributions::busiest() const {
    std::optional<GitHubContributionDay> best;
    for (const auto& [number, day] : byDay(days))
        if (day->count > 0 && (!best || day->count > best->count)) best = *day;
    return best;
}

std::string githubContributionsText(const GitHubContributions& contributions) {
    auto days = Json::array();
    for (const auto& day : contributions.days)
        days.push_back(Json::object({{"date", day.date}, {"count", day.count}}));
    return prettyJson(Json::object({{"days", std::move(days)},
                                    {"total", contributions.total},
                                    {"steps", Json::object({{"first", contributions.steps.first},
                                                            {"second", contributions.steps.second},
                                                            {"third", contributions.steps.third}})}}));
}

} // namespace corvane
