#include "CorvaneStorage/storage/StoragePath.hpp"

#include <gtest/gtest.h>

using namespace corvane;
namespace fs = std::filesystem;

TEST(StoragePath, OverrideVariableWinsUnlessBlank) {
    const fs::path support = "/Users/me/Library/Application Support";
    EXPECT_EQ(StoragePath::resolvedDirectory({{"CORVANE_APP_SUPPORT_DIR", " /data/x "}}, {}, support), " /data/x ")
        << "the value is taken as given, untrimmed";
    EXPECT_EQ(StoragePath::resolvedDirectory({{"CORVANE_APP_SUPPORT_DIR", "~/c"}, {"HOME", "/home/me"}}, {}, support),
              "/home/me/c");
    EXPECT_EQ(StoragePath::resolvedDirectory({{"CORVANE_APP_SUPPORT_DIR", " \t\n"}}, {}, support), support / "Corvane");
    EXPECT_EQ(StoragePath::resolvedDirectory({}, {}, support), support / "Corvane");
}

TEST(StoragePath, BundleFolderNameIsTrimmedAndLosesSlashes) {
    const fs::path support = "/s";
    using Info = StoragePath::InfoDictionary;
    EXPECT_EQ(StoragePath::resolvedDirectory({}, Info{{"CorvaneDataFolder", std::string(" a/b ")}}, support), "/s/ab");
    EXPECT_EQ(StoragePath::resolvedDirectory({}, Info{{"CorvaneDataFolder", std::string("/")}}, support), "/s/Corvane");
    EXPECT_EQ(StoragePath::resolvedDirectory({}, Info{{"CorvaneDataFolder", true}}, support), "/s/Corvane");
    EXPECT_EQ(StoragePath::resolvedDirectory({}, Info{{"CorvaneDataFolder", std::string("Corvane Dev")}}, support),
              "/s/Corvane Dev");
}

TEST(StoragePath, FileNames) {
    EXPECT_EQ(StoragePath::profilesFileURL("/d"), "/d/profiles.json");
    EXPECT_EQ(StoragePath::widgetsFileURL("/d"), "/d/widgets.json");
    EXPECT_EQ(StoragePath::clipboardFileURL("/d"), "/d/clipboard.json.enc");
    EXPECT_EQ(StoragePath::legacyCollectionsFileURL("/d"), "/d/collections.json");
    EXPECT_EQ(StoragePath::backupsDirectory("/d"), "/d/backups");
}
