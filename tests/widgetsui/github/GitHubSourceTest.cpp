#include "CorvaneWidgetsUI/github/GitHubSource.hpp"
#include "CorvaneCore/widgets/github/GitHubQueries.hpp"
#include "CorvaneWidgetsUI/github/GitHubModel.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/ManualSerialQueue.hpp"
#include "fakes/ScriptedProcessRunner.hpp"

#include <gtest/gtest.h>

#include <set>

using namespace corvane;

namespace {

const std::string itemsReply = R"({"data": {"s0": {"nodes": [
    {"__typename": "PullRequest", "number": 1, "title": "Old", "url": "u1", "isDraft": false,
     "updatedAt": "2024-03-01T00:00:00Z", "repository": {"nameWithOwner": "a/b"}},
    {"__typename": "PullRequest", "number": 2, "title": "Red", "url": "u2", "isDraft": false,
     "updatedAt": "2024-02-01T00:00:00Z", "repository": {"nameWithOwner": "a/b"},
     "commits": {"nodes": [{"commit": {"statusCheckRollup": {"state": "FAILURE"}}}]}}]}}})";

struct GitHubHarness {
    ScriptedProcessRunner runner;
    InMemoryUserDefaults defaults;
    std::set<std::string> executables{"/opt/homebrew/bin/gh"};
    GitHubSource source{runner, "/Users/ann", &defaults,
                        [this](const std::string& path) { return executables.contains(path); }};

    void replies(int status, std::string out, std::string err = "") {
        runner.result = ProcessResult{status, false, false, std::move(out), std::move(err)};
    }
};

GitHubSettings showing(GitHubShows shows, int limit = 5) {
    GitHubSettings settings;
    settings.shows = shows;
    settings.limit = limit;
    return settings;
}

} // namespace

TEST(GitHubSource, FindsTheToolInItsLookupOrder) {
    GitHubHarness h;
    EXPECT_EQ(h.source.candidates(),
              (std::vector<std::string>{"/Users/ann/.local/bin/gh", "/opt/homebrew/bin/gh",
                                        "/usr/local/bin/gh", "/opt/local/bin/gh", "/usr/bin/gh"}));
    h.defaults.setString("GitHubCLIPath", "/Applications/Tools/gh");
    EXPECT_EQ(h.source.candidates().front(), "/Applications/Tools/gh");
    EXPECT_EQ(h.source.toolURL(), "/opt/homebrew/bin/gh"); // the preferred path is not there
    h.executables.insert("/Applications/Tools/gh");
    EXPECT_EQ(h.source.toolURL(), "/Applications/Tools/gh");

    h.executables = {"/usr/bin/gh", "/opt/local/bin/gh"};
    EXPECT_EQ(h.source.toolURL(), "/opt/local/bin/gh");
    h.executables = {"/usr/bin/gh"};
    EXPECT_EQ(h.source.toolURL(), "/usr/bin/gh");
    h.executables.clear();
    EXPECT_FALSE(h.source.isAvailable());
    auto result = h.source.load(GitHubSettings{});
    EXPECT_EQ(result.trouble, GitHubTrouble::toolMissing());
    EXPECT_TRUE(h.runner.requests.empty());
    EXPECT_FALSE(GitHubSource::isExecutableFile("/"));
    EXPECT_TRUE(GitHubSource::isExecutableFile("/bin/sh"));
}

TEST(GitHubSource, RunsTheToolWithExactlyFourVariablesAndATimeLimit) {
    GitHubHarness h;
    h.replies(0, itemsReply);
    auto settings = showing(GitHubShows::waitingOnYou, 3);
    settings.repositories = {"a/b"};
    auto result = h.source.load(settings);
    EXPECT_FALSE(result.trouble);
    ASSERT_EQ(result.items.size(), 2u);
    const auto& request = h.runner.requests.at(0);
    EXPECT_EQ(request.executable, "/opt/homebrew/bin/gh");
    ASSERT_EQ(request.arguments.size(), 4u);
    EXPECT_EQ(request.arguments[3],
              "query=" + GitHubQueries::itemsDocument(GitHubQueries::searches(settings), 3));
    EXPECT_EQ(request.environment,
              (std::map<std::string, std::string>{{"HOME", "/Users/ann"},
                                                  {"PATH", "/usr/bin:/bin:/usr/sbin:/sbin"},
                                                  {"NO_COLOR", "1"},
                                                  {"GH_NO_UPDATE_NOTIFIER", "1"}}));
    EXPECT_EQ(request.timeout, 20);

    h.replies(0, R"({"data": {"viewer": {"contributionsCollection": {"contributionCalendar":
        {"totalContributions": 3, "weeks": [{"contributionDays": [{"date": "2024-03-01", "contributionCount": 3}]}]}}}}})");
    auto calendar = h.source.load(showing(GitHubShows::contributions));
    ASSERT_TRUE(calendar.contributions);
    EXPECT_EQ(calendar.contributions->total, 3);
    EXPECT_EQ(h.runner.requests.back().arguments[3], "query=" + GitHubQueries::contributionsDocument());
}

TEST(GitHubSource, EveryFailureBecomesATrouble) {
    GitHubHarness h;
    auto settings = showing(GitHubShows::myPullRequests);
    h.replies(4, "",
              "To get started with GitHub CLI, please run:  gh auth login\nAlternatively, populate the "
              "GH_TOKEN environment variable with a GitHub API authentication token.\n");
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::signedOut());
    h.replies(1, "", "error connecting to api.github.com\n");
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("error connecting to api.github.com"));
    h.replies(1, R"({"errors": [{"message": "Something went wrong"}]})");
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("Something went wrong"));
    h.replies(2, "");
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("gh exited with status 2"));
    h.replies(0, R"({"data": null, "errors": [{"message": "API rate limit exceeded"}]})");
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("API rate limit exceeded"));
    h.replies(0, "<html>Unicorn!</html>");
    auto unreadable = h.source.load(showing(GitHubShows::contributions));
    EXPECT_EQ(unreadable.trouble, GitHubTrouble::failed("GitHub's reply could not be read"));
    EXPECT_FALSE(unreadable.contributions);
    h.runner.result = ProcessResult{9, true, true, itemsReply, ""};
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("gh did not answer within 20 seconds"));
    h.runner.launchError = "Permission denied";
    EXPECT_EQ(h.source.load(settings).trouble, GitHubTrouble::failed("Permission denied"));
}

TEST(GitHubModel, PublishesTheBoardsSelectionAndLoadsOneAtATime) {
    GitHubHarness h;
    ManualClock clock;
    ManualScheduler scheduler{clock};
    ManualSerialQueue work;
    h.replies(0, itemsReply);
    GitHubModel model(
        DockWidget{Uuid::generate(), "GitHub", std::nullopt, showing(GitHubShows::myPullRequests, 1)},
        h.source, {scheduler, scheduler, work});
    model.start();
    scheduler.advance(119);
    EXPECT_FALSE(model.isLoading());
    scheduler.advance(1);
    EXPECT_TRUE(model.isLoading());
    EXPECT_FALSE(model.hasRead());
    model.refresh();
    EXPECT_EQ(work.pendingCount(), 1u);
    work.runAll();
    scheduler.runPending();
    EXPECT_TRUE(model.hasRead());
    ASSERT_EQ(model.items().size(), 1u);
    EXPECT_EQ(model.items()[0].number, 2); // failing checks come first

    h.replies(1, "", "authentication token missing");
    model.setSavesEnergy(true);
    scheduler.advance(299);
    EXPECT_EQ(work.pendingCount(), 0u);
    scheduler.advance(1);
    work.runAll();
    scheduler.runPending();
    EXPECT_EQ(model.trouble(), GitHubTrouble::signedOut());
    EXPECT_TRUE(model.items().empty());

    // New settings load again at once.
    h.replies(0, itemsReply);
    model.setWidget(
        DockWidget{model.widget().id, "GitHub", std::nullopt, showing(GitHubShows::myPullRequests, 9)});
    work.runAll();
    scheduler.runPending();
    EXPECT_FALSE(model.trouble());
    EXPECT_EQ(model.items().size(), 2u);
    model.stop();
    scheduler.advance(3600);
    EXPECT_EQ(work.pendingCount(), 0u);
}
