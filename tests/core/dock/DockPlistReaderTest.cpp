#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "core/dock/DockFixtures.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

const std::string kDockPlist = "/Users/test/Library/Preferences/com.apple.dock.plist";

PlistDictionary tileOfType(std::string type) {
    return PlistDictionary{{"tile-type", std::move(type)}, {"tile-data", PlistDictionary{}}};
}

class DockPlistReaderTest : public ::testing::Test {
protected:
    DockSnapshot read() { return DockPlistReader(backend, clock).read(); }

    DockError readError() {
        return thrown<DockError>([&] { read(); }).value_or(DockError::noBackupAvailable());
    }

    InMemoryDockBackend backend;
    ManualClock clock{Date{750000000}};
};

TEST_F(DockPlistReaderTest, MapsEveryTileOfBothSectionsInOrder) {
    backend.tiles = testing::sampleDockTiles();
    auto snapshot = read();

    EXPECT_EQ(snapshot.capturedAt, Date{750000000});
    ASSERT_EQ(snapshot.apps.size(), 3u);
    auto chrome = snapshot.apps[0].app();
    ASSERT_TRUE(chrome);
    EXPECT_EQ(chrome->path, "/Applications/Google Chrome.app");
    EXPECT_EQ(chrome->displayName, "Google Chrome");
    EXPECT_EQ(chrome->bundleIdentifier, "com.google.Chrome");
    ASSERT_TRUE(chrome->tile);
    EXPECT_EQ(parsePropertyList(*chrome->tile), PlistValue(backend.tiles.apps[0]));
    EXPECT_EQ(snapshot.apps[1], DockItem(SpacerVariant::small));
    EXPECT_EQ(snapshot.apps[2].app()->path, "/System/Applications/Mail.app");

    ASSERT_EQ(snapshot.others.size(), 2u);
    auto downloads = snapshot.others[0].file();
    ASSERT_TRUE(downloads);
    EXPECT_EQ(downloads->path, "/Users/sam/Downloads");
    EXPECT_TRUE(downloads->isDirectory);
    EXPECT_EQ(downloads->displayName, "Downloads");
    auto docs = snapshot.others[1].url();
    ASSERT_TRUE(docs);
    EXPECT_EQ(docs->url, "https://example.org/docs?page=1");
    EXPECT_EQ(docs->displayName, "Docs");

    // Comparing layouts needs no copy of each tile; otherwise the items are the same.
    auto layout = DockPlistReader(backend, clock).read(DockPlistReader::Detail::layout);
    EXPECT_FALSE(layout.apps[0].app()->tile);
    EXPECT_FALSE(layout.others[1].url()->tile);
    EXPECT_EQ(layout.apps[0].app()->path, chrome->path);
    EXPECT_EQ(layout.apps.size(), snapshot.apps.size());
}

TEST_F(DockPlistReaderTest, AFileTileIsAnAppAmongAppsAndAFileAmongDocuments) {
    auto tile = testing::sampleDockTiles().apps[2];
    backend.tiles = {{tile}, {tile}};
    auto snapshot = read();
    EXPECT_TRUE(snapshot.apps[0].app());
    ASSERT_TRUE(snapshot.others[0].file());
    EXPECT_FALSE(snapshot.others[0].file()->isDirectory);
    EXPECT_EQ(snapshot.others[0].file()->displayName, "Mail");
}

TEST_F(DockPlistReaderTest, AllThreeSpacerKindsAreRead) {
    backend.tiles.apps = {tileOfType("spacer-tile"), tileOfType("flex-spacer-tile"), tileOfType("small-spacer-tile")};
    auto snapshot = read();
    EXPECT_EQ(snapshot.apps, (std::vector<DockItem>{SpacerVariant::default_, SpacerVariant::flex, SpacerVariant::small}));
}

TEST_F(DockPlistReaderTest, TheFirstUndecodableTileFailsTheWholeRead) {
    auto good = testing::sampleDockTiles().apps[0];
    struct Case {
        PlistDictionary tile;
        std::string message;
    };
    const Case cases[] = {
        {tileOfType("recents-tile"),
         "Failed to handle dock item of type recents-tile because it is not supported"},
        {PlistDictionary{{"tile-data", PlistDictionary{}}},
         "Failed to decode dock plist at " + kDockPlist + " because tile is missing tile-type"},
        {tileOfType("file-tile"), "Failed to decode dock plist at " + kDockPlist +
                                      " because app tile is missing tile-data.file-data._CFURLString"},
        {tileOfType("url-tile"), "Failed to decode dock plist at " + kDockPlist +
                                     " because url tile is missing tile-data.url._CFURLString"},
    };
    for (const auto& [tile, message] : cases) {
        backend.tiles = {{good, tile, good}, {}};
        EXPECT_EQ(readError().errorDescription(), message);
    }
    backend.tiles = {{good}, {tileOfType("directory-tile")}};
    EXPECT_EQ(readError().underlying, "file tile is missing tile-data.file-data._CFURLString");
}

} // namespace
} // namespace corvane
