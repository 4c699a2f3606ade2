#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageBridge.hpp"
#include "fakes/RunProgram.hpp"
#include "widgetsui/usage/TranscriptFixtures.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace corvane;

namespace {

struct Bridge {
    TemporaryDirectory home;
    ClaudeUsageBridge bridge{home.path(), home / "Library/Application Support/Corvane"};

    Bridge() { std::filesystem::create_directories(home / ".claude"); }
    Json settings() const { return Json::parse(readText(bridge.settingsURL())); }
    std::string scriptLine(std::size_t index) const { return text::split(readText(bridge.scriptURL()), '\n').at(index); }
};

/// Feeds `input` to the installed script the way Claude Code does.
ProgramResult runScript(const Bridge& b, const std::string& input) {
    writeText(b.home / "input.json", input);
    return runProgram("/bin/sh", {"-c", "sh \"$0\" < \"$1\"", b.bridge.scriptURL().string(), (b.home / "input.json").string()},
                      {"PATH=/usr/bin:/bin"});
}

} // namespace

TEST(ClaudeUsageBridge, ConnectKeepsTheUsersStatusLineAndDisconnectPutsItBackAsTheScriptHoldsIt) {
    Bridge b;
    const std::string original = R"({"model": "opus", "statusLine": {"type": "command", "command": "ccline --theme 'dark'", "padding": 0}})";
    writeText(b.bridge.settingsURL(), original);
    EXPECT_FALSE(b.bridge.isConnected());

    b.bridge.connect();
    EXPECT_TRUE(b.bridge.isConnected());
    EXPECT_EQ(readText(b.bridge.backupURL()), original);
    auto settings = b.settings();
    EXPECT_EQ(settings["model"], "opus");
    EXPECT_EQ(settings["statusLine"],
              Json({{"type", "command"}, {"command", b.bridge.scriptURL().string()}, {"refreshInterval", 30}, {"padding", 0}}));
    EXPECT_EQ(b.scriptLine(9), R"(PREVIOUS='ccline --theme '\''dark'\''')");
    EXPECT_EQ(b.scriptLine(10), "PAYLOAD='" + b.bridge.payloadURL().string() + "'");
    EXPECT_EQ(readText(b.bridge.scriptURL()), ClaudeUsageBridge::script("ccline --theme 'dark'", b.bridge.payloadURL()));
    struct stat info {};
    ASSERT_EQ(::stat(b.bridge.scriptURL().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0755u);
    EXPECT_EQ(readText(b.bridge.settingsURL()).find("\\/"), std::string::npos) << "slashes are not escaped";

    b.bridge.disconnect();
    EXPECT_FALSE(b.bridge.isConnected());
    EXPECT_FALSE(std::filesystem::exists(b.bridge.scriptURL()));
    // The command comes back as it was; the interval connect set stays where there was none.
    EXPECT_EQ(b.settings()["statusLine"], Json({{"type", "command"},
                                                {"command", "ccline --theme 'dark'"},
                                                {"refreshInterval", 30},
                                                {"padding", 0}}));
    EXPECT_EQ(readText(b.bridge.backupURL()), original) << "the backup keeps what the person had";
}

TEST(ClaudeUsageBridge, ConnectingTwiceChainsNothingAndDisconnectThenRemovesTheStatusLine) {
    Bridge b;
    b.bridge.connect(); // no settings file yet: an empty one
    EXPECT_FALSE(std::filesystem::exists(b.bridge.backupURL()));
    b.bridge.connect();
    EXPECT_EQ(b.scriptLine(9), "PREVIOUS=''");
    EXPECT_EQ(b.bridge.chainedCommand(), std::nullopt);
    b.bridge.disconnect();
    EXPECT_EQ(b.settings(), Json::object());
}

TEST(ClaudeUsageBridge, RefusalsSayWhyAndChangeNothing) {
    TemporaryDirectory bare;
    ClaudeUsageBridge noClaude(bare.path(), bare / "support");
    auto refused = thrown<ClaudeUsageBridge::BridgeError>([&] { noClaude.connect(); }).value();
    EXPECT_EQ(refused.kind, ClaudeUsageBridge::BridgeError::Kind::noClaudeFolder);
    EXPECT_STREQ(refused.what(), "Failed to find ~/.claude because Claude Code has not run here.");
    EXPECT_FALSE(std::filesystem::exists(bare / "support"));

    Bridge b;
    for (auto broken : {"[1, 2]", "{\"statusLine\": ", ""}) {
        writeText(b.bridge.settingsURL(), broken);
        EXPECT_THROW(b.bridge.connect(), ClaudeUsageBridge::BridgeError) << broken;
        EXPECT_EQ(readText(b.bridge.settingsURL()), broken);
        EXPECT_FALSE(std::filesystem::exists(b.bridge.scriptURL()));
    }
    EXPECT_STREQ(thrown<ClaudeUsageBridge::BridgeError>([&] { b.bridge.disconnect(); }).value().what(),
                 "Failed to read ~/.claude/settings.json because it is not valid JSON.");
    writeText(b.bridge.settingsURL(), "{}");
    EXPECT_STREQ(thrown<ClaudeUsageBridge::BridgeError>([&] { b.bridge.disconnect(); }).value().what(),
                 "Failed to disconnect because the status line is not Corvane's.");
    const std::string shapeless = R"({"statusLine": "ccline"})";
    writeText(b.bridge.settingsURL(), shapeless);
    EXPECT_EQ(thrown<ClaudeUsageBridge::BridgeError>([&] { b.bridge.connect(); }).value().kind,
              ClaudeUsageBridge::BridgeError::Kind::statusLineNotAnObject);
    EXPECT_EQ(readText(b.bridge.settingsURL()), shapeless);
    EXPECT_FALSE(std::filesystem::exists(b.bridge.scriptURL()));

    // Someone pointed the status line elsewhere by hand: it is theirs now.
    writeText(b.bridge.settingsURL(), "{}");
    b.bridge.connect();
    const std::string foreign = R"({"statusLine": {"type": "command", "command": "starship"}})";
    writeText(b.bridge.settingsURL(), foreign);
    EXPECT_THROW(b.bridge.disconnect(), ClaudeUsageBridge::BridgeError);
    EXPECT_EQ(readText(b.bridge.settingsURL()), foreign);
}

TEST(ClaudeUsageBridge, TheScriptKeepsEachPayloadAndHandsItToThePreviousStatusLine) {
    Bridge b;
    auto seen = b.home / "seen by previous.json";
    writeText(b.bridge.settingsURL(),
              Json({{"statusLine", {{"command", "cat > '" + seen.string() + "'; printf drawn; exit 3"}}}}).dump());
    b.bridge.connect();
    const std::string payload = R"({"rate_limits": {"five_hour": {"used_percentage": 42}}, "note": "it's"})";
    auto result = runScript(b, payload);
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_EQ(result.out, "drawn");
    EXPECT_EQ(readText(b.bridge.payloadURL()), payload);
    EXPECT_EQ(readText(seen), payload);

    auto limits = b.bridge.limits(june(0));
    ASSERT_TRUE(limits);
    EXPECT_EQ(limits->fiveHour->usedPercentage, 42);
    setModified(b.bridge.payloadURL(), june(-3));
    EXPECT_EQ(b.bridge.limits(june(0))->readAt, june(-3));
    std::filesystem::remove(b.bridge.payloadURL());
    EXPECT_EQ(b.bridge.limits(june(0)), std::nullopt);
}

TEST(ClaudeUsageBridge, WithoutAPreviousStatusLineTheScriptDrawsAPlainOne) {
    if (!std::filesystem::exists("/usr/bin/python3")) GTEST_SKIP() << "no /usr/bin/python3";
    Bridge b;
    b.bridge.connect();
    auto result = runScript(b, R"({"model": {"display_name": "Opus"}, "workspace": {"current_dir": "/Users/ann/src/atlas/"},
        "rate_limits": {"five_hour": {"used_percentage": 41.6, "resets_at": 99999999999}}})");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(result.out.starts_with("Opus · atlas · 42% · ")) << result.out;
    EXPECT_TRUE(result.out.ends_with("m left")) << result.out;
    EXPECT_EQ(runScript(b, "not json").out, "");
    EXPECT_EQ(readText(b.bridge.payloadURL()), "not json");
}

TEST(ClaudeUsageBridge, ConnectThenDisconnectGivesEveryStatusLineBackAsItWas) {
    const auto real = Json::parse(readText(std::string(CORVANE_TEST_DATA) + "/claude/settings-01-mu.json"));
    const std::vector<Json> lines = {
        {{"type", "command"}, {"command", "ccline --theme 'dark' --sep ' | '"}},
        {{"type", "command"}, {"command", "printf 'a'\nprintf \"b\"\n"}, {"padding", 0}},
        {{"type", "command"}, {"command", "bash \"$(dirname ~/x)/status line.sh\" '$HOME' \\'"}, {"refreshInterval", 5}},
        {{"type", "command"}, {"command", "~/.claude/statusline.sh"}, {"refreshInterval", 60.5}},
        {{"type", "command"}, {"command", "'"}},
    };
    for (const auto& line : lines) {
        SCOPED_TRACE(line.dump());
        for (bool linked : {false, true}) {
            Bridge b;
            auto before = real;
            before["statusLine"] = line;
            // A settings file kept in a dotfiles folder and linked here, read-only as some keep it.
            auto file = linked ? b.home / "dotfiles/claude/settings.json" : b.bridge.settingsURL();
            writeText(file, before.dump(2));
            ::chmod(file.c_str(), linked ? 0444 : 0640);
            if (linked) std::filesystem::create_symlink(file, b.bridge.settingsURL());

            b.bridge.connect();
            b.bridge.connect(); // twice: the person's status line must survive it
            EXPECT_EQ(b.bridge.chainedCommand(), line["command"].get<std::string>());
            b.bridge.disconnect();
            auto after = before;
            // The interval connect set stays only where the person had none of their own.
            if (!line.contains("refreshInterval")) after["statusLine"]["refreshInterval"] = 30;
            EXPECT_EQ(Json::parse(readText(file)), after);
            EXPECT_EQ(Json::parse(readText(b.bridge.backupURL())), before);
            EXPECT_EQ(std::filesystem::is_symlink(b.bridge.settingsURL()), linked);
            struct stat info {};
            ASSERT_EQ(::stat(file.c_str(), &info), 0);
            EXPECT_EQ(info.st_mode & 07777, linked ? 0444u : 0640u);
        }
    }
}

TEST(ClaudeUsageBridge, AKeptCommandOfSeveralLinesRunsWhole) {
    Bridge b;
    writeText(b.bridge.settingsURL(), Json({{"statusLine", {{"command", "printf 'it'\\''s '\nprintf \"%s\" \"$(cat | wc -c | tr -d ' ')\""}}}}).dump());
    b.bridge.connect();
    auto result = runScript(b, "12345");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "it's 5");
}
