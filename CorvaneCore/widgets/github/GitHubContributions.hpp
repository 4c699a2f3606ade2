#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One square of the contribution calendar.
struct GitHubContributionDay {
    /// "yyyy-mm-dd", as GitHub gives it.
    std::string date;
    std::int64_t count = 0;

    bool operator==(const GitHubContributionDay&) const = default;
};

/// The user's contribution calendar and the thresholds between its four shades.
struct GitHubContributions {
    struct Steps {
        std::int64_t first = 0;
        std::int64_t second = 0;
        std::int64_t third = 0;

        bool operator==(const Steps&) const = default;
    };

    /// A graph column: the days of one week, Sunday first; a slot is empty before the first day
    /// and after the last.
    using Week = std::array<std::optional<GitHubContributionDay>, 7>;

    std::vector<GitHubContributionDay> days;
    std::int64_t total = 0;
    Steps steps;

    GitHubContributions() = default;
    /// Works out `steps`: the quartiles of the days that have any contributions.
    GitHubContributions(std::vector<GitHubContributionDay> days, std::int64_t total);

    /// 0 for none, then 1 up to `first`, 2 up to `second`, 3 up to `third`, 4 above.
    int shade(std::int64_t count) const;
    /// The last `weeks` calendar weeks up to the newest day, oldest first. Days whose date does
    /// not read are left out.
    std::vector<Week> columns(int weeks) const;
    /// Days in a row with contributions, ending with the newest day, or with the day before when
    /// the newest (today, still under way) has none yet.
    int streak() const;
    /// The day with the most contributions, the earliest of equals; none when nobody contributed.
    std::optional<GitHubContributionDay> busiest() const;

    bool operator==(const GitHubContributions&) const = default;
};

/// `{"days": [{"date", "count"}], "total", "steps": {"first", "second", "third"}}`, keys sorted.
std::string githubContributionsText(const GitHubContributions& contributions);

} // namespace corvane
