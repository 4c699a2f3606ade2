#include "app/cli/ToolFixtures.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(TransferCommands, ExportedWorkspacesImportElsewhereAndBesideThemselves) {
    Installation here, there;
    here.run({"new", "Work"});
    here.run({"new", "Play"});
    here.run({"edit", "Work", "--hotkey", "ctrl+opt+1"});
    auto file = (there.data / "Some Workspaces.json").string();
    auto exported = here.run({"export", file, "work"});
    ASSERT_EQ(exported.status, 0) << exported.err;
    EXPECT_EQ(exported.out, "Exported 1 workspace to " + file + ".\n");

    auto fresh = there.run({"import", file});
    ASSERT_EQ(fresh.status, 0) << fresh.err;
    EXPECT_EQ(fresh.out, "Imported 1 workspace:\n  \"Work\"\n");
    EXPECT_NE(there.run({"show", "Work"}).out.find("⌃⌥1"), std::string::npos);

    auto again = here.run({"import", file});
    EXPECT_EQ(again.out, "Imported 1 workspace:\n  \"Work\" as \"Work (Imported)\" (new id, its id was taken; "
                         "hotkey dropped, another workspace uses it)\n");
    EXPECT_EQ(here.run({"show", "Work (Imported)"}).out.find("⌃⌥1"), std::string::npos);
}

TEST(TransferCommands, UndecodableImportChangesNothing) {
    Installation here;
    here.run({"new", "Work"});
    auto before = readText(here.data / "profiles.json");
    writeText(here.data / "bad.json", R"({"version": 2, "profiles": [{"name": "x"}]})");
    auto result = here.run({"import", (here.data / "bad.json").string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "corvane: cannot decode " + (here.data / "bad.json").string() +
                              ": profiles[0]: No value associated with key \"items\".\n");
    EXPECT_EQ(readText(here.data / "profiles.json"), before);
}

TEST(TransferCommands, ImportReadsStandardInputForADash) {
    Installation here, there;
    here.run({"new", "Work"});
    auto file = (there.data / "exported.json").string();
    here.run({"export", file});
    auto imported = runProgram(CORVANE_TOOL, {"--data-dir", there.data.path().string(), "import", "-"},
                               {"HOME=" + there.data.path().string()}, file);
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(imported.out, "Imported 1 workspace:\n  \"Work\"\n");

    auto before = readText(there.data / "profiles.json");
    auto empty = runProgram(CORVANE_TOOL, {"--data-dir", there.data.path().string(), "import", "-"},
                            {"HOME=" + there.data.path().string()});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.err.rfind("corvane: cannot decode standard input: ", 0), 0u) << empty.err;
    EXPECT_EQ(readText(there.data / "profiles.json"), before);
}
