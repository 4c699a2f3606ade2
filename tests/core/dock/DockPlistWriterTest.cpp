#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "core/dock/DockFixtures.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/ManualClock.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::without;

class DockPlistWriterTest : public ::testing::Test {
protected:
    DockSnapshot read() { return DockPlistReader(backend, clock).read(); }
    void write(const DockSnapshot& snapshot) { DockPlistWriter(backend).write(snapshot); }

    InMemoryDockBackend backend;
    ManualClock clock;
};

TEST_F(DockPlistWriterTest, ADockWrittenBackUnchangedKeepsEveryKeyButGUID) {
    auto original = testing::sampleDockTiles();
    backend.tiles = original;
    write(read());

    ASSERT_EQ(backend.tiles.apps.size(), original.apps.size());
    for (std::size_t i = 0; i < original.apps.size(); ++i)
        EXPECT_EQ(backend.tiles.apps[i], without(original.apps[i], "GUID")) << "app tile " << i;
    ASSERT_EQ(backend.tiles.others.size(), original.others.size());
    for (std::size_t i = 0; i < original.others.size(); ++i)
        EXPECT_EQ(backend.tiles.others[i], without(original.others[i], "GUID")) << "other tile " << i;
}

TEST_F(DockPlistWriterTest, EditedItemsKeepTheirTileButTakeTheNewValues) {
    backend.tiles = testing::sampleDockTiles();
    auto snapshot = read();
    auto chrome = *snapshot.apps[0].app();
    chrome.displayName = "Browser";
    chrome.bundleIdentifier.reset();
    snapshot.apps[0] = chrome;
    write(snapshot);

    const auto& tile = backend.tiles.apps[0];
    EXPECT_EQ(*stringAt(tile, {"tile-data", "file-label"}), "Browser");
    // An unset bundle identifier does not remove the one the Dock stored.
    EXPECT_EQ(*stringAt(tile, {"tile-data", "bundle-identifier"}), "com.google.Chrome");
    EXPECT_TRUE(valueAt(tile, {"tile-data", "book"}));
}

TEST_F(DockPlistWriterTest, AnItemWhosePathChangedStartsFromACleanTile) {
    backend.tiles = testing::sampleDockTiles();
    auto chrome = *read().apps[0].app();
    chrome.path = "/Applications/Firefox.app";
    chrome.displayName.reset();
    chrome.bundleIdentifier.reset();
    write(DockSnapshot{{chrome}, {}, {}});

    EXPECT_EQ(backend.tiles.apps[0],
              (PlistDictionary{{"tile-type", "file-tile"},
                               {"tile-data", PlistDictionary{{"file-data",
                                                              PlistDictionary{{"_CFURLString", "file:///Applications/Firefox.app/"},
                                                                              {"_CFURLStringType", 15}}},
                                                             {"file-label", "Firefox"}}}}));
}

TEST_F(DockPlistWriterTest, NewItemsGetTheDocksDefaults) {
    FileEntry folder{"/Users/sam/Projects", std::nullopt, true, std::nullopt, std::nullopt};
    FileEntry file{"/Users/sam/Notes.txt", std::nullopt, false, std::nullopt, "#EF4444"};
    URLEntry link{"https://example.org", std::nullopt, std::nullopt};
    write(DockSnapshot{{SpacerVariant::flex}, {folder, file, link}, {}});

    EXPECT_EQ(backend.tiles.apps[0], (PlistDictionary{{"tile-type", "flex-spacer-tile"}, {"tile-data", PlistDictionary{}}}));

    const auto& folderTile = backend.tiles.others[0];
    EXPECT_EQ(*stringAt(folderTile, {"tile-type"}), "directory-tile");
    EXPECT_EQ(*stringAt(folderTile, {"tile-data", "file-data", "_CFURLString"}), "file:///Users/sam/Projects/");
    EXPECT_EQ(*stringAt(folderTile, {"tile-data", "file-label"}), "Projects");
    EXPECT_EQ(valueAt(folderTile, {"tile-data", "file-type"})->integer(), 2);
    EXPECT_EQ(valueAt(folderTile, {"tile-data", "arrangement"})->integer(), 1);
    EXPECT_EQ(valueAt(folderTile, {"tile-data", "displayas"})->integer(), 0);
    EXPECT_EQ(valueAt(folderTile, {"tile-data", "showas"})->integer(), 0);

    const auto& fileTile = backend.tiles.others[1];
    EXPECT_EQ(*stringAt(fileTile, {"tile-type"}), "file-tile");
    EXPECT_EQ(*stringAt(fileTile, {"tile-data", "file-label"}), "Notes.txt");
    EXPECT_FALSE(valueAt(fileTile, {"tile-data", "arrangement"}));

    EXPECT_EQ(backend.tiles.others[2],
              (PlistDictionary{{"tile-type", "url-tile"},
                               {"tile-data", PlistDictionary{{"url", PlistDictionary{{"_CFURLString", "https://example.org"},
                                                                                     {"_CFURLStringType", 15}}}}}}));
}

TEST_F(DockPlistWriterTest, ALinkKeepsItsTileOnlyWhileItsURLIsUnchanged) {
    const PlistDictionary stored{
        {"GUID", 5},
        {"tile-type", "url-tile"},
        {"tile-data", PlistDictionary{{"url", PlistDictionary{{"_CFURLString", "https://a.example"}, {"_CFURLStringType", 15}}},
                                      {"label", "A"},
                                      {"extra", true}}}};
    backend.tiles.others = {stored};
    auto link = *read().others[0].url();
    write(DockSnapshot{{}, {link}, {}});
    EXPECT_EQ(backend.tiles.others[0], without(stored, "GUID"));

    link.url = "https://b.example";
    write(DockSnapshot{{}, {link}, {}});
    EXPECT_FALSE(valueAt(backend.tiles.others[0], {"tile-data", "extra"}));
    EXPECT_EQ(*stringAt(backend.tiles.others[0], {"tile-data", "label"}), "A");
}

TEST_F(DockPlistWriterTest, AnUnreadableStoredTileCountsAsNone) {
    AppEntry app{"/Applications/Safari.app", std::nullopt, std::nullopt, Bytes{'n', 'o', 'p', 'e'}};
    write(DockSnapshot{{app}, {}, {}});
    EXPECT_EQ(*stringAt(backend.tiles.apps[0], {"tile-data", "file-label"}), "Safari");
    EXPECT_EQ(backend.tiles.apps[0].size(), 2u);
}

TEST_F(DockPlistWriterTest, AFolderKeepsTheViewTheUserChose) {
    backend.tiles = testing::sampleDockTiles();
    auto downloads = *read().others[0].file();
    write(DockSnapshot{{}, {downloads}, {}});
    const auto& tile = backend.tiles.others[0];
    EXPECT_EQ(valueAt(tile, {"tile-data", "arrangement"})->integer(), 2);
    EXPECT_EQ(valueAt(tile, {"tile-data", "showas"})->integer(), 1);
    EXPECT_EQ(valueAt(tile, {"tile-data", "preferreditemsize"})->integer(), -1);
}

} // namespace
} // namespace corvane
