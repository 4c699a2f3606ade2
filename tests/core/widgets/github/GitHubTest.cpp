#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/widgets/github/GitHubBoard.hpp"
#include "CorvaneCore/widgets/github/GitHubQueries.hpp"
#include "CorvaneCore/widgets/github/GitHubReply.hpp"
#include "CorvaneCore/widgets/github/GitHubTrouble.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

std::string sample(const std::string& name) {
    return readText(std::string(CORVANE_TEST_DATA) + "/github/" + name);
}

GitHubItem item(std::string repository, std::int64_t number, GitHubChecks checks, double updated,
                bool isDraft = false) {
    GitHubItem result;
    result.repository = std::move(repository);
    result.number = number;
    result.checks = checks;
    result.updatedAt = Date{updated};
    result.isDraft = isDraft;
    return result;
}

std::vector<std::string> keys(const std::vector<GitHubItem>& items) {
    std::vector<std::string> result;
    for (const auto& i : items)
        result.push_back(i.key());
    return result;
}

} // namespace

TEST(GitHubQueries, SearchesFollowShowsAndRepositories) {
    GitHubSettings settings;
    settings.repositories = {"a/b", "c/d"};
    EXPECT_EQ(GitHubQueries::searches(settings),
              std::vector<std::string>{"is:open is:pr author:@me archived:false repo:a/b repo:c/d"});
    settings.shows = GitHubShows::waitingOnYou;
    settings.repositories.clear();
    EXPECT_EQ(GitHubQueries::searches(settings),
              (std::vector<std::string>{"is:open is:pr review-requested:@me archived:false",
                                        "is:open is:issue assignee:@me archived:false"}));
    settings.shows = GitHubShows::contributions;
    EXPECT_TRUE(GitHubQueries::searches(settings).empty());
}

TEST(GitHubQueries, DocumentsQuoteSearchesAndAliasEachLine) {
    EXPECT_EQ(GitHubQueries::quoted(R"(repo:a/b "x" \n)"), R"("repo:a/b \"x\" \\n")");
    auto document = GitHubQueries::itemsDocument({"one", R"(say "hi")"}, 0);
    EXPECT_TRUE(document.starts_with(
        "query {\ns0: search(query: \"one\", type: ISSUE, first: 1) { nodes { __typename "))
        << document;
    EXPECT_NE(document.find("\ns1: search(query: \"say \\\"hi\\\"\", type: ISSUE, first: 1) {"),
              std::string::npos);
    EXPECT_TRUE(document.ends_with("} }\n}"));
    EXPECT_NE(
        document.find("... on PullRequest { number title url isDraft updatedAt repository { nameWithOwner } "
                      "commits(last: 1) { nodes { commit { statusCheckRollup { state } } } } }"),
        std::string::npos);
    EXPECT_NE(document.find("... on Issue { number title url updatedAt repository { nameWithOwner } }"),
              std::string::npos);
    EXPECT_NE(GitHubQueries::itemsDocument({"x"}, 5000).find("first: 100)"), std::string::npos);
    EXPECT_EQ(GitHubQueries::arguments("query { }"),
              (std::vector<std::string>{"api", "graphql", "-f", "query=query { }"}));
    EXPECT_NE(GitHubQueries::contributionsDocument().find("contributionCalendar { totalContributions weeks { "
                                                          "contributionDays { date contributionCount } } }"),
              std::string::npos);
}

TEST(GitHubReply, ReadsNodesOfEverySearch) {
    auto reply = GitHubReply::items(sample("items.json"));
    EXPECT_FALSE(reply.error);
    ASSERT_EQ(reply.items.size(), 6u);
    const auto& failing = reply.items[0];
    EXPECT_EQ(failing.number, 42);
    EXPECT_EQ(failing.title, "Fix the crash on launch");
    EXPECT_EQ(failing.repository, "acme/api");
    EXPECT_EQ(failing.url, "https://github.com/acme/api/pull/42");
    EXPECT_EQ(failing.checks, GitHubChecks::failing);
    EXPECT_FALSE(failing.isIssue);
    EXPECT_EQ(failing.updatedAt, *parseIso8601("2024-03-29T10:00:00Z"));
    EXPECT_TRUE(reply.items[1].isDraft);
    EXPECT_EQ(reply.items[1].checks, GitHubChecks::running);
    EXPECT_EQ(reply.items[2].checks, GitHubChecks::none);
    EXPECT_EQ(reply.items[2].updatedAt, *parseIso8601("2024-03-28T07:30:00Z"));
    EXPECT_EQ(reply.items[3].checks, GitHubChecks::none);
    EXPECT_TRUE(reply.items[4].isIssue);
    EXPECT_EQ(reply.items[4].key(), "acme/api#101");
    EXPECT_EQ(reply.items[5].checks, GitHubChecks::failing);
}

TEST(GitHubReply, OddRepliesBecomeErrorsOrLoseOnlyTheOddNodes) {
    for (const auto& data : {std::string(), std::string("<html>Bad gateway</html>"), std::string("[]"),
                             std::string(R"({"data": null})"), std::string(R"({"data": {"s0": {"nodes": [)"),
                             std::string(50000, '{')}) {
        EXPECT_EQ(GitHubReply::items(data).error, GitHubReply::unreadable) << data.substr(0, 40);
        EXPECT_EQ(GitHubReply::contributions(data).error, GitHubReply::unreadable) << data.substr(0, 40);
        EXPECT_FALSE(GitHubReply::contributions(data).contributions);
    }
    auto withErrors =
        R"({"data": null, "errors": [{"type": "X"}, {"message": "Could not resolve to a Repository"}]})";
    EXPECT_EQ(GitHubReply::items(withErrors).error, "Could not resolve to a Repository");
    EXPECT_EQ(GitHubReply::contributions(withErrors).error, "Could not resolve to a Repository");
    EXPECT_EQ(GitHubReply::items(R"({"errors": "boom"})").error, "GitHub answered with an error");
    EXPECT_FALSE(GitHubReply::items(R"({"data": {}, "errors": []})").error);

    auto odd = GitHubReply::items(R"({"data": {"s0": {"nodes": [
        {"number": "12", "repository": {"nameWithOwner": "a/b"}},
        {"number": 1.5, "repository": {"nameWithOwner": "a/b"}},
        {"number": 99999999999999999999, "repository": {"nameWithOwner": "a/b"}},
        {"number": 5, "repository": "a/b"},
        {"number": 6, "repository": {"nameWithOwner": "a/b"}, "title": 7, "isDraft": "yes", "updatedAt": "yesterday",
         "commits": {"nodes": [{"commit": {"statusCheckRollup": {"state": "NEUTRAL"}}}]}},
        {"number": 8, "repository": {"nameWithOwner": "a/b"}, "commits": {"nodes": {"x": 1}}},
        7, null, "text"]}, "s1": [], "s2": {"nodes": 4}}})");
    EXPECT_FALSE(odd.error);
    ASSERT_EQ(odd.items.size(), 2u);
    EXPECT_EQ(odd.items[0], (GitHubItem{6, "", "a/b", "", GitHubChecks::none, false, false, Date{}}));
    EXPECT_EQ(odd.items[1].number, 8);
}

TEST(GitHubBoard, SelectDropsDraftsAndDuplicatesThenOrdersBySeverityDateAndKey) {
    std::vector<GitHubItem> items = {
        item("z/z", 1, GitHubChecks::passing, 300),  item("a/a", 2, GitHubChecks::failing, 100),
        item("a/a", 2, GitHubChecks::failing, 100),  item("b/b", 3, GitHubChecks::running, 50, true),
        item("b/b", 4, GitHubChecks::none, 900),     item("c/c", 5, GitHubChecks::passing, 300),
        item("c/c", 10, GitHubChecks::passing, 300),
    };
    GitHubSettings settings;
    settings.limit = 10;
    EXPECT_EQ(keys(GitHubBoard::select(items, settings)),
              (std::vector<std::string>{"a/a#2", "b/b#3", "c/c#10", "c/c#5", "z/z#1", "b/b#4"}));
    settings.includesDrafts = false;
    settings.limit = 0;
    EXPECT_EQ(keys(GitHubBoard::select(items, settings)), std::vector<std::string>{"a/a#2"});
    settings.limit = -3;
    EXPECT_EQ(GitHubBoard::select(items, settings).size(), 1u);

    EXPECT_EQ(GitHubBoard::worstChecks({}), GitHubChecks::none);
    EXPECT_EQ(GitHubBoard::worstChecks({items[0], items[3]}), GitHubChecks::running);
    EXPECT_EQ(GitHubBoard::failing(items), 2);
    EXPECT_EQ(GitHubBoard::failingLine({items[0], items[1], items[2]}), "2 failing · a/a #2");
    EXPECT_FALSE(GitHubBoard::failingLine({items[0]}));
}

TEST(GitHubContributions, StepsShadesAndTheCalendarFigures) {
    auto reply = GitHubReply::contributions(sample("contributions.json"));
    ASSERT_TRUE(reply.contributions);
    const auto& calendar = *reply.contributions;
    EXPECT_EQ(calendar.total, 20);
    EXPECT_EQ(calendar.days.size(), 12u);
    EXPECT_EQ(calendar.steps, (GitHubContributions::Steps{2, 3, 4}));
    EXPECT_EQ(calendar.shade(0), 0);
    EXPECT_EQ(calendar.shade(2), 1);
    EXPECT_EQ(calendar.shade(3), 2);
    EXPECT_EQ(calendar.shade(4), 3);
    EXPECT_EQ(calendar.shade(5), 4);
    EXPECT_EQ(GitHubContributions({}, 0).steps, (GitHubContributions::Steps{0, 0, 0}));
    EXPECT_EQ(GitHubContributions({{"2024-01-01", 7}}, 7).steps, (GitHubContributions::Steps{7, 7, 7}));

    // 2024-03-14 was a Thursday: the first column starts on Sunday the 10th.
    auto columns = calendar.columns(52);
    ASSERT_EQ(columns.size(), 3u);
    EXPECT_FALSE(columns[0][3]);
    EXPECT_EQ(columns[0][4]->date, "2024-03-14");
    EXPECT_EQ(columns[1][0]->date, "2024-03-17");
    EXPECT_EQ(columns[2][1]->date, "2024-03-25");
    EXPECT_FALSE(columns[2][2]);
    EXPECT_EQ(calendar.columns(2).front()[0]->date, "2024-03-17");
    EXPECT_TRUE(calendar.columns(0).empty());

    EXPECT_EQ(calendar.streak(), 0);
    EXPECT_EQ(calendar.busiest(), (GitHubContributionDay{"2024-03-20", 10}));
    // Today without contributions yet keeps yesterday's streak alive; a missing day breaks it.
    GitHubContributions run({{"2024-02-27", 5}, {"2024-02-28", 1}, {"2024-02-29", 2}, {"2024-03-01", 0}}, 8);
    EXPECT_EQ(run.streak(), 3);
    GitHubContributions gap({{"2024-02-26", 5}, {"2024-02-28", 5}, {"bad", 9}, {"2024-02-29", 5}}, 15);
    EXPECT_EQ(gap.streak(), 2);
    EXPECT_EQ(gap.busiest(), (GitHubContributionDay{"2024-02-26", 5}));
    EXPECT_FALSE(GitHubContributions({{"2024-01-01", 0}}, 0).busiest());

    auto odd =
        GitHubReply::contributions(R"({"data": {"viewer": {"contributionsCollection": {"contributionCalendar":
        {"totalContributions": -4, "weeks": [{"contributionDays": [{"date": "2024-01-01", "contributionCount": 9223372036854775807},
         {"date": "2024-01-02", "contributionCount": 1}, {"date": 3, "contributionCount": 1}, {"date": "2024-01-04"}]}, 5]}}}}})");
    ASSERT_TRUE(odd.contributions);
    EXPECT_EQ(odd.contributions->days.size(), 2u);
    EXPECT_EQ(odd.contributions->total, 9223372036854775807);
}

TEST(GitHubTrouble, TileAndPanelTexts) {
    EXPECT_EQ(GitHubTrouble::toolMissing().tileText(), "gh not installed");
    EXPECT_EQ(GitHubTrouble::toolMissing().title(), "GitHub's command line tool is not installed");
    EXPECT_EQ(GitHubTrouble::signedOut().tileText(), "gh is signed out");
    EXPECT_EQ(GitHubTrouble::signedOut().detail(),
              "Run gh auth login in a terminal once; Corvane never asks for a token itself.");
    EXPECT_EQ(GitHubTrouble::failed("HTTP 502").tileText(), "Could not reach GitHub");
    EXPECT_EQ(GitHubTrouble::failed("HTTP 502").detail(), "HTTP 502");
}
