#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
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

TEST_F(DockPlistReaderTest, TheFirstUndecodableTileFailsTheWholeReadNamingTileAndFault) {
    auto good = testing::sampleDockTiles().apps[0];
    const auto malformed = "Failed to decode dock plist at " + kDockPlist + " because ";
    auto labelled = [](PlistDictionary tile, PlistValue data) {
        tile["tile-data"] = std::move(data);
        return tile;
    };
    struct Case {
        PlistDictionary tile;
        std::string message;
    };
    const Case cases[] = {
        {tileOfType("recents-tile"), "Failed to handle dock item of type recents-tile because it is not supported"},
        {PlistDictionary{{"tile-data", PlistDictionary{{"file-label", "Notes"}}}},
         malformed + "apps tile 2 \"Notes\" has no tile-type"},
        {PlistDictionary{{"tile-type", "file-tile"}}, malformed + "apps tile 2 has no tile-data"},
        {labelled(tileOfType("file-tile"), "Notes"), malformed + "apps tile 2 has a tile-data that is not a dictionary"},
        {tileOfType("file-tile"),
         malformed + "apps tile 2 has no tile-data.file-data._CFURLString and no bookmark"},
        {labelled(tileOfType("file-tile"), PlistDictionary{{"file-label", "Downloads"}, {"book", Bytes{'b', 'o', 'o', 'k'}}}),
         malformed + "apps tile 2 \"Downloads\" has no tile-data.file-data._CFURLString and its bookmark holds no path"},
        {labelled(tileOfType("url-tile"), PlistDictionary{{"label", "Docs"}}),
         malformed + "apps tile 2 \"Docs\" has no tile-data.url._CFURLString"},
    };
    for (const auto& [tile, message] : cases) {
        backend.tiles = {{good, tile, good}, {}};
        EXPECT_EQ(readError().errorDescription(), message);
    }
    backend.tiles = {{good}, {good, tileOfType("directory-tile")}};
    EXPECT_EQ(readError().underlying, "others tile 2 has no tile-data.file-data._CFURLString and no bookmark");
}

TEST_F(DockPlistReaderTest, ATileKnownOnlyByItsBookmarkTakesItsPathFromIt) {
    // Current Docks keep a "book" bookmark in tile-data, older ones an alias record in file-data.
    auto downloads = testing::realDockTiles("voodooGQ-dotfiles.plist").others[0];
    (*downloads["tile-data"].dictionary()).erase("file-data");
    auto chrome = testing::realDockTiles("epicodus-dot-files.plist").apps[0];
    (*(*chrome["tile-data"].dictionary())["file-data"].dictionary()).erase("_CFURLString");
    backend.tiles = {{chrome}, {downloads}};

    auto snapshot = read();
    EXPECT_EQ(snapshot.apps[0].app()->path, "/Applications/Google Chrome.app");
    EXPECT_EQ(snapshot.others[0].file()->path, "/Users/shanesmith/Downloads");
    EXPECT_EQ(snapshot.others[0].file()->displayName, "Downloads");

    DockPlistWriter(backend).write(snapshot);
    EXPECT_EQ(backend.tiles, (DockTiles{{chrome}, {testing::without(downloads, "GUID")}}))
        << "written back, each tile is the one the Dock had";
}

TEST_F(DockPlistReaderTest, RealDocksReadWholeAndWriteBackEveryTileButSpacersAsTheyWere) {
    for (const auto& name : testing::realDocks) {
        auto original = testing::realDockTiles(name);
        backend.tiles = original;
        auto snapshot = read();
        ASSERT_EQ(snapshot.apps.size(), original.apps.size()) << name;
        ASSERT_EQ(snapshot.others.size(), original.others.size()) << name;
        for (std::size_t i = 0; i < snapshot.apps.size(); ++i) {
            auto path = stringAt(original.apps[i], {"tile-data", "file-data", "_CFURLString"});
            if (path) {
                EXPECT_EQ(snapshot.apps[i].app()->path, DockURLString::path(*path)) << name << " app " << i;
            }
        }

        DockPlistWriter(backend).write(snapshot);
        auto expected = testing::withoutGUIDs(original);
        for (std::size_t i = 0; i < expected.apps.size(); ++i) {
            // A spacer item has nowhere to keep its tile, so it is written as a new spacer.
            if (snapshot.apps[i].spacer()) {
                EXPECT_EQ(backend.tiles.apps[i].at("tile-type"), expected.apps[i].at("tile-type")) << name;
            } else {
                EXPECT_EQ(backend.tiles.apps[i], expected.apps[i]) << name << " app " << i;
            }
        }
        EXPECT_EQ(backend.tiles.others, expected.others) << name;
    }
}

} // namespace
} // namespace corvane
