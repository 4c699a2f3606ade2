#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <cstdio>
#include <functional>
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

void ClaudeUsageId::assign(std::string_view text) {
    if (text.size() <= inlineCapacity) {
        std::memcpy(inline_.data(), text.data(), text.size());
        size_ = static_cast<std::uint8_t>(text.size());
        heap_.clear();
    } else {
        heap_.assign(text);
        size_ = onHeap;
    }
}

std::ostream& operator<<(std::ostream& out, const ClaudeUsageId& id) { return out << id.view(); }

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
    return totalsAcross(std::span(&entries, 1), scope, now, calendar);
}

ClaudeUsageTotals totalsAcross(std::span<const std::vector<ClaudeUsageEntry>> lists, ClaudeUsageScope scope, Date now,
                               const Calendar& calendar) {
    const Date from = start(scope, now, calendar);
    // The messages kept, in the order their ids first appear, found by id through an open-addressed
    // table of positions in `unique`: a week holds tens of thousands of records, and a node per
    // id would cost more than the rest of the sums.
    auto within = [&](const ClaudeUsageEntry& entry) { return entry.timestamp >= from && entry.timestamp <= now; };
    std::size_t count = 0;
    for (const auto& entries : lists)
        count += static_cast<std::size_t>(std::count_if(entries.begin(), entries.end(), within));
    std::vector<const ClaudeUsageEntry*> unique;
    std::vector<std::size_t> hashes; // of the ids in `unique`, so that most probes read no id
    unique.reserve(count);
    hashes.reserve(count);
    std::size_t slots = 16;
    while (slots < 2 * count) slots *= 2;
    std::vector<std::size_t> table(slots, 0); // a position in `unique` plus one; 0 is free
    const std::hash<std::string_view> hash;
    for (const auto& entries : lists) {
        for (const auto& entry : entries) {
            if (!within(entry)) continue;
            const std::size_t idHash = hash(entry.id);
            for (std::size_t slot = idHash & (slots - 1);; slot = (slot + 1) & (slots - 1)) {
                if (table[slot] == 0) {
                    unique.push_back(&entry);
                    hashes.push_back(idHash);
                    table[slot] = unique.size();
                    break;
                }
                auto& kept = unique[table[slot] - 1];
                if (hashes[table[slot] - 1] == idHash && kept->id == entry.id) {
                    if (entry.allTokens() > kept->allTokens()) kept = &entry;
                    break;
                }
            }
        }
    }

    ClaudeUsageTotals totals;
    std::vector<std::pair<std::string_view, std::int64_t>> projects;
    std::unordered_map<std::string_view, std::size_t> projectIndex;
    // Records come in runs from one transcript, so the project is nearly always the last one seen.
    std::size_t lastProject = 0;
    for (const auto* entry : unique) {
        const auto tokens = entry->tokens();
        totals.tokens = add(totals.tokens, tokens);
        totals.inputTokens = add(totals.inputTokens, entry->inputTokens);
        totals.outputTokens = add(totals.outputTokens, entry->outputTokens);
        totals.cacheCreationTokens = add(totals.cacheCreationTokens, entry->cacheCreationTokens);
        totals.cacheReadTokens = add(totals.cacheReadTokens, entry->cacheReadTokens);
        if (!totals.lastActivity || entry->timestamp > *totals.lastActivity) totals.lastActivity = entry->timestamp;
        if (entry->project) {
            const std::string_view name = *entry->project;
            if (lastProject >= projects.size() || projects[lastProject].first != name) {
                auto [it, inserted] = projectIndex.try_emplace(name, projects.size());
                if (inserted) projects.emplace_back(name, 0);
                lastProject = it->second;
            }
            auto& sum = projects[lastProject].second;
            sum = add(sum, tokens);
        }
    }
    totals.messages = static_cast<std::int64_t>(unique.size());
    std::sort(projects.begin(), projects.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    totals.projects.reserve(projects.size());
    for (const auto& [name, tokens] : projects) totals.projects.push_back({std::string(name), tokens});
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
