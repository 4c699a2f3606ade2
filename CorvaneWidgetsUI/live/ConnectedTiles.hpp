#pragma once

// What the connected kinds' tiles show, from their models' state: one wording for the bar's
// live models and for readers that fetch at once (`corvane widgets now`). A host that keeps
// the existing weather, GitHub, usage and clipboard models passes readers built on these.

#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"
#include "CorvaneCore/widgets/github/GitHubContributions.hpp"
#include "CorvaneCore/widgets/github/GitHubItem.hpp"
#include "CorvaneCore/widgets/github/GitHubTrouble.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"
#include "CorvaneCore/widgets/weather/WeatherReading.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

class ClaudeUsageModel;
class ClipboardModel;
class GitHubModel;
class WeatherModel;

namespace ConnectedTiles {

/// The temperature (felt, when asked and known) with the place and the sky; a place not chosen
/// yet asks for one; a failed first fetch is a trouble, a failed later one keeps the last reading.
WidgetReading weather(const WeatherSettings& settings, const std::optional<WeatherReading>& reading,
                      bool failed);
WidgetReading weather(const WeatherModel& model);

/// The number of items the board shows and the first one's title, or the year's contributions.
/// `items` are those the board selected already.
WidgetReading github(const GitHubSettings& settings, const std::vector<GitHubItem>& items,
                     const std::optional<GitHubContributions>& contributions,
                     const std::optional<GitHubTrouble>& trouble);
WidgetReading github(const GitHubModel& model);

/// Tokens of the chosen period (with the share of the budget), or a plan limit's use; `trouble`
/// is the tile's text when there is nothing to show.
WidgetReading claudeUsage(const ClaudeUsageSettings& settings, const ClaudeUsageTotals& totals,
                          const std::optional<ClaudeUsageWindow>& window,
                          std::optional<std::string_view> trouble);
WidgetReading claudeUsage(const ClaudeUsageModel& model, Date now);

/// How many items the history holds and the newest one's line.
WidgetReading clipboard(const std::vector<ClipboardItem>& items, std::optional<std::string_view> trouble);
WidgetReading clipboard(const ClipboardModel& model);

} // namespace ConnectedTiles

} // namespace corvane
