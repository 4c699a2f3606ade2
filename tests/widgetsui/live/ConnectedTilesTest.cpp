#include "CorvaneWidgetsUI/live/ConnectedTiles.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(ConnectedTiles, WeatherAsksForAPlaceShowsTheFeltTemperatureAndKeepsTroubleApart) {
    WeatherSettings settings;
    EXPECT_EQ(ConnectedTiles::weather(settings, std::nullopt, false).caption, "Choose a place");
    settings.latitude = 59.9;
    settings.longitude = 10.7;
    settings.cityName = "Oslo";
    EXPECT_EQ(ConnectedTiles::weather(settings, std::nullopt, true),
              (WidgetReading{.trouble = "weather unavailable"}));
    WeatherReading reading{.temperature = 21.4, .apparent = 18.6, .condition = WeatherCondition::clear};
    EXPECT_EQ(ConnectedTiles::weather(settings, reading, true),
              (WidgetReading{.caption = "21°C", .detail = "Oslo, Clear sky"}))
        << "a failed refresh keeps the last reading";
    settings.showsApparent = true;
    EXPECT_EQ(ConnectedTiles::weather(settings, reading, false).caption, "19°C");
}

TEST(ConnectedTiles, GitHubUsageAndClipboard) {
    GitHubSettings github;
    std::vector<GitHubItem> items{{.number = 7, .title = "Fix the lens"}, {.number = 9, .title = "Bump"}};
    EXPECT_EQ(ConnectedTiles::github(github, items, std::nullopt, std::nullopt),
              (WidgetReading{.caption = "2", .detail = "pull requests: Fix the lens"}));
    EXPECT_EQ(ConnectedTiles::github(github, items, std::nullopt, GitHubTrouble::signedOut()),
              (WidgetReading{.trouble = "gh is signed out"}));

    ClaudeUsageSettings usage{.budget = 1'000'000};
    ClaudeUsageTotals totals{.tokens = 250'000};
    EXPECT_EQ(ConnectedTiles::claudeUsage(usage, totals, std::nullopt, std::nullopt),
              (WidgetReading{.caption = "250k", .detail = "Last 5 hours", .progress = 0.25}));
    usage.shows = ClaudeUsageShows::weeklyLimit;
    EXPECT_EQ(
        ConnectedTiles::claudeUsage(usage, totals, ClaudeUsageWindow{.usedPercentage = 37.5}, std::nullopt),
        (WidgetReading{.caption = "38%", .detail = "Weekly limit", .progress = 0.375}));
    EXPECT_EQ(ConnectedTiles::claudeUsage(usage, totals, std::nullopt, ClaudeUsage::waitingTile).trouble,
              "Waiting for Claude Code");

    ClipboardItem copied{.text = "hello"};
    EXPECT_EQ(ConnectedTiles::clipboard({}, std::nullopt).caption, "Nothing copied yet");
    EXPECT_EQ(ConnectedTiles::clipboard({copied}, std::nullopt),
              (WidgetReading{.caption = "1 item", .detail = "hello"}));
    EXPECT_EQ(ConnectedTiles::clipboard({copied}, "Cannot save the clipboard").trouble,
              "Cannot save the clipboard");
}
