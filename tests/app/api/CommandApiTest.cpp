#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/cli/SystemToolServices.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace corvane;

namespace {

/// The real commands on a data folder and a copy of the sample Dock of their own.
class CommandApiTest : public ::testing::Test {
protected:
    CommandApiTest() {
        std::filesystem::copy_file(std::filesystem::path(CORVANE_TEST_DATA) / "../../samples/com.apple.dock.plist",
                                   dir.path() / "dock.plist");
        system.services().environment["HOME"] = dir.path().string();
    }

    Json call(std::string_view words, const Json& body, int expected = 200) {
        auto reply = api.call(words, body.dump());
        EXPECT_EQ(reply.status, expected) << words << " " << body.dump() << " → " << reply.body;
        auto json = Json::parse(reply.body, nullptr, false);
        EXPECT_FALSE(json.is_discarded()) << reply.body;
        return json;
    }

    std::string profilesFile() const {
        std::ifstream file(dir.path() / "data" / "profiles.json");
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::vector<std::string> arguments(std::string_view words, const Json& body) {
        auto decoded = decodeCall(words, body.dump(), system.services());
        EXPECT_EQ(decoded.error, "");
        return decoded.arguments;
    }

    std::string refusal(std::string_view words, std::string_view body, int status) {
        auto decoded = decodeCall(words, body, system.services());
        EXPECT_EQ(decoded.status, status) << words << " " << body;
        return decoded.error;
    }

    TemporaryDirectory dir;
    SystemToolServices system;
    CommandApi api{system.services(), {dir.path() / "data", dir.path() / "dock.plist"}};
};

using Arguments = std::vector<std::string>;

} // namespace

TEST_F(CommandApiTest, ParametersBecomeTheCommandLineTheTerminalWouldType) {
    // Positionals by their help name, after "--" so that a leading dash stays a value.
    EXPECT_EQ(arguments("rename", {{"name", "-x"}, {"workspace", "Work"}}),
              (Arguments{"rename", "--", "Work", "-x"}));
    // Options by any of their long names, flags only when true, --json added where there is one.
    EXPECT_EQ(arguments("new", {{"name", "Deep"}, {"colour", "green"}, {"from-dock", true}}),
              (Arguments{"new", "--color=green", "--from-dock", "--", "Deep"}));
    EXPECT_EQ(arguments("new", {{"name", "Deep"}, {"from-dock", false}}), (Arguments{"new", "--", "Deep"}));
    EXPECT_EQ(arguments("widgets", Json::object()), (Arguments{"widgets", "--json"}));
    EXPECT_EQ(arguments("list", {{"json", false}}), (Arguments{"list"}));
    // Numbers as the terminal writes them; a repeated positional from an array.
    EXPECT_EQ(arguments("widgets/add", {{"kind", "timer"}, {"span", 2}}),
              (Arguments{"widgets", "add", "--span=2", "--", "timer"}));
    EXPECT_EQ(arguments("widgets/stack", {{"workspace", "W"}, {"widget", {"a", "b"}}}),
              (Arguments{"widgets", "stack", "--", "W", "a", "b"}));
    EXPECT_EQ(arguments("prefs/set", {{"name", "usesOwnDock"}, {"value", false}}),
              (Arguments{"prefs", "set", "--", "usesOwnDock", "false"}));
}

TEST_F(CommandApiTest, CallsThatCannotBeACommandLineAreRefusedWithOneLine) {
    EXPECT_EQ(refusal("nosuch", "{}", 404), "there is no command \"nosuch\"");
    EXPECT_EQ(refusal("widgets/nosuch", "{}", 404), "there is no command \"widgets/nosuch\"");
    // Commands that run until stopped are no calls, and words are plain command words.
    refusal("agent", "{}", 404);
    refusal("ui", "{}", 404);
    refusal("list/", "{}", 404);
    refusal("../list", "{}", 404);
    refusal("List", "{}", 404);
    EXPECT_EQ(refusal("list", "[1]", 400), "the parameters must be one JSON object");
    refusal("list", "{\"json\":", 400);
    EXPECT_EQ(refusal("rename", R"({"bogus": 1})", 400), "corvane rename has no parameter \"bogus\"");
    // What the caller named comes back escaped, so a line break in it cannot split the line.
    EXPECT_EQ(refusal("rename", R"({"a\nb": 1})", 400), R"(corvane rename has no parameter "a\nb")");
    EXPECT_EQ(refusal("agent/x\ny", "{}", 404), "there is no command \"agent\"");
    // Global options are the host's, not the caller's: the data folder cannot be changed.
    refusal("list", R"({"data-dir": "/"})", 400);
    refusal("list", R"({"help": true})", 400);
    EXPECT_EQ(refusal("list", R"({"json": "yes"})", 400), "\"json\" takes true or false");
    EXPECT_EQ(refusal("rename", R"({"workspace": {"a": 1}})", 400), "\"workspace\" takes text or a number");
    EXPECT_EQ(refusal("rename", R"({"workspace": ["a", "b"]})", 400), "\"workspace\" takes one value");
}

TEST_F(CommandApiTest, TheHostIsToldAfterEveryCallThatSucceededAndOnlyThen) {
    int looks = 0;
    CommandApi following{system.services(), {dir.path() / "data", dir.path() / "dock.plist", [&] { ++looks; }}};
    EXPECT_EQ(following.call("new", R"({"name": "Work"})").status, 200);
    EXPECT_EQ(following.call("rename", R"({"workspace": "Nope", "name": "X"})").status, 422);
    EXPECT_EQ(following.call("nosuch", "{}").status, 404);
    EXPECT_EQ(looks, 1);
}

TEST_F(CommandApiTest, CommandsAnswerTheirJsonOrWhatTheyMade) {
    auto made = call("new", {{"name", "<img src=x onerror=alert(1)>"}, {"color", "pink"}});
    EXPECT_EQ(made["ok"], true);
    ASSERT_TRUE(made["id"].is_string());

    auto listed = call("list", Json::object());
    ASSERT_TRUE(listed["profiles"].is_array());
    bool found = false;
    for (const auto& profile : listed["profiles"])
        if (profile["id"] == made["id"]) found = profile["name"] == "<img src=x onerror=alert(1)>";
    EXPECT_TRUE(found);

    auto renamed = call("rename", {{"workspace", made["id"]}, {"name", "Deep Work"}});
    EXPECT_EQ(renamed["message"], "Renamed \"<img src=x onerror=alert(1)>\" to \"Deep Work\".");

    // An export to "-" is JSON, and is the answer itself.
    auto exported = call("export", {{"file", "-"}, {"workspace", "Deep Work"}});
    EXPECT_TRUE(exported.is_object());
}

TEST_F(CommandApiTest, AFailedCallAnswersOneLineAndChangesNothing) {
    call("new", {{"name", "Work"}});
    auto before = profilesFile();

    auto missing = call("rename", {{"workspace", "nope"}, {"name", "x"}}, 422);
    EXPECT_EQ(missing["error"], "no workspace matches \"nope\"");
    auto misuse = call("edit", {{"workspace", "Work"}, {"color", "teal"}}, 400);
    EXPECT_NE(misuse["error"].get<std::string>().find("unknown colour"), std::string::npos);
    EXPECT_EQ(misuse["error"].get<std::string>().find('\n'), std::string::npos);
    call("edit", {{"workspace", "Work"}, {"hotkey", "x"}}, 400);
    call("rename", {{"workspace", "Work"}}, 400);

    EXPECT_EQ(profilesFile(), before);
}
