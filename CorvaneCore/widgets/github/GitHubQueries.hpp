#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The searches and GraphQL documents the GitHub widget sends through `gh api graphql`.
namespace GitHubQueries {

/// GitHub's search API gives at most this many results per page.
inline constexpr int maximumFirst = 100;

/// The search strings for the settings' `shows`; none for the contribution calendar.
std::vector<std::string> searches(const GitHubSettings& settings);
/// A GraphQL string literal: backslashes doubled, double quotes escaped, the whole in quotes.
std::string quoted(std::string_view text);
/// One aliased search per string ("s0", "s1", …), each asking for `limit` nodes (1…100).
std::string itemsDocument(const std::vector<std::string>& searches, int limit);
/// The viewer's contribution calendar.
std::string contributionsDocument();
/// The tool's arguments for one document: "api", "graphql", "-f", "query=" + document.
std::vector<std::string> arguments(const std::string& document);

} // namespace GitHubQueries

} // namespace corvane
