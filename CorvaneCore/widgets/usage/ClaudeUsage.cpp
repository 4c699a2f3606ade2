#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <unordered_map>

namespace corvane {

namespace {

std::int64_t add(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) throw std::overflow_error("token counts overflow");
    return sum;
}

bool isHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

} // namespace

std::int64_t ClaudeUsageEntry::tokens() const { return add(add(inputTokens, outputTokens), cacheCreationTokens); }

std::int64_t ClaudeUsageEntry::allTokens() const { return add(tokens(), cacheReadTokens); }

std::int64_t ClaudeUsageTotals::allTokens() const { return add(tokens, cacheReadTokens); }

std::optional<double> ClaudeUsageTotals::fraction(std::optional<std::int64_t> budget) const {
    if (!budget || *budget < 1) return std::nullopt;
    return std::min(1.0, static_cast<double>(tokens) / static_cast<double>(*budget));
}

Json encodeClaudeUsageTotals(const ClaudeUsageTotals& totals) {
    Json projects = Json::array();
    for (const auto& project : totals.projects) projects.push_back({{"name", project.name}, {"tokens", project.tokens}});
    Json object = {{"tokens", totals.tokens},
                   {"inputTokens", totals.inputTokens},
                   {"outputTokens", totals.outputTokens},
                   {"cacheCreationTokens", totals.cacheCreationTokens},
                   {"cacheReadTokens", totals.cacheReadTokens},
                   {"allTokens", totals.allTokens()},
                   {"messages", totals.messages},
                   {"projects", std::move(projects)}};
    if (totals.lastActivity) object["lastActivity"] = totals.lastActivity->sinceReferenceDate;
    return object;
}

std::string_view title(ClaudeUsageScope scope) {
    switch (scope) {
    case ClaudeUsageScope::block: return "Last 5 hours";
    case ClaudeUsageScope::today: return "Today";
    case ClaudeUsageScope::week: return "Last 7 days";
    }
    return {};
}

std::string_view title(ClaudeUsageShows shows) {
    switch (shows) {
    case ClaudeUsageShows::fiveHourLimit: return "5-hour limit";
    case ClaudeUsageShows::weeklyLimit: return "Weekly limit";
    case ClaudeUsageShows::tokens: return "Tokens";
    }
    return {};
}

Date start(ClaudeUsageScope scope, Date now, const Calendar& calendar) {
    switch (scope) {
    case ClaudeUsageScope::block: return now - ClaudeUsage::blockSeconds;
    case ClaudeUsageScope::today: return calendar.startOfDay(calendar.day(now));
    case ClaudeUsageScope::week: return calendar.startOfDay(calendar.day(now).adding(-6));
    }
    return now;
}

namespace ClaudeUsage {

ClaudeUsageTotals totals(const std::vector<ClaudeUsageEntry>& entries, ClaudeUsageScope scope, Date now,
                         const Calendar& calendar) {
    const Date from = start(scope, now, calendar);
    std::vector<const ClaudeUsageEntry*> unique;
    std::unordered_map<std::string_view, std::size_t> byId;
    byId.reserve(entries.size());
    unique.reserve(entries.size());
    for (const auto& entry : entries) {
        if (entry.timestamp < from || entry.timestamp > now) continue;
        auto [it, inserted] = byId.try_emplace(entry.id, unique.size());
        if (inserted)
            unique.push_back(&entry);
        else if (entry.allTokens() > unique[it->second]->allTokens())
            unique[it->second] = &entry;
    }

    ClaudeUsageTotals totals;
    std::map<std::string_view, std::int64_t> projects;
    for (const auto* entry : unique) {
        const auto tokens = entry->tokens();
        totals.tokens = add(totals.tokens, tokens);
        totals.inputTokens = add(totals.inputTokens, entry->inputTokens);
        totals.outputTokens = add(totals.outputTokens, entry->outputTokens);
        totals.cacheCreationTokens = add(totals.cacheCreationTokens, entry->cacheCreationTokens);
        totals.cacheReadTokens = add(totals.cacheReadTokens, entry->cacheReadTokens);
        if (!totals.lastActivity || entry->timestamp > *totals.lastActivity) totals.lastActivity = entry->timestamp;
        if (entry->project) {
            auto& sum = projects[*entry->project];
            sum = add(sum, tokens);
        }
    }
    totals.messages = static_cast<std::int64_t>(unique.size());
    for (const auto& [name, tokens] : projects) totals.projects.push_back({std::string(name), tokens});
    // The map already ordered names, so a stable sort on tokens leaves ties by name.
    std::stable_sort(totals.projects.begin(), totals.projects.end(),
                     [](const auto& a, const auto& b) { return a.tokens > b.tokens; });
    return totals;
}

std::optional<std::string_view> trouble(bool isAvailable, bool hasRead, ClaudeUsageShows shows, bool showsWindow) {
    if (hasRead && !isAvailable) return notRunTile;
    if (shows != ClaudeUsageShows::tokens && !showsWindow) return waitingTile;
    return std::nullopt;
}

std::string shortText(std::int64_t n) {
    char buffer[32];
    if (n < 1'000) return std::to_string(n);
    if (n < 100'000) {
        std::snprintf(buffer, sizeof buffer, "%.1fk", static_cast<double>(n) / 1'000);
        return buffer;
    }
    if (n < 1'000'000) return std::to_string(n / 1'000) + "k";
    if (n < 10'000'000) {
        std::snprintf(buffer, sizeof buffer, "%.1fM", static_cast<double>(n) / 1'000'000);
        return buffer;
    }
    return std::to_string(n / 1'000'000) + "M";
}

std::optional<std::string> projectName(std::string_view folder) {
    std::vector<std::string_view> pieces;
    for (std::size_t start = 0; start <= folder.size();) {
        auto dash = std::min(folder.find('-', start), folder.size());
        if (dash > start) pieces.push_back(folder.substr(start, dash - start));
        start = dash + 1;
    }
    auto generated = [](std::string_view piece) {
        return piece.size() >= 6 && std::all_of(piece.begin(), piece.end(), isHexDigit);
    };
    while (pieces.size() > 1 && generated(pieces.back())) pieces.pop_back();
    if (pieces.empty()) return std::nullopt;
    return std::string(pieces.back());
}

} // namespace ClaudeUsage

} // namespace corvane
