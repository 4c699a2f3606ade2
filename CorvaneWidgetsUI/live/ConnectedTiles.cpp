#include "CorvaneWidgetsUI/live/ConnectedTiles.hpp"

#include "CorvaneCore/widgets/weather/WeatherWords.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardModel.hpp"
#include "CorvaneWidgetsUI/github/GitHubModel.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageModel.hpp"
#include "CorvaneWidgetsUI/weather/WeatherModel.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::ConnectedTiles {

WidgetReading weather(const WeatherSettings& settings, const std::optional<WeatherReading>& reading,
                      bool failed) {
    if (!settings.latitude || !settings.longitude) return {.caption = "Choose a place"};
    if (!reading) {
        if (failed) return {.trouble = "weather unavailable"};
        return {.caption = "…", .detail = settings.cityName};
    }
    auto shown = settings.showsApparent && reading->apparent ? *reading->apparent : reading->temperature;
    std::string detail(WeatherWords::describe(reading->condition));
    if (settings.cityName) detail = *settings.cityName + ", " + detail;
    return {.caption = WeatherWords::degrees(shown, settings.unit), .detail = detail};
}

WidgetReading weather(const WeatherModel& model) {
    return weather(*model.widget().weatherSettings(), model.reading(), model.failed());
}

WidgetReading github(const GitHubSettings& settings, const std::vector<GitHubItem>& items,
                     const std::optional<GitHubContributions>& contributions,
                     const std::optional<GitHubTrouble>& trouble) {
    if (trouble) return {.trouble = std::string(trouble->tileText())};
    if (settings.shows == GitHubShows::contributions) {
        if (!contributions) return {.caption = "…"};
        return {.caption = std::to_string(contributions->total), .detail = "contributions in the last year"};
    }
    WidgetReading reading{.caption = std::to_string(items.size()),
                          .detail = settings.shows == GitHubShows::waitingOnYou ? "waiting on you"
                                                                                : "pull requests"};
    if (!items.empty()) reading.detail = *reading.detail + ": " + items.front().title;
    return reading;
}

WidgetReading github(const GitHubModel& model) {
    if (!model.hasRead() && !model.trouble()) return {.caption = "…"};
    return github(*model.widget().githubSettings(), model.items(), model.contributions(), model.trouble());
}

WidgetReading claudeUsage(const ClaudeUsageSettings& settings, const ClaudeUsageTotals& totals,
                          const std::optional<ClaudeUsageWindow>& window,
                          std::optional<std::string_view> trouble) {
    if (trouble) return {.trouble = std::string(*trouble)};
    if (settings.shows != ClaudeUsageShows::tokens && window)
        return {.caption = std::to_string(static_cast<int>(std::lround(window->usedPercentage))) + "%",
                .detail = std::string(title(settings.shows)),
                .progress = std::clamp(window->usedPercentage / 100, 0.0, 1.0)};
    return {.caption = ClaudeUsage::shortText(totals.tokens),
            .detail = std::string(title(settings.scope)),
            .progress = totals.fraction(settings.budget)};
}

WidgetReading claudeUsage(const ClaudeUsageModel& model, Date now) {
    return claudeUsage(model.settings(), model.totals(), model.shownWindow(now), model.trouble(now));
}

WidgetReading clipboard(const std::vector<ClipboardItem>& items, std::optional<std::string_view> trouble) {
    if (trouble) return {.trouble = std::string(*trouble)};
    if (items.empty()) return {.caption = "Nothing copied yet"};
    return {.caption = std::to_string(items.size()) + (items.size() == 1 ? " item" : " items"),
            .detail = items.front().previewLine()};
}

WidgetReading clipboard(const ClipboardModel& model) {
    if (!model.hasRead()) return {.caption = "…"};
    std::optional<std::string_view> trouble;
    if (model.trouble()) trouble = model.trouble()->title();
    return clipboard(model.items(), trouble);
}

} // namespace corvane::ConnectedTiles
