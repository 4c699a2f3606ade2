#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileDockSettings.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(PlistFileDockSettings, ReadsAndWritesTheDocksLookBesideItsTilesAndNeverADamagedFile) {
    TemporaryDirectory folder;
    auto url = folder / "com.apple.dock.plist";
    PlistFileDockSettings settings(url);
    EXPECT_EQ(settings.current(), NativeDockPreferences{}) << "no file: the Dock's defaults";
    EXPECT_FALSE(settings.orientation());

    writeText(url, readText(std::string(CORVANE_TEST_DATA) + "/dock/com.apple.dock.plist"));
    EXPECT_EQ(settings.current(), (NativeDockPreferences{true, 0.25, 48.0}));
    EXPECT_EQ(settings.orientation(), "left");

    settings.write({true, 1000.0, std::nullopt});
    EXPECT_EQ(settings.current(), (NativeDockPreferences{true, 1000.0, std::nullopt}));
    auto root = *parsePropertyList(readText(url))->dictionary();
    EXPECT_FALSE(root.contains("tilesize")) << "an unset value removes its key";
    EXPECT_TRUE(root.contains("persistent-apps"));
    EXPECT_EQ(root["orientation"], PlistValue("left"));

    writeText(url, "garbage");
    EXPECT_THROW(settings.current(), DockError);
    EXPECT_THROW(settings.write({}), DockError);
    EXPECT_EQ(readText(url), "garbage");
}

TEST(PlistFileUserDefaults, KeepsEveryValueTypeAcrossInstances) {
    TemporaryDirectory folder;
    auto url = folder / std::string(PlistFileUserDefaults::fileName);
    {
        PlistFileUserDefaults defaults(url);
        EXPECT_FALSE(defaults.value("missing"));
        defaults.setBool("flag", true);
        defaults.setInt("count", -3);
        defaults.setDouble("ratio", 0.5);
        defaults.setString("name", "Zoë");
        defaults.setData("blob", Bytes{0, 255});
        defaults.setString("gone", "x");
        defaults.remove("gone");
        defaults.remove("never there");
    }
    PlistFileUserDefaults defaults(url);
    EXPECT_EQ(defaults.boolValue("flag"), true);
    EXPECT_EQ(defaults.intValue("count"), -3);
    EXPECT_EQ(defaults.doubleValue("ratio"), 0.5);
    EXPECT_EQ(defaults.stringValue("name"), "Zoë");
    EXPECT_EQ(defaults.dataValue("blob"), (Bytes{0, 255}));
    EXPECT_EQ(defaults.keys(), (std::vector<std::string>{"blob", "count", "flag", "name", "ratio"}));
}

TEST(PlistFileUserDefaults, ADamagedFileReadsEmptyAndIsNotReplaced) {
    TemporaryDirectory folder;
    auto url = folder / "defaults.plist";
    writeText(url, "garbage");
    PlistFileUserDefaults defaults(url);
    EXPECT_FALSE(defaults.value("any"));
    EXPECT_TRUE(defaults.keys().empty());
    EXPECT_THROW(defaults.setBool("flag", true), std::runtime_error);
    EXPECT_EQ(readText(url), "garbage");
}

} // namespace
} // namespace corvane
