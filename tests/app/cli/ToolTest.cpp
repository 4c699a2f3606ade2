#include "CorvaneApp/cli/Tool.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/ScriptedProcessRunner.hpp"

#include <CLI/CLI.hpp>

#include <gtest/gtest.h>

#include <set>
#include <sstream>

using namespace corvane;

namespace {

// A command line builds only the commands it can reach: those of the group its command word
// names, or none at all for a line of options alone.
class ToolParser : public ::testing::Test {
protected:
    struct Output {
        int status;
        std::string out, err;
    };
    Output run(std::vector<const char*> argv) {
        argv.insert(argv.begin(), "corvane");
        std::ostringstream out, err;
        auto status = runTool(static_cast<int>(argv.size()), argv.data(), services, out, err);
        return {status, out.str(), err.str()};
    }

    CannedHttpClient http;
    ScriptedProcessRunner runner;
    RecordingNotifier notifier;
    CapturingLog log;
    ManualClock clock;
    FixedOffsetCalendar calendar;
    ToolServices services{.notifier = notifier, .log = log, .clock = clock, .calendar = calendar, .http = http,
                          .runner = runner};
};

std::set<std::string> wordsOf(const CommandGroup& group) {
    std::set<std::string> words;
    std::istringstream list{std::string(group.words)};
    for (std::string word; list >> word;) words.insert(word);
    return words;
}

} // namespace

// A word listed with the wrong group would leave its command out of the parser.
TEST_F(ToolParser, EachGroupAddsExactlyTheCommandWordsItIsChosenBy) {
    std::ostringstream out;
    ToolContext context{services, out, std::nullopt};
    std::set<std::string> everyWord;
    for (const auto& group : commandGroups()) {
        CLI::App app;
        group.add(app, context);
        std::set<std::string> added;
        for (const auto* command : app.get_subcommands([](CLI::App*) { return true; })) {
            added.insert(command->get_name());
            for (const auto& alias : command->get_aliases()) added.insert(alias);
        }
        EXPECT_EQ(wordsOf(group), added) << group.words;
        for (const auto& word : added) EXPECT_TRUE(everyWord.insert(word).second) << word << " is in two groups";
    }
}

TEST_F(ToolParser, HelpListsEveryCommandAndALineWithoutOneIsAUsageError) {
    for (auto* help : {"--help", "-h"}) {
        auto result = run({help});
        EXPECT_EQ(result.status, 0);
        for (const auto& group : commandGroups())
            for (const auto& word : wordsOf(group))
                EXPECT_TRUE(result.out.find("\n  " + word + " ") != std::string::npos ||
                            result.out.find("\n  " + word + ",") != std::string::npos ||
                            result.out.find(", " + word + " ") != std::string::npos)
                    << word;
    }
    for (auto argv : {std::vector<const char*>{}, {"--data-dir", "/nowhere", "--json"}}) {
        auto result = run(argv);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "corvane: A subcommand is required\n");
    }
}

TEST_F(ToolParser, VersionIsAnOptionAndACommand) {
    auto option = run({"--version"});
    EXPECT_EQ(option.status, 0) << option.err;
    EXPECT_EQ(option.out, std::string(toolVersion()) + "\n");
    EXPECT_NE(option.out.find('.'), std::string::npos);
    auto command = run({"version"});
    EXPECT_EQ(command.status, 0) << command.err;
    EXPECT_EQ(command.out, option.out);
}

// The window runs commands without a terminal: "-" then has nothing to read.
TEST_F(ToolParser, ADashWithoutStandardInputIsOneLine) {
    auto result = run({"--data-dir", "/nowhere", "import", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "corvane: nothing on standard input\n");
}
