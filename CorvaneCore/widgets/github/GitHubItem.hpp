#pragma once

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The state of a pull request's checks, most severe first.
enum class GitHubChecks { failing, running, passing, none };
template <> struct EnumCases<GitHubChecks> {
    static constexpr std::string_view typeName = "GitHubChecks";
    static constexpr std::array<std::string_view, 4> names = {"failing", "running", "passing", "none"};
};

/// An open pull request or issue found by a search.
struct GitHubItem {
    std::int64_t number = 0;
    std::string title;
    /// "owner/name".
    std::string repository;
    std::string url;
    GitHubChecks checks = GitHubChecks::none;
    bool isDraft = false;
    bool isIssue = false;
    Date updatedAt;

    /// "owner/name#12": the same item found by two searches has one key.
    std::string key() const { return repository + "#" + std::to_string(number); }

    bool operator==(const GitHubItem&) const = default;
};

/// A JSON array of items, keys sorted; `updatedAt` as seconds since 2001-01-01.
std::string githubItemsText(const std::vector<GitHubItem>& items);

} // namespace corvane
