// A workspace's tiles through the tool, on workspaces taken from the sample Dock.

#include "app/cli/ToolFixtures.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;
using Json = nlohmann::json;

namespace {

class Tiles : public SampleDockTool {
  protected:
    Tiles() { ok({"new", "Work", "--from-dock"}); }

    Json tiles() { return Json::parse(ok({"tiles", "Work", "--json"}))["tiles"]; }
    std::string profiles() { return readText(dir / "data" / "profiles.json"); }
    std::size_t appCount() {
        std::size_t apps = 0;
        for (const auto& tile : tiles())
            apps += tile["section"] == "apps";
        return apps;
    }
};

} // namespace

TEST_F(Tiles, ListOneNumberingAcrossBothSectionsWithKindsAndItems) {
    auto list = tiles();
    ASSERT_GT(list.size(), 2u);
    auto apps = appCount();
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i]["index"], i + 1);
        EXPECT_EQ(list[i]["section"], i < apps ? "apps" : "others");
        EXPECT_TRUE(list[i].contains("item") && list[i].contains("name") && list[i].contains("kind"));
    }
    auto text = ok({"tiles", "Work"});
    EXPECT_NE(text.find("  1  app "), std::string::npos) << text;
    EXPECT_NE(text.find("  --\n"), std::string::npos) << text;
}

TEST_F(Tiles, AddPutsEachKindInItsSectionAndReportsItsPlace) {
    auto apps = appCount();
    auto total = tiles().size();
    EXPECT_EQ(ok({"tiles", "add", "Work", "--app", "/Applications/Fake Notes.app", "--at", "1"}),
              "Added \"Fake Notes\" to \"Work\" as tile 1.\n");
    ok({"tiles", "add", "Work", "--spacer", "small"});
    ok({"tiles", "add", "Work", "--spacer"});
    ok({"tiles", "add", "Work", "--folder", "/Users/me/Projects/"});
    ok({"tiles", "add", "Work", "--link", "https://example.com/a", "--at", std::to_string(apps + 4)});
    auto list = tiles();
    ASSERT_EQ(list.size(), total + 5);
    EXPECT_EQ(list[0]["kind"], "app");
    EXPECT_EQ(list[0]["path"], "/Applications/Fake Notes.app");
    EXPECT_EQ(list[apps + 1]["kind"], "smallSpacer");
    EXPECT_EQ(list[apps + 2]["kind"], "spacer");
    EXPECT_EQ(list[apps + 3]["kind"], "link") << "--at places it first among the others";
    EXPECT_EQ(list[apps + 3]["section"], "others");
    EXPECT_EQ(list.back()["kind"], "folder");
    EXPECT_EQ(list.back()["path"], "/Users/me/Projects");
    EXPECT_EQ(list.back()["name"], "Projects");
}

TEST_F(Tiles, AnAppBundleGivesItsIdentifierAndName) {
    auto bundle = dir / "Mail Tool.app" / "Contents";
    std::filesystem::create_directories(bundle);
    writeText(bundle / "Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>com.example.mailtool</string></dict></plist>)");
    ok({"tiles", "add", "Work", "--app", (dir / "Mail Tool.app").string()});
    auto app = tiles()[appCount() - 1];
    EXPECT_EQ(app["bundleIdentifier"], "com.example.mailtool");
    EXPECT_EQ(app["name"], "Mail Tool");
}

TEST_F(Tiles, RemoveAndMoveKeepTilesInTheirSections) {
    auto before = tiles();
    auto apps = appCount();
    EXPECT_EQ(ok({"tiles", "move", "Work", "1", std::to_string(apps)}),
              "Moved " + Json(before[0]["name"]).dump() + " to tile " + std::to_string(apps) +
                  " of \"Work\".\n");
    auto moved = tiles();
    EXPECT_EQ(moved[apps - 1]["item"], before[0]["item"]);
    EXPECT_EQ(moved[0]["item"], before[1]["item"]);

    ok({"tiles", "remove", "Work", std::to_string(apps + 1)});
    auto removed = tiles();
    ASSERT_EQ(removed.size(), before.size() - 1);
    EXPECT_EQ(removed[apps]["item"], before[apps + 1]["item"]);
}

TEST_F(Tiles, RefusedChangesSayWhyInOneLineAndChangeNothing) {
    auto apps = appCount();
    auto total = tiles().size();
    ok({"tiles", "add", "Work", "--app", "/Applications/Fake Notes.app"});
    const auto before = profiles();
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string error;
    };
    const Case cases[] = {
        {{"tiles", "add", "Work"}, 2, "give one of --app, --folder, --file, --link or --spacer"},
        {{"tiles", "add", "Work", "--app", "/A.app", "--link", "https://x"}, 2, "give one of"},
        {{"tiles", "add", "Work", "--app", "/Applications/Notes"}, 2, "ending in .app"},
        {{"tiles", "add", "Work", "--link", "example.com"}, 2, "a URL with its scheme"},
        {{"tiles", "add", "Work", "--spacer", "huge"}, 2, "--spacer takes spacer, small or flex"},
        {{"tiles", "add", "Work", "--app", "/Applications/Fake Notes.app"}, 1, "is already tile"},
        {{"tiles", "add", "Work", "--app", "/B.app", "--at", std::to_string(apps + 3)},
         2,
         "--at must be 1 to " + std::to_string(apps + 2)},
        {{"tiles", "add", "Work", "--file", "/f.txt", "--at", "1"},
         2,
         "--at must be " + std::to_string(apps + 2)},
        {{"tiles", "remove", "Work", "0"},
         2,
         "INDEX must be a tile of \"Work\", 1 to " + std::to_string(total + 1)},
        {{"tiles", "move", "Work", "1", std::to_string(apps + 2)}, 2, "stays in the apps section"},
        {{"tiles", "move", "Work", std::to_string(total + 1), "1"}, 2, "stays in the others section"},
        {{"tiles", "Nowhere"}, 1, "no workspace matches"},
    };
    for (const auto& c : cases) {
        auto result = run(c.arguments);
        EXPECT_EQ(result.status, c.status) << result.err;
        EXPECT_NE(result.err.find(c.error), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
    EXPECT_EQ(profiles(), before);
}

TEST_F(Tiles, AWidgetsPlaceIsLeftToTheWidgetCommands) {
    auto id = firstLine(ok({"widgets", "add", "timer", "--name", "Tea"}));
    ok({"widgets", "show", id, "--in", "Work"});
    auto list = tiles();
    auto widget =
        std::find_if(list.begin(), list.end(), [](const Json& tile) { return tile["kind"] == "widget"; });
    ASSERT_NE(widget, list.end());
    EXPECT_EQ((*widget)["name"], "Tea");
    EXPECT_EQ((*widget)["widget"], id);
    auto result = run({"tiles", "remove", "Work", (*widget)["index"].dump()});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("corvane widgets hide"), std::string::npos) << result.err;
}
