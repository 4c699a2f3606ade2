#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace corvane {
namespace {

std::string sampleDock() { return readText(std::string(CORVANE_TEST_DATA) + "/dock/com.apple.dock.plist"); }

class PlistFileBackendTest : public ::testing::Test {
protected:
    DockError readError() {
        return thrown<DockError>([&] { backend.readTiles(); }).value_or(DockError::noBackupAvailable());
    }

    TemporaryDirectory folder;
    std::filesystem::path url = folder / "com.apple.dock.plist";
    PlistFileBackend backend{url};
};

TEST_F(PlistFileBackendTest, ReadsTheTilesOfAnXmlOrBinaryFile) {
    writeText(url, sampleDock());
    auto tiles = backend.readTiles();
    EXPECT_EQ(tiles.apps.size(), 3u);
    EXPECT_EQ(tiles.others.size(), 2u);

    auto binary = binaryPropertyList(*parsePropertyList(sampleDock()));
    writeText(url, std::string(binary->begin(), binary->end()));
    EXPECT_EQ(backend.readTiles(), tiles);
}

TEST_F(PlistFileBackendTest, WritingReplacesTheTilesAndKeepsEveryOtherKey) {
    writeText(url, sampleDock());
    ::chmod(url.c_str(), 0640);
    const auto before = *parsePropertyList(sampleDock())->dictionary();
    DockTiles tiles{{PlistDictionary{{"tile-type", "spacer-tile"}, {"tile-data", PlistDictionary{}}}}, {}};
    backend.writeTiles(tiles);

    auto text = readText(url);
    EXPECT_TRUE(text.starts_with("<?xml")) << "written as XML";
    auto after = *parsePropertyList(text)->dictionary();
    EXPECT_EQ(after.size(), before.size());
    for (const auto& [key, value] : before) {
        if (key == "persistent-apps" || key == "persistent-others") continue;
        EXPECT_EQ(after[key], value) << key;
    }
    EXPECT_EQ(backend.readTiles(), tiles);

    struct stat info {};
    ::stat(url.c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u) << "the file keeps its permissions";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "no temporary file is left";
}

TEST_F(PlistFileBackendTest, AChangeByAnotherWriterIsSeenEvenWhenTheSizeIsTheSame) {
    // The backend keeps what it last read or wrote; a Dock that rewrites the file must not be
    // hidden behind that, whatever the file's size and time stamp.
    DockTiles tiles{{PlistDictionary{{"tile-type", "spacer-tile"}, {"tile-data", PlistDictionary{}}}}, {}};
    backend.writeTiles(tiles);
    EXPECT_EQ(backend.readTiles(), tiles);

    auto text = readText(url);
    auto at = text.find("spacer-tile");
    ASSERT_NE(at, std::string::npos);
    text.replace(at, 6, "flexer");
    writeText(url, text);
    auto reread = backend.readTiles();
    ASSERT_TRUE(stringAt(reread.apps[0], {"tile-type"}));
    EXPECT_EQ(*stringAt(reread.apps[0], {"tile-type"}), "flexer-tile");

    std::filesystem::remove(url);
    EXPECT_THROW(backend.readTiles(), DockError);
}

TEST_F(PlistFileBackendTest, WritingCreatesAMissingPrivateFileAndClearsAKilledWritersTemporary) {
    // A process id far above any real one stands for a writer killed mid-save.
    writeText(folder / ".com.apple.dock.plist.999999999.AbCdEf.tmp", "<?xml half");
    backend.writeTiles({});
    struct stat info {};
    ::stat(url.c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    auto root = *parsePropertyList(readText(url))->dictionary();
    EXPECT_EQ(root.size(), 2u);
    EXPECT_EQ(backend.readTiles(), DockTiles{});
}

TEST_F(PlistFileBackendTest, EveryFailureNamesTheFile) {
    const auto path = url.string();
    EXPECT_EQ(readError().errorDescription(), "Failed to locate dock plist at " + path);

    writeText(url, "not a plist");
    EXPECT_EQ(readError(), DockError::plistMalformed(path, "it is not a property list"));

    writeText(url, xmlPropertyList(PlistArray{1, 2}));
    EXPECT_EQ(readError().errorDescription(), "Failed to decode dock plist at " + path + " because root is not a dictionary");

    writeText(url, xmlPropertyList(PlistDictionary{{"persistent-apps", "oops"}}));
    EXPECT_EQ(readError().underlying, "persistent-apps is not an array of dicts");
    writeText(url, xmlPropertyList(PlistDictionary{{"persistent-others", PlistArray{PlistDictionary{}, 3}}}));
    EXPECT_EQ(readError().underlying, "persistent-others is not an array of dicts");

    std::filesystem::remove(url);
    std::filesystem::create_directory(url);
    EXPECT_EQ(readError().kind, DockError::Kind::plistReadFailed);
}

TEST_F(PlistFileBackendTest, AFileThatCannotBeReadBackIsNotOverwritten) {
    writeText(url, "not a plist");
    EXPECT_EQ(thrown<DockError>([&] { backend.writeTiles({}); }).value().errorDescription(),
              "Failed to write dock plist at " + url.string() + " because it is not a property list");
    EXPECT_EQ(readText(url), "not a plist");
}

TEST_F(PlistFileBackendTest, TheSampleDockIsStableAfterOneRoundTripThroughTheFile) {
    writeText(url, sampleDock());
    ManualClock clock;
    auto roundTrip = [&] {
        DockPlistWriter(backend).write(DockPlistReader(backend, clock).read());
        return readText(url);
    };
    // The first pass drops the GUIDs; after that the file no longer changes.
    auto once = roundTrip();
    EXPECT_EQ(once.find("GUID"), std::string::npos);
    EXPECT_EQ(roundTrip(), once);
}

} // namespace
} // namespace corvane
