#include "CorvaneCore/support/Text.hpp"
#include "fakes/RunProgram.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace corvane;

namespace {

/// A home folder with a stand-in `gh` that answers from the sample replies and notes how it
/// was run.
struct Home {
    TemporaryDirectory home;

    std::filesystem::path installGh(const std::filesystem::path& where, const std::string& body) {
        writeText(where, "#!/bin/sh\n" + body);
        ::chmod(where.c_str(), 0755);
        return where;
    }
    std::filesystem::path installAnsweringGh(const std::filesystem::path& where) {
        std::string data = CORVANE_TEST_DATA;
        return installGh(where,
                         "echo \"$HOME|$PATH|${GH_TOKEN-unset}\" "
                         "> \"$HOME/ran\"\n"
                         "case \"$4\" in\n"
                         "*contributionCalendar*) cat '" +
                             data +
                             "/github/contributions.json' ;;\n"
                             "*) cat '" +
                             data +
                             "/github/items.json' ;;\n"
                             "esac\n");
    }
    ProgramResult run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--data-dir", home.path().string()});
        return runProgram(CORVANE_TOOL, arguments,
                          {"HOME=" + home.path().string(), "PATH=/usr/bin:/bin", "GH_TOKEN=secret"});
    }
};

} // namespace

TEST(GitHubCommands, ShowsPullRequestsThroughGhWithItsOwnEnvironment) {
    Home h;
    h.installAnsweringGh(h.home / ".local/bin/gh");
    auto result = h.run({"github", "--limit", "3"});
    ASSERT_EQ(result.status, 0) << result.err;
    auto lines = text::split(result.out, '\n');
    ASSERT_EQ(lines.size(), 5u) << result.out;
    EXPECT_EQ(lines[0], "My pull requests · 1 failing · acme/api #42");
    EXPECT_TRUE(lines[1].starts_with("  failing  acme/api #42  ")) << lines[1];
    EXPECT_TRUE(lines[1].ends_with("  Fix the crash on launch"));
    EXPECT_TRUE(lines[2].starts_with("  running  acme/web #7   ")) << lines[2];
    EXPECT_TRUE(lines[2].ends_with("New header (draft)"));
    EXPECT_TRUE(lines[3].starts_with("  –        acme/web #3   ")) << lines[3];
    // Nothing of the caller's environment reaches gh, its token least of all.
    EXPECT_EQ(readText(h.home / "ran"), h.home.path().string() + "|/usr/bin:/bin:/usr/sbin:/sbin|unset\n");

    EXPECT_NE(h.run({"github"}).out.find("\n  issue    acme/api #101  "), std::string::npos) << "no limit";

    auto json = h.run({"github", "--shows", "waitingOnYou", "--repo", "acme/api", "--limit", "0", "--json"});
    ASSERT_EQ(json.status, 0) << json.err;
    EXPECT_NE(json.out.find("\"number\": 42"), std::string::npos);
    EXPECT_EQ(json.out.find("\"number\": 7"), std::string::npos);

    auto calendar = h.run({"github", "--shows", "contributions"});
    ASSERT_EQ(calendar.status, 0) << calendar.err;
    EXPECT_TRUE(calendar.out.starts_with("20 contributions in the last year\n"
                                         "Streak: 0 days · busiest day 2024-03-20 (10)\n"))
        << calendar.out;
    EXPECT_NE(calendar.out.find("Wed  █"), std::string::npos) << calendar.out;
}

// Which troubles there are, and where the tool is looked for, is the GitHub source's business;
// here each trouble is one line on stderr.
TEST(GitHubCommands, TroublesPrintTheirTileTextAndBadArgumentsTheirUsage) {
    Home h;
    auto gh = h.installGh(
        h.home / ".local/bin/gh",
        "echo 'To get started with GitHub CLI, please run:  gh auth login' >&2\n"
        "echo 'Alternatively, populate the GH_TOKEN environment variable with a GitHub API authentication "
        "token.' >&2\nexit 4\n");
    auto signedOut = h.run({"github"});
    EXPECT_EQ(signedOut.status, 1);
    EXPECT_EQ(signedOut.err, "corvane: gh is signed out\n");
    EXPECT_EQ(signedOut.out, "");

    h.installGh(gh, "echo 'HTTP 502: Bad Gateway (https://api.github.com/graphql)' >&2\necho more >&2\nexit 1\n");
    auto failed = h.run({"github"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err,
              "corvane: Could not reach GitHub: HTTP 502: Bad Gateway (https://api.github.com/graphql)\n");

    auto badRepository = h.run({"github", "--repo", "acme"});
    EXPECT_EQ(badRepository.status, 2);
    EXPECT_EQ(badRepository.err, "corvane: \"acme\" is not a repository like OWNER/NAME\n");
}

TEST(GitHubCommands, WithoutGhAnywhereItSaysSo) {
    for (const char* place :
         {"/opt/homebrew/bin/gh", "/usr/local/bin/gh", "/opt/local/bin/gh", "/usr/bin/gh"})
        if (std::filesystem::exists(place)) GTEST_SKIP() << "gh is installed on this machine";
    Home h;
    auto result = h.run({"github"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "corvane: gh not installed\n");
}
