// The Dock commands end to end on a copy of the bundled sample Dock; nothing is restarted.

#include "app/cli/ToolFixtures.hpp"
#include "core/dock/DockFixtures.hpp"

#include <gtest/gtest.h>

using namespace corvane;
namespace fixtures = corvane::testing;

/// The macOS Dock's own mode: switches rewrite the sample Dock.
class DockTool : public SampleDockTool {
protected:
    void SetUp() override { ok({"prefs", "set", "usesOwnDock", "false"}); }
};

TEST_F(DockTool, SwitchDiffUndoAndBackupsRoundTrip) {
    auto original = readText(dir / "dock.plist");
    EXPECT_NE(ok({"dock"}).find("Applications (10):"), std::string::npos);
    ok({"new", "Everything", "--from-dock"});
    ok({"activate", "Everything"});
    EXPECT_EQ(ok({"apply"}), "The Dock already shows \"Everything\".\n");
    ok({"new", "Empty"});
    EXPECT_EQ(ok({"switch", "Empty"}), "Switched to \"Empty\".\n");
    EXPECT_NE(ok({"dock"}).find("Applications (0):"), std::string::npos);
    EXPECT_NE(ok({"diff", "Everything"}).find("- Safari"), std::string::npos);
    EXPECT_NE(ok({"switch", "Empty"}).find("already active"), std::string::npos);

    EXPECT_NE(ok({"undo"}).find("Put back the Dock of dock-"), std::string::npos);
    EXPECT_NE(ok({"dock"}).find("Applications (10):"), std::string::npos);
    EXPECT_EQ(ok({"diff", "Everything"}), "The Dock against \"Everything\":\nNo differences.\n");
    EXPECT_NE(ok({"dock", "--json"}).find("\"bundleIdentifier\": \"com.apple.Safari\""), std::string::npos);

    auto backups = ok({"backups", "--json"});
    EXPECT_NE(backups.find("\"dock\": ["), std::string::npos);
    EXPECT_NE(ok({"backups", "take"}).find("Backed up the workspaces as "), std::string::npos);
    EXPECT_NE(ok({"backups"}).find("manual"), std::string::npos);
    auto docks = [&] { return std::filesystem::directory_iterator(dir / "data" / "backups"); };
    auto dockBackups = std::distance(docks(), {});
    auto again = ok({"backups", "take"});
    EXPECT_TRUE(again.starts_with("The workspaces are unchanged since the last backup; the Dock is unchanged since dock-"))
        << again;
    EXPECT_EQ(std::distance(docks(), {}), dockBackups);
}

TEST_F(DockTool, CaptureStoresDockEditsInTheActiveWorkspace) {
    ok({"new", "Work", "--from-dock"});
    ok({"activate", "Work"});
    EXPECT_EQ(ok({"capture"}), "\"Work\" already matches the Dock.\n");
    ok({"new", "Empty"});
    ok({"switch", "Empty"});
    ok({"activate", "Work"}); // the Dock is empty now, as if the user had cleared it
    EXPECT_EQ(ok({"capture"}), "Saved the Dock into \"Work\".\n");
    EXPECT_NE(ok({"list"}).find("* Work   blue      0"), std::string::npos);
}

TEST_F(DockTool, ErrorsAreOneLineAndChangeNothing) {
    auto undo = run({"undo"});
    EXPECT_EQ(undo.status, 1);
    EXPECT_EQ(undo.err, "corvane: Cannot undo because there is no Dock backup yet\n");
    auto missing = runProgram(CORVANE_TOOL, {"--dock-plist", (dir / "nope.plist").string(), "dock"},
                              {"HOME=" + dir.path().string()});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.starts_with("corvane: Failed to ")) << missing.err;
    EXPECT_EQ(std::count(missing.err.begin(), missing.err.end(), '\n'), 1);
    writeText(dir / "dock.plist", "not a plist");
    auto damaged = run({"dock"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(damaged.err.starts_with("corvane: Failed to decode dock plist at ")) << damaged.err;
    EXPECT_EQ(readText(dir / "dock.plist"), "not a plist");
}

TEST_F(DockTool, ADockItCannotReadIsNamedPreciselyAndStillComesBackWhole) {
    const auto before = fixtures::undecodableDockTiles();
    fixtures::writeDockFile(dir / "dock.plist", before);
    auto refused = run({"dock"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.ends_with(" because apps tile 4 has no tile-data\n")) << refused.err;

    ok({"new", "Empty"});
    ok({"new", "Other"});
    ok({"switch", "Empty"});
    EXPECT_NE(ok({"dock"}).find("Applications (0):"), std::string::npos);
    ok({"undo"});
    EXPECT_EQ(fixtures::readDockFile(dir / "dock.plist"), fixtures::withoutGUIDs(before));

    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir / "data" / "backups"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    ok({"switch", "Other"});
    EXPECT_EQ(ok({"backups", "restore", names.front()}), "Put back the Dock of " + names.front() + ".\n");
    EXPECT_EQ(fixtures::readDockFile(dir / "dock.plist"), fixtures::withoutGUIDs(before));

    // A file in the backups folder that is not a Dock backup is refused and the Dock left alone.
    writeText(dir / "data" / "backups" / "dock-broken.plist", "<plist><dict/></plist>");
    auto dockBytes = readText(dir / "dock.plist");
    auto broken = run({"backups", "restore", "dock-broken.plist"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(broken.err.ends_with("dock-broken.plist because it is not a Dock backup: it has no persistent-apps\n"))
        << broken.err;
    EXPECT_EQ(readText(dir / "dock.plist"), dockBytes);
}

TEST_F(DockTool, RealDocksReadWholeAndComeBackExactlyAfterASwitchAndUndo) {
    for (const auto& name : fixtures::realDocks) {
        std::filesystem::remove_all(dir / "data");
        std::filesystem::copy_file(std::string(CORVANE_TEST_DATA) + "/dock/real/" + name, dir / "dock.plist",
                                   std::filesystem::copy_options::overwrite_existing);
        const auto before = fixtures::readDockFile(dir / "dock.plist");
        EXPECT_NE(ok({"dock"}).find("Applications (" + std::to_string(before.apps.size()) + "):"), std::string::npos)
            << name;
        ok({"prefs", "set", "usesOwnDock", "false"});
        ok({"new", "Empty"});
        ok({"switch", "Empty"});
        ok({"undo"});
        EXPECT_EQ(fixtures::readDockFile(dir / "dock.plist"), fixtures::withoutGUIDs(before)) << name;
    }
}
