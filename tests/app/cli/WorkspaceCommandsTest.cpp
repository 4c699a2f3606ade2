// The corvane tool end to end, run as a separate process on a throw-away data folder.

#include "CorvaneCore/support/Text.hpp"
#include "app/cli/ToolFixtures.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

class Tool : public EnvironmentTool {
protected:
    std::string profiles() const { return readText(data / "profiles.json"); }
};

} // namespace

TEST_F(Tool, ReadingCommandsWriteNothing) {
    EXPECT_NE(ok({"list"}).find("No workspaces yet"), std::string::npos);
    EXPECT_EQ(ok({"list", "--json"}), "{\n  \"profiles\": [],\n  \"version\": 2\n}\n");
    EXPECT_FALSE(std::filesystem::exists(data / "profiles.json"));
}

TEST_F(Tool, WorkspaceLifecycle) {
    auto id = firstLine(ok({"new", "Work", "--color", "green"}));
    EXPECT_EQ(id.size(), 36u);
    ok({"new", "Play"});
    ok({"edit", "work", "--hotkey", "ctrl+opt+1", "--indicator", "#ff8800", "--other-apps", "quit", "--focus", "Deep Work"});
    ok({"activate", id});
    ok({"rename", "Play", "Games"});

    auto list = ok({"list"});
    EXPECT_NE(list.find("* Work"), std::string::npos);
    EXPECT_NE(list.find("⌃⌥1"), std::string::npos);
    EXPECT_NE(list.find("  Games"), std::string::npos);

    auto shown = ok({"show", "WORK", "--json"});
    EXPECT_NE(shown.find("\"indicatorColorHex\": \"#FF8800\""), std::string::npos);
    EXPECT_NE(shown.find("\"otherWorkspaceApps\": \"quit\""), std::string::npos);
    EXPECT_NE(shown.find("\"focusModeBinding\": \"Deep Work\""), std::string::npos);
    EXPECT_NE(shown.find("\"keyCode\": 18"), std::string::npos);
    EXPECT_EQ(ok({"list", "--json"}), profiles()) << "list --json prints the file as it is";

    ok({"edit", "Work", "--no-hotkey", "--no-indicator", "--no-focus"});
    shown = ok({"show", "Work", "--json"});
    EXPECT_EQ(shown.find("hotkey"), std::string::npos);
    EXPECT_EQ(shown.find("indicatorColorHex"), std::string::npos);
    EXPECT_EQ(shown.find("focusModeBinding"), std::string::npos);

    ok({"delete", "Work"});
    EXPECT_EQ(profiles().find("activeProfileId"), std::string::npos);
    EXPECT_EQ(profiles().find("\"Work\""), std::string::npos);
}

TEST_F(Tool, WorkspaceArgumentsMatchIdNameCaseAndUniquePrefix) {
    auto id = firstLine(ok({"new", "Writing"}));
    ok({"new", "Work"});
    ok({"new", "work"});
    EXPECT_NE(ok({"show", "Work"}).find("Work\n"), std::string::npos);
    EXPECT_NE(ok({"show", text::lowercased(id)}).find("Writing"), std::string::npos);
    EXPECT_NE(ok({"show", "writ"}).find("Writing"), std::string::npos);
    auto ambiguous = run({"show", "wo"});
    EXPECT_EQ(ambiguous.status, 1);
    EXPECT_NE(ambiguous.err.find("corvane: \"wo\" matches several workspaces: \"Work\""), std::string::npos);
    auto missing = run({"show", "zzz"});
    EXPECT_EQ(missing.err, "corvane: no workspace matches \"zzz\"\n");
}

TEST_F(Tool, RefusedHotkeysAndBadArgumentsChangeNothing) {
    ok({"new", "Work"});
    ok({"new", "Play"});
    ok({"edit", "Work", "--hotkey", "cmd+shift+k"});
    const auto before = profiles();

    auto taken = run({"edit", "Play", "--hotkey", "shift+cmd+K"});
    EXPECT_EQ(taken.status, 1);
    EXPECT_EQ(taken.err, "corvane: hotkey ⇧⌘K is already used by workspace \"Work\"\n");
    auto shiftOnly = run({"edit", "Play", "--hotkey", "shift+k"});
    EXPECT_EQ(shiftOnly.status, 1);
    EXPECT_NE(shiftOnly.err.find("needs command, option or control"), std::string::npos);

    struct Case {
        std::vector<std::string> arguments;
        std::string error;
    };
    const Case usage[] = {
        {{"edit", "Play", "--hotkey", "hyper+k"}, "unknown modifier \"hyper\""},
        {{"edit", "Play", "--hotkey", "ctrl+F13"}, "unknown key \"F13\""},
        {{"edit", "Play", "--color", "teal"}, "unknown colour \"teal\""},
        {{"edit", "Play", "--indicator", "#12345"}, "is not a colour like #RRGGBB"},
        {{"edit", "Play", "--other-apps", "minimise"}, "--other-apps takes keep, hide or quit"},
        {{"edit", "Play"}, "nothing to change"},
        {{"edit", "Play", "--hotkey", "ctrl+1", "--no-hotkey"}, "excludes"},
        {{"rename", "Play", "  "}, "not blank"},
        {{"frobnicate"}, ""},
    };
    for (const auto& c : usage) {
        auto result = run(c.arguments);
        EXPECT_EQ(result.status, 2) << c.arguments[0] << " " << result.err;
        EXPECT_NE(result.err.find(c.error), std::string::npos) << result.err;
        EXPECT_TRUE(result.err.starts_with("corvane: ")) << result.err;
    }
    EXPECT_EQ(profiles(), before);
}

TEST_F(Tool, DamagedWorkspacesFileFailsEveryCommandAndStaysByteForByte) {
    const std::string damaged = "{\"version\": 2, \"profiles\": [{\"items\": [{}]}]}";
    writeText(data / "profiles.json", damaged);
    for (std::vector<std::string> command : std::vector<std::vector<std::string>>{
             {"list"}, {"list", "--json"}, {"show", "x"}, {"new", "A"}, {"activate", "x"}, {"delete", "x"}}) {
        auto result = run(command);
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, "corvane: cannot decode " + (data / "profiles.json").string() +
                                  ": profiles[0].items[0]: Invalid number of keys found, expected one.\n");
        EXPECT_EQ(result.out, "");
    }
    writeText(data / "profiles.json", "{\"version\": 2, \"profiles\": [");
    auto truncated = run({"list"});
    EXPECT_EQ(truncated.status, 1);
    EXPECT_NE(truncated.err.find("not valid JSON"), std::string::npos);
    EXPECT_EQ(std::count(truncated.err.begin(), truncated.err.end(), '\n'), 1);
    EXPECT_EQ(profiles(), "{\"version\": 2, \"profiles\": [");
}

TEST_F(Tool, DataDirOptionWinsOverTheEnvironment) {
    TemporaryDirectory other;
    auto result = runProgram(CORVANE_TOOL, {"--data-dir", other.path().string(), "new", "Elsewhere"},
                             {"CORVANE_APP_SUPPORT_DIR=" + data.path().string()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::exists(other / "profiles.json"));
    EXPECT_FALSE(std::filesystem::exists(data / "profiles.json"));
}

TEST_F(Tool, MovePutsAWorkspaceAtAPlaceOfTheList) {
    ok({"new", "One"});
    ok({"new", "Two"});
    ok({"new", "Three"});
    EXPECT_EQ(ok({"move", "Three", "1"}), "Moved \"Three\" to place 1 of 3.\n");
    ok({"move", "One", "3"});
    auto list = ok({"list"});
    EXPECT_LT(list.find("Three"), list.find("Two"));
    EXPECT_LT(list.find("Two"), list.find("One"));

    const auto before = profiles();
    for (const auto* position : {"0", "4", "x"}) {
        auto result = run({"move", "Two", position});
        EXPECT_EQ(result.status, 2) << position;
        EXPECT_TRUE(result.err.starts_with("corvane: ")) << result.err;
    }
    EXPECT_EQ(run({"move", "Two", "4"}).err, "corvane: POSITION must be 1 to 3, not 4\n");
    EXPECT_EQ(profiles(), before);
}
