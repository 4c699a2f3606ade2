// apps, desktops and permissions on a system without the Mac's services.

#include "app/cli/ToolFixtures.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;
using Json = nlohmann::json;

namespace {

void bundle(const std::filesystem::path& app, const std::string& info) {
    std::filesystem::create_directories(app / "Contents");
    writeText(app / "Contents/Info.plist", "<plist version=\"1.0\"><dict>" + info + "</dict></plist>");
}

} // namespace

TEST(SystemCommands, AppsListsTheBundlesOfTheHomeApplicationsFolderByName) {
    Installation here;
    EXPECT_EQ(here.run({"apps"}).out, "No applications are installed here.\n");
    EXPECT_EQ(Json::parse(here.run({"apps", "--json"}).out), Json::array());

    auto folder = here.data / "Applications";
    bundle(folder / "zed.app", "<key>CFBundleIdentifier</key><string>dev.zed</string>"
                               "<key>CFBundleName</key><string>Zed</string>");
    bundle(folder / "Notes.app", "<key>CFBundleIdentifier</key><string>com.example.notes</string>");
    std::filesystem::create_directories(folder / "Broken.app");
    std::filesystem::create_directories(folder / "Not an app");
    writeText(folder / "file.app", "a file, no bundle");

    auto apps = Json::parse(here.run({"apps", "--json"}).out);
    ASSERT_EQ(apps.size(), 3u) << apps.dump();
    EXPECT_EQ(apps[0]["name"], "Broken");
    EXPECT_FALSE(apps[0].contains("bundleIdentifier"));
    EXPECT_EQ(apps[1], (Json{{"name", "Notes"},
                             {"path", (folder / "Notes.app").string()},
                             {"bundleIdentifier", "com.example.notes"}}));
    EXPECT_EQ(apps[2]["name"], "Zed") << "CFBundleName names it";
    EXPECT_NE(here.run({"apps"}).out.find("Notes   com.example.notes  " + (folder / "Notes.app").string()),
              std::string::npos);
}

TEST(SystemCommands, DesktopsAreThoseTheWorkspacesAreBoundToWithoutTheWindowServer) {
    Installation here;
    EXPECT_NE(here.run({"desktops"}).out.find("No desktops known"), std::string::npos);
    here.run({"new", "Work"});
    here.run({"new", "Play"});
    here.run({"desktop", "bind", "Work", "AAAA-1"});
    here.run({"desktop", "bind", "Play", "BBBB-2"});
    auto desktops = Json::parse(here.run({"desktops", "--json"}).out);
    ASSERT_EQ(desktops.size(), 2u);
    EXPECT_EQ(desktops[0]["uuid"], "AAAA-1");
    EXPECT_EQ(desktops[0]["workspaceName"], "Work");
    EXPECT_EQ(desktops[1]["workspaceName"], "Play");
    EXPECT_NE(here.run({"desktops"}).out.find("  Desktop  BBBB-2  brings \"Play\"\n"), std::string::npos);
}

TEST(SystemCommands, PermissionsAreNotNeededWhereTheSystemAsksNone) {
    Installation here;
    auto permissions = Json::parse(here.run({"permissions", "--json"}).out);
    ASSERT_EQ(permissions.size(), 3u);
    std::vector<std::string> names;
    for (const auto& permission : permissions) {
        names.push_back(permission["name"]);
        EXPECT_EQ(permission["state"], "not needed");
        EXPECT_FALSE(permission["reason"].get<std::string>().empty());
        EXPECT_FALSE(permission["pane"].get<std::string>().empty());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Accessibility", "Focus status", "Notifications"}));
    EXPECT_EQ(here.run({"permissions"}).out.find("Accessibility: not needed\n"), 0u);
}
