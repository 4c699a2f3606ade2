// apps, desktops and permissions on a system without the Mac's services.

#include "CorvaneApp/cli/Tool.hpp"
#include "app/cli/ToolFixtures.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeDesktopServer.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/ScriptedProcessRunner.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <sstream>

using namespace corvane;
using Json = nlohmann::json;

namespace {

void bundle(const std::filesystem::path& app, const std::string& info) {
    std::filesystem::create_directories(app / "Contents");
    writeText(app / "Contents/Info.plist", "<plist version=\"1.0\"><dict>" + info + "</dict></plist>");
}

class FixedPermissions final : public PermissionStates {
  public:
    PermissionState state(Permission permission) const override {
        return permission == Permission::accessibility ? PermissionState::allowed : PermissionState::notAsked;
    }
};

// The tool in this process, with the Mac's services played by fakes.
class MacServices : public ::testing::Test {
  protected:
    std::string run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"corvane", "--data-dir", data.path().string()});
        std::vector<const char*> argv;
        for (const auto& argument : arguments)
            argv.push_back(argument.c_str());
        std::ostringstream out, err;
        EXPECT_EQ(runTool(static_cast<int>(argv.size()), argv.data(), services, out, err), 0) << err.str();
        return out.str();
    }

    TemporaryDirectory data;
    CannedHttpClient http;
    ScriptedProcessRunner runner;
    RecordingNotifier notifier;
    CapturingLog log;
    ManualClock clock;
    FixedOffsetCalendar calendar;
    FakeDesktopServer desktops;
    FixedPermissions permissions;
    ToolServices services{.notifier = notifier,
                          .log = log,
                          .clock = clock,
                          .calendar = calendar,
                          .http = http,
                          .runner = runner,
                          .desktops = &desktops,
                          .permissions = &permissions};
};

} // namespace

TEST_F(MacServices, DesktopsComeFromTheWindowServerWithTheWorkspaceEachBrings) {
    run({"new", "Work"});
    run({"desktop", "bind", "Work", "D2"});
    desktops.show(1, {.id = 11, .uuid = "D1", .number = 1});
    desktops.show(1, {.id = 12, .uuid = "D2", .number = 2});
    desktops.show(2, {.id = 21, .uuid = "D3", .number = 1});
    auto listed = Json::parse(run({"desktops", "--json"}));
    ASSERT_EQ(listed.size(), 3u);
    EXPECT_EQ(listed[1], (Json{{"uuid", "D2"},
                               {"display", 1},
                               {"number", 2},
                               {"current", true},
                               {"workspace", listed[1]["workspace"]},
                               {"workspaceName", "Work"}}));
    EXPECT_FALSE(listed[0]["current"]);
    EXPECT_FALSE(listed[0].contains("workspace"));
    EXPECT_EQ(listed[2]["display"], 2);
    EXPECT_NE(run({"desktops"}).find("* Desktop 2 of display 1  D2  brings \"Work\"\n"), std::string::npos);
}

TEST_F(MacServices, PermissionsTellTheSystemsAnswer) {
    auto listed = Json::parse(run({"permissions", "--json"}));
    EXPECT_EQ(listed[0]["state"], "allowed");
    EXPECT_EQ(listed[1]["state"], "not asked");
    EXPECT_NE(run({"permissions"}).find("Focus status: not asked\n  Corvane sees"), std::string::npos);
}

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
