#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/github/GitHubItem.hpp"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Which items the GitHub widget shows, and in what order.
namespace GitHubBoard {

/// Drafts dropped unless the settings include them, duplicates dropped, failing checks first,
/// then running, passing and none; newest first within each; at most max(limit, 1) items.
std::vector<GitHubItem> select(std::vector<GitHubItem> items, const GitHubSettings& settings);
/// The most severe checks among the items; `none` for no items.
GitHubChecks worstChecks(const std::vector<GitHubItem>& items);
/// How many items have failing checks.
std::int64_t failing(const std::vector<GitHubItem>& items);
/// "2 failing · owner/name #12", naming the first failing item; none when nothing fails.
std::optional<std::string> failingLine(const std::vector<GitHubItem>& items);

} // namespace GitHubBoard

} // namespace corvane
