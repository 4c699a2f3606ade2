#include "app/cli/ToolFixtures.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;

TEST(LooksCommands, ThemesListEveryThemeWithTheSeasonalOnesLast) {
    Installation here;
    auto listed = here.run({"themes", "--json"});
    ASSERT_EQ(listed.status, 0) << listed.err;
    auto themes = nlohmann::json::parse(listed.out);
    ASSERT_EQ(themes.size(), 15u);
    EXPECT_EQ(themes[0]["id"], "native");
    EXPECT_EQ(themes[3]["background"],
              nlohmann::json::parse(
                  R"({"kind": "gradient", "topHex": "#3A3F4B", "bottomHex": "#0E1014",
                                               "opacity": 0.82})"));
    EXPECT_EQ(themes[14]["decoration"]["outline"]["stripes"], "#D7263D");
    EXPECT_TRUE(themes[9]["seasonal"]);
    EXPECT_TRUE(themes[0]["chosen"]);
    EXPECT_NE(here.run({"themes"}).out.find("* native "), std::string::npos);
    ASSERT_EQ(here.run({"prefs", "set", "dockStyle", R"({"themeID": "candy-corn"})"}).status, 0);
    EXPECT_FALSE(nlohmann::json::parse(here.run({"themes", "--json"}).out)[0]["chosen"]);
    auto text = here.run({"themes"}).out;
    EXPECT_NE(text.find("  native "), std::string::npos) << text;
    EXPECT_NE(
        text.find(
            "* candy-corn     Candy Corn     gradient #FFF8EC → #F5E5CC, leaves, leaves edge, 4 pumpkin "
            "lights\n"),
        std::string::npos)
        << text;
}

TEST(LooksCommands, IconsUseAndResolveExplainTheChoice) {
    Installation here;
    writeText(here.data / "IconPacks/mono/com.apple.Safari.png", "not decodable");
    writeText(here.data / "IconPacks/mono/pack.json", R"({"name": "Mono", "author": "Ada", "padding": 0.5})");
    auto app = (here.data / "Safari.app").string();
    writeText(here.data / "Safari.app/Contents/Info.plist",
              "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.apple.Safari</string>"
              "</dict></plist>");

    EXPECT_EQ(here.run({"icons", "packs"}).out, "  mono \"Mono\" by Ada: 1 icon, padded by 40%\n");
    EXPECT_EQ(here.run({"icons", "resolve", app}).out,
              "Safari (com.apple.Safari)\n  draws the system icon: no icon pack is chosen\n");

    auto unknown = here.run({"icons", "use", "Neon"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.err, "corvane: no icon pack is called \"Neon\" (corvane icons packs lists them)\n");
    EXPECT_FALSE(std::filesystem::exists(here.data / "icons.json"));
    EXPECT_EQ(here.run({"icons", "use", "mono", "--original"}).status, 2);

    EXPECT_EQ(here.run({"icons", "use", "MONO"}).out, "Every app now uses icon pack \"Mono\".\n");
    EXPECT_EQ(here.run({"icons", "packs"}).out.substr(0, 7), "* mono ");
    auto resolved = nlohmann::json::parse(here.run({"icons", "resolve", app, "--json"}).out);
    EXPECT_EQ(resolved["reason"], "defaultPack");
    EXPECT_EQ(resolved["match"], "bundle identifier");
    EXPECT_EQ(resolved["source"], "system"); // the chosen image does not decode
    EXPECT_TRUE(resolved["undecodable"]);

    EXPECT_EQ(here.run({"icons", "use", "--original", "--for", app}).out,
              "Safari now uses its original icon.\n");
    EXPECT_EQ(nlohmann::json::parse(readText(here.data / "icons.json")),
              nlohmann::json::parse(
                  R"({"defaultPackID": "mono", "perApp": {"com.apple.Safari": {"original": {}}}})"));
    EXPECT_EQ(here.run({"icons", "resolve", app}).out,
              "Safari (com.apple.Safari)\n  draws the system icon: the original icon is chosen for it\n");

    writeText(here.data / "icons.json", "{ broken");
    auto broken = here.run({"icons", "use", "mono"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(readText(here.data / "icons.json"), "{ broken");
}

TEST(LooksCommands, StackListsAFolderInTheChosenOrder) {
    Installation here;
    auto folder = here.data / "stack";
    for (std::string name : {"file10.txt", "file9.txt", "Notes.md", ".hidden"})
        writeText(folder / name, "x");
    std::filesystem::create_directories(folder / "Archive");

    auto names = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"stack", folder.string(), "--json"});
        std::vector<std::string> result;
        for (const auto& item : nlohmann::json::parse(here.run(arguments).out))
            result.push_back(item["name"]);
        return result;
    };
    EXPECT_EQ(names({}), (std::vector<std::string>{"Archive", "file9.txt", "file10.txt", "Notes.md"}));
    EXPECT_EQ(names({"--sort", "kind"}),
              (std::vector<std::string>{"Archive", "Notes.md", "file9.txt", "file10.txt"}));
    auto text = here.run({"stack", folder.string()}).out;
    EXPECT_EQ(text.substr(0, 20), "Archive/    folder  ");

    EXPECT_EQ(here.run({"stack", folder.string(), "--sort", "size"}).status, 2);
    auto missing = here.run({"stack", (here.data / "nowhere").string()});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "corvane: no folder at " + (here.data / "nowhere").string() + "\n");
}
