#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace corvane;

namespace {

const FixedOffsetCalendar calendar(-5 * 3600);
const CalendarDay june10{2025, 6, 10};
const Date now = calendar.at(june10, 15, 0);

ClaudeUsageEntry entry(std::string id, Date at, std::optional<std::string> project, std::int64_t input,
                       std::int64_t output = 0, std::int64_t written = 0, std::int64_t read = 0) {
    return {std::move(id), at, std::move(project), input, output, written, read};
}

} // namespace

TEST(ClaudeUsage, ScopesStartFiveHoursBackAtTheLocalDayAndSixDaysBeforeIt) {
    EXPECT_EQ(start(ClaudeUsageScope::block, now, calendar), now - 18000);
    EXPECT_EQ(start(ClaudeUsageScope::today, now, calendar), calendar.at(june10));
    EXPECT_EQ(start(ClaudeUsageScope::week, now, calendar), calendar.at({2025, 6, 4}));
    EXPECT_EQ(start(ClaudeUsageScope::week, calendar.at({2025, 3, 2}, 0, 0, 1), calendar), calendar.at({2025, 2, 24}));
    EXPECT_EQ(title(ClaudeUsageScope::week), "Last 7 days");
    EXPECT_EQ(title(ClaudeUsageShows::fiveHourLimit), "5-hour limit");
}

TEST(ClaudeUsage, TotalsCountEachMessageOnceAtItsLargestRecordWithinThePeriod) {
    std::vector<ClaudeUsageEntry> entries = {
        entry("req_a", now - 600, "atlas", 10, 40, 50),       // 100 tokens
        entry("req_a", now - 500, "atlas", 10, 90, 50, 100),  // the same message, 250 in all
        entry("req_b", now - 400, "corvane", 5, 20, 75),      // 100
        entry("req_b", now - 300, "corvane", 5, 20, 75),      // a tie: the first stays
        entry("req_c", now - 7 * 3600, "atlas", 1000),        // today, before the block
        entry("req_d", now + 1, "atlas", 1000),               // one second in the future
        entry("req_e", calendar.at(june10) - 1, "zeta", 999), // yesterday: the week only
        entry("req_f", now - 60, std::nullopt, 7),
    };
    auto block = ClaudeUsage::totals(entries, ClaudeUsageScope::block, now, calendar);
    EXPECT_EQ(block.tokens, 150 + 100 + 7);
    EXPECT_EQ(block.inputTokens, 22);
    EXPECT_EQ(block.outputTokens, 110);
    EXPECT_EQ(block.cacheCreationTokens, 125);
    EXPECT_EQ(block.cacheReadTokens, 100);
    EXPECT_EQ(block.allTokens(), 357);
    EXPECT_EQ(block.messages, 3);
    EXPECT_EQ(block.lastActivity, now - 60);
    EXPECT_EQ(block.projects, (std::vector<ClaudeUsageProject>{{"atlas", 150}, {"corvane", 100}}));

    auto today = ClaudeUsage::totals(entries, ClaudeUsageScope::today, now, calendar);
    EXPECT_EQ(today.messages, 4);
    EXPECT_EQ(today.projects.front(), (ClaudeUsageProject{"atlas", 1150}));
    auto week = ClaudeUsage::totals(entries, ClaudeUsageScope::week, now, calendar);
    EXPECT_EQ(week.projects, (std::vector<ClaudeUsageProject>{{"atlas", 1150}, {"zeta", 999}, {"corvane", 100}}));

    auto empty = ClaudeUsage::totals({}, ClaudeUsageScope::week, now, calendar);
    EXPECT_EQ(empty, ClaudeUsageTotals{});

    // Equal tokens: projects fall back to name order.
    auto tied = ClaudeUsage::totals({entry("1", now, "b", 5), entry("2", now, "a", 5), entry("3", now, "B", 5)},
                                    ClaudeUsageScope::block, now, calendar);
    EXPECT_EQ(tied.projects, (std::vector<ClaudeUsageProject>{{"B", 5}, {"a", 5}, {"b", 5}}));
}

TEST(ClaudeUsage, TotalsAcrossListsAreTheTotalsOfTheListsJoined) {
    // A tie across lists: the record seen first, in the first list, keeps the message's project.
    const std::vector<std::vector<ClaudeUsageEntry>> lists = {
        {entry("req_a", now - 600, "atlas", 10, 40), entry("req_b", now - 500, "atlas", 5)},
        {},
        {entry("req_a", now - 400, "zeta", 10, 40), entry("req_c", now - 8 * 3600, "zeta", 7),
         entry("req_b", now - 300, "zeta", 50)},
    };
    std::vector<ClaudeUsageEntry> joined;
    for (const auto& list : lists) joined.insert(joined.end(), list.begin(), list.end());
    for (auto scope : allClaudeUsageScopes)
        EXPECT_EQ(ClaudeUsage::totalsAcross(lists, scope, now, calendar), ClaudeUsage::totals(joined, scope, now, calendar));
    auto week = ClaudeUsage::totalsAcross(lists, ClaudeUsageScope::week, now, calendar);
    EXPECT_EQ(week.projects, (std::vector<ClaudeUsageProject>{{"zeta", 57}, {"atlas", 50}}));
    EXPECT_EQ(week.messages, 3);
}

TEST(ClaudeUsage, OverflowingSumsFailInsteadOfWrapping) {
    const auto big = std::numeric_limits<std::int64_t>::max() - 1;
    EXPECT_THROW(entry("x", now, {}, big, 2).tokens(), std::overflow_error);
    EXPECT_THROW(ClaudeUsage::totals({entry("x", now, {}, big), entry("y", now, {}, big)}, ClaudeUsageScope::block,
                                     now, calendar),
                 std::overflow_error);
}

TEST(ClaudeUsage, FractionOfABudget) {
    ClaudeUsageTotals totals;
    totals.tokens = 30'000'000;
    EXPECT_EQ(totals.fraction(std::nullopt), std::nullopt);
    EXPECT_EQ(totals.fraction(0), std::nullopt);
    EXPECT_EQ(totals.fraction(25'000'000), 1.0);
    EXPECT_EQ(totals.fraction(100'000'000), 0.3);
}

TEST(ClaudeUsage, ShortTextAtEachRangeBoundary) {
    for (auto [n, text] : std::vector<std::pair<std::int64_t, std::string>>{{0, "0"},
                                                                            {999, "999"},
                                                                            {1000, "1.0k"},
                                                                            {12345, "12.3k"},
                                                                            {99999, "100.0k"},
                                                                            {100000, "100k"},
                                                                            {999999, "999k"},
                                                                            {4'200'000, "4.2M"},
                                                                            {9'999'999, "10.0M"},
                                                                            {10'000'000, "10M"},
                                                                            {37'900'000, "37M"}})
        EXPECT_EQ(ClaudeUsage::shortText(n), text) << n;
}

TEST(ClaudeUsage, ProjectNamesDropGeneratedHexSuffixes) {
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann-src-atlas"), "atlas");
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann-src-atlas-3f9a2b"), "atlas");
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann-src-deadbeef"), "src");
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann-src-deadbeef-c0ffee"), "src");
    EXPECT_EQ(ClaudeUsage::projectName("abcdef"), "abcdef");
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann-cafe"), "cafe");
    EXPECT_EQ(ClaudeUsage::projectName("-Users-ann--my.app-"), "my.app");
    EXPECT_EQ(ClaudeUsage::projectName("---"), std::nullopt);
    EXPECT_EQ(ClaudeUsage::projectName(""), std::nullopt);
}

TEST(ClaudeUsageLimitsFormat, PayloadsGiveWindowsOnlyWhenOneIsThere) {
    const Date readAt{760000000};
    auto full = ClaudeUsageLimitsFormat::limits(R"({"model": {"display_name": "Opus"},
        "rate_limits": {"five_hour": {"used_percentage": 42.5, "resets_at": 1760000000},
                        "seven_day": {"utilization": 0.18, "used_percentage": null}},
        "subscription_type": "max"})",
                                                readAt);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->fiveHour, (ClaudeUsageWindow{42.5, Date::fromUnixTime(1760000000)}));
    EXPECT_EQ(full->sevenDay, (ClaudeUsageWindow{18, std::nullopt}));
    EXPECT_EQ(full->subscriptionType, "max");
    EXPECT_EQ(full->readAt, readAt);
    EXPECT_EQ(full->window(ClaudeUsageShows::weeklyLimit), full->sevenDay);
    EXPECT_EQ(full->window(ClaudeUsageShows::tokens), std::nullopt);

    auto utilization = ClaudeUsageLimitsFormat::limits(R"({"rate_limits": {"seven_day": {"utilization": 0.42}}})", readAt);
    ASSERT_TRUE(utilization);
    EXPECT_DOUBLE_EQ(utilization->sevenDay->usedPercentage, 42);
    EXPECT_FALSE(utilization->fiveHour);

    for (auto bad : {R"({"rate_limits": {"five_hour": {"resets_at": 1}}, "subscription_type": "pro"})",
                     R"({"rate_limits": {}, "subscription_type": "pro"})", R"({"session_id": "x"})",
                     R"({"rate_limits": {"five_hour": {"used_percentage": "42"}}})",
                     R"({"rate_limits": [1], "subscription_type": "pro"})",
                     R"({"rate_limits": {"five_hour": {"utilization": 1e307}}})",
                     R"({"rate_limits": {"five_hour": {"used_percentage": 4}}, "subscription_type": 3})",
                     "[1, 2]", "{\"rate_limits\":", "", "\xff\xfe"})
        EXPECT_EQ(ClaudeUsageLimitsFormat::limits(bad, readAt), std::nullopt) << bad;
}

TEST(ClaudeUsageLimitsFormat, TimeUntilResetAndWhichWindowATileShows) {
    const Date at{760000000};
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at + 59.9, at), "0m");
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at + 42 * 60, at), "42m");
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at + 3600, at), "1h 0m");
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at + 3 * 3600 + 12 * 60 + 30, at), "3h 12m");
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at + 90000, at), "1d 1h");
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at, at), std::nullopt);
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(at - 5, at), std::nullopt);
    EXPECT_EQ(ClaudeUsageLimitsFormat::untilReset(std::nullopt, at), std::nullopt);

    ClaudeUsageLimits limits{ClaudeUsageWindow{42, at + 3600}, ClaudeUsageWindow{10, std::nullopt}, "pro", at};
    using ClaudeUsageLimitsFormat::shownWindow;
    EXPECT_EQ(shownWindow(limits, ClaudeUsageShows::fiveHourLimit, at + 3599), limits.fiveHour);
    EXPECT_EQ(shownWindow(limits, ClaudeUsageShows::weeklyLimit, at + 43200), limits.sevenDay);
    EXPECT_EQ(shownWindow(limits, ClaudeUsageShows::weeklyLimit, at + 43201), std::nullopt) << "stale";
    EXPECT_EQ(shownWindow(limits, ClaudeUsageShows::fiveHourLimit, at + 3600), std::nullopt) << "reset";
    EXPECT_EQ(shownWindow(limits, ClaudeUsageShows::tokens, at), std::nullopt);
    EXPECT_EQ(shownWindow(std::nullopt, ClaudeUsageShows::weeklyLimit, at), std::nullopt);

    EXPECT_EQ(decodeClaudeUsageLimits(JsonReader(encodeClaudeUsageLimits(limits))), limits);
    EXPECT_EQ(prettyJson(encodeClaudeUsageLimits(ClaudeUsageLimits{std::nullopt, ClaudeUsageWindow{5, at}, {}, at})),
              "{\n  \"readAt\": 760000000.0,\n  \"sevenDay\": {\n    \"resetsAt\": 760000000.0,\n"
              "    \"usedPercentage\": 5.0\n  }\n}\n");
}

TEST(ClaudeUsage, IdsKeepTheirTextWhateverItsLength) {
    const std::string shortText = "req_011CRn8Lq8dzVFZDrJNBvqXm";
    const std::string longText = "msg_" + std::string(ClaudeUsageId::inlineCapacity + 5, 'x');
    for (const auto& text : {std::string(), shortText, std::string(ClaudeUsageId::inlineCapacity, 'y'), longText}) {
        ClaudeUsageId id(text);
        EXPECT_EQ(id.view(), text);
        EXPECT_EQ(id.empty(), text.empty());
        ClaudeUsageId copy = id, moved = ClaudeUsageId(text);
        EXPECT_EQ(copy, id);
        EXPECT_EQ(moved.string(), text);
        copy = ClaudeUsageId("other");
        EXPECT_EQ(copy, "other");
        EXPECT_NE(copy, id);
    }
    EXPECT_LT(ClaudeUsageId("a"), ClaudeUsageId(longText));
    EXPECT_LT(ClaudeUsageId(longText), ClaudeUsageId("z"));
    EXPECT_EQ(ClaudeUsageId(shortText), ClaudeUsageId(std::string_view(shortText)));
}
