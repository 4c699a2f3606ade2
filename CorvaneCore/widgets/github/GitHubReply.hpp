#pragma once

#include "CorvaneCore/widgets/github/GitHubContributions.hpp"
#include "CorvaneCore/widgets/github/GitHubItem.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Reading what `gh api graphql` prints. Replies are outside data: anything unexpected is an
/// error text for the trouble value, never an exception.
namespace GitHubReply {

inline constexpr std::string_view unreadable = "GitHub's reply could not be read";

struct Items {
    std::vector<GitHubItem> items;
    /// The reply's first error message, or `unreadable`; none when the reply read.
    std::optional<std::string> error;
};

struct Contributions {
    std::optional<GitHubContributions> contributions;
    std::optional<std::string> error;
};

/// The nodes of every search in an items reply, in the reply's order. Nodes without a number
/// or a repository are left out: they cannot be told apart or opened.
Items items(std::string_view data);
/// The calendar of a contributions reply; a day without a date or a count is left out.
Contributions contributions(std::string_view data);
/// The first "errors"[]."message" of a reply, if it has any errors.
std::optional<std::string> errorMessage(std::string_view data);

} // namespace GitHubReply

} // namespace corvane
