#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "fakes/RunProgram.hpp"

#include <gtest/gtest.h>

#include <chrono>

using namespace corvane;

namespace {

struct Home {
    TemporaryDirectory home;
    ProgramResult run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--data-dir", (home / "data").string()});
        return runProgram(CORVANE_TOOL, arguments, {"HOME=" + home.path().string(), "TZ=UTC"});
    }
    std::filesystem::path settings() const { return home / ".claude/settings.json"; }
};

/// The tool reads the real clock, so transcripts are stamped relative to it.
std::string stampedAgo(double seconds) {
    using namespace std::chrono;
    auto now = duration<double>(system_clock::now().time_since_epoch()).count();
    return iso8601(Date::fromUnixTime(now - seconds));
}

std::string line(const std::string& id, double secondsAgo, int input, int output) {
    return R"({"type":"assistant","message":{"id":"m)" + id + R"(","usage":{"input_tokens":)" + std::to_string(input) +
           R"(,"output_tokens":)" + std::to_string(output) + R"(}},"requestId":"r)" + id + R"(","timestamp":")" +
           stampedAgo(secondsAgo) + "\"}\n";
}

} // namespace

TEST(UsageCommands, ReportsEveryPeriodTheBusiestProjectsAndTheSameAsJson) {
    Home h;
    const double day = 86400;
    writeText(h.home / ".claude/projects/-Users-ann-src-atlas/a.jsonl",
              line("1", 9 * day, 900000, 0) + line("2", 3 * day, 1000, 0) + line("3", 600, 2000, 500) +
                  line("3", 590, 2000, 900) + "{broken\n");
    writeText(h.home / ".claude/projects/-Users-ann-src-corvane-c0ffee/b.jsonl", line("4", 3600, 1500, 0));

    auto json = h.run({"usage", "--json", "--scope", "week"});
    ASSERT_EQ(json.status, 0) << json.err;
    auto report = Json::parse(json.out);
    EXPECT_EQ(report["scope"], "week");
    EXPECT_EQ(report["byScope"]["block"]["tokens"], 4400);
    EXPECT_EQ(report["byScope"]["block"]["messages"], 2);
    EXPECT_EQ(report["byScope"]["week"]["tokens"], 5400);
    EXPECT_EQ(report["totals"], report["byScope"]["week"]);
    EXPECT_EQ(report["totals"]["projects"],
              Json::parse(R"([{"name": "atlas", "tokens": 3900}, {"name": "corvane", "tokens": 1500}])"));
    EXPECT_EQ(report["isConnected"], false);
    EXPECT_FALSE(report.contains("limits"));

    // The next run starts from what this one kept, and agrees with a run without it.
    const auto cache = h.home / "data/claude-usage.cache";
    EXPECT_TRUE(std::filesystem::exists(cache));
    std::ofstream(h.home / ".claude/projects/-Users-ann-src-atlas/a.jsonl", std::ios::app) << line("5", 60, 100, 0);
    auto appended = h.run({"usage", "--json", "--scope", "week"});
    EXPECT_EQ(Json::parse(appended.out)["byScope"]["week"]["tokens"], 5500);
    std::filesystem::remove(cache);
    EXPECT_EQ(h.run({"usage", "--json", "--scope", "week"}).out, appended.out);

    auto text = h.run({"usage"});
    ASSERT_EQ(text.status, 0) << text.err;
    EXPECT_NE(text.out.find("Last 5 hours      4.5k"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("Busiest projects (Last 5 hours)\n  atlas    3.0k\n  corvane  1.5k\n"), std::string::npos)
        << text.out;

    auto elsewhere = h.run({"usage", "--root", (h.home / "nothing").string()});
    EXPECT_EQ(elsewhere.status, 1);
    EXPECT_EQ(elsewhere.err, "corvane: Claude Code has not run here\n");
    EXPECT_EQ(h.run({"usage", "--scope", "month"}).status, 2);
}

TEST(UsageCommands, ConnectStatusAndDisconnectRoundTheStatusLine) {
    Home h;
    auto refused = h.run({"usage", "connect"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "corvane: Failed to find ~/.claude because Claude Code has not run here.\n");

    const std::string original = R"({"statusLine": {"type": "command", "command": "starship prompt"}})";
    writeText(h.settings(), original);
    auto connected = h.run({"usage", "connect"});
    ASSERT_EQ(connected.status, 0) << connected.err;
    auto script = h.home / "data/claude-statusline.sh";
    EXPECT_EQ(connected.out, "Connected: Claude Code's status line now runs " + script.string() +
                                 ".\nIt still hands every redraw to: starship prompt\n");
    EXPECT_TRUE(h.run({"usage", "status"}).out.starts_with("Claude Code is handing the numbers over.\nPlan limits: "
                                                           "Waiting for Claude Code.\n"));

    writeText(h.home / "data/claude-usage.json",
              R"({"rate_limits": {"seven_day": {"used_percentage": 18.4}}, "subscription_type": "max"})");
    auto status = h.run({"usage", "status", "--json"});
    auto limits = Json::parse(status.out)["limits"];
    EXPECT_EQ(limits["sevenDay"]["usedPercentage"], 18.4);
    EXPECT_EQ(limits["subscriptionType"], "max");
    EXPECT_NE(h.run({"usage", "status"}).out.find("Weekly limit    18%\nRead just now, plan max.\n"), std::string::npos);

    auto disconnected = h.run({"usage", "disconnect"});
    ASSERT_EQ(disconnected.status, 0) << disconnected.err;
    EXPECT_EQ(disconnected.out, "Disconnected: Claude Code's status line runs starship prompt again.\n");
    EXPECT_EQ(Json::parse(readText(h.settings()))["statusLine"]["command"], "starship prompt");
    EXPECT_FALSE(std::filesystem::exists(script));

    auto again = h.run({"usage", "disconnect"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.err, "corvane: Failed to disconnect because the status line is not Corvane's.\n");
    EXPECT_EQ(h.run({"usage", "status"}).out.rfind("Not connected.\n", 0), 0u);
}
