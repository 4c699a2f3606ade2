#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

using namespace corvane;
namespace fs = std::filesystem;

namespace {
Profile named(std::string name) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = std::move(name);
    return profile;
}
} // namespace

TEST(ProfileStore, MissingFileLoadsEmptyWritesNothingAndNamesBlankWorkspacesUntitled) {
    TemporaryDirectory dir;
    ProfileStore store(dir / "sub/profiles.json");
    EXPECT_FALSE(store.fileExistedOnLoad());
    EXPECT_EQ(store.file(), ProfilesFile::empty());
    store.reload();
    EXPECT_FALSE(fs::exists(dir / "sub"));

    EXPECT_EQ(store.create(named("  ")).name, "Untitled");
    EXPECT_EQ(store.create(named("\n\t")).name, "Untitled");
    EXPECT_EQ(store.create(named(" Work ")).name, " Work ");
    EXPECT_FALSE(store.file().activeProfileId);
    ProfileStore reopened(dir / "sub/profiles.json");
    EXPECT_TRUE(reopened.fileExistedOnLoad());
    ASSERT_EQ(reopened.file().profiles.size(), 3u);
    EXPECT_EQ(reopened.file().profiles[2].name, " Work ");
}

TEST(ProfileStore, UpdateKeepsOrderDeleteClearsTheActiveOneAndUnknownIdsFail) {
    TemporaryDirectory dir;
    ProfileStore store(dir / "profiles.json");
    auto a = store.create(named("A"));
    auto b = store.create(named("B"));
    a.name = "A2";
    store.update(a);
    EXPECT_EQ(store.file().profiles[0].name, "A2");
    EXPECT_EQ(store.file().profiles[1], b);
    auto stranger = named("X");
    auto error = thrown<DockError>([&] { store.update(stranger); }).value();
    EXPECT_EQ(error, DockError::profileNotFound(stranger.id.string()));
    EXPECT_EQ(error.errorDescription(), "Failed to find profile with id " + stranger.id.string());

    store.setActive(b.id);
    store.remove(a.id);
    EXPECT_EQ(store.file().activeProfileId, b.id);
    store.remove(b.id);
    EXPECT_FALSE(store.file().activeProfileId);
    EXPECT_TRUE(ProfileStore(dir / "profiles.json").file().profiles.empty());
}

TEST(ProfileStore, ChangesRereadTheFileSoAnotherProcessesSaveSurvives) {
    TemporaryDirectory dir;
    ProfileStore first(dir / "profiles.json");
    ProfileStore second(dir / "profiles.json");
    first.create(named("From first"));
    second.create(named("From second"));
    ProfileStore reader(dir / "profiles.json");
    ASSERT_EQ(reader.file().profiles.size(), 2u);
    EXPECT_EQ(reader.file().profiles[0].name, "From first");

    // The first store last wrote the file itself; it must still notice the other's save.
    first.create(named("From first again"));
    ProfileStore again(dir / "profiles.json");
    ASSERT_EQ(again.file().profiles.size(), 3u);
    EXPECT_EQ(again.file().profiles[1].name, "From second");
}

// Each change re-reads the file first, replacing the very values such a caller hands in.
TEST(ProfileStore, ChangesMayBeGivenTheStoresOwnWorkspacesAndIds) {
    TemporaryDirectory dir;
    ProfileStore store(dir / "profiles.json");
    store.create(named("Work"));
    store.create(named("Home"));
    store.file().profiles.front().name = "Office";
    store.update(store.file().profiles.front());
    store.remove(store.file().profiles.back().id);
    ProfileStore reopened(dir / "profiles.json");
    ASSERT_EQ(reopened.file().profiles.size(), 1u);
    EXPECT_EQ(reopened.file().profiles.front().name, "Office");
}

TEST(ProfileStore, OlderFileLoadsAndTheFirstSaveWritesTheCurrentForm) {
    TemporaryDirectory dir;
    auto path = dir / "profiles.json";
    fs::copy_file(fs::path(CORVANE_TEST_DATA) / "profiles/legacy-v1.json", path);
    ProfileStore store(path);
    EXPECT_EQ(store.file().version, 2);
    const auto& p = store.file().profiles.at(0);
    EXPECT_EQ(p.items.size(), 2u);
    EXPECT_EQ(p.others.size(), 1u);
    EXPECT_EQ(p.otherWorkspaceApps, OtherWorkspaceApps::quit);
    EXPECT_EQ(p.desktopUUIDs, std::vector<std::string>{"E1D2C3B4-0000-4000-8000-000000000001"});
    store.setActive(p.id);
    auto written = readText(path);
    EXPECT_NE(written.find("\"version\": 2"), std::string::npos);
    EXPECT_NE(written.find("\"others\""), std::string::npos);
    EXPECT_NE(written.find("\"otherWorkspaceApps\": \"quit\""), std::string::npos);
    EXPECT_EQ(written.find("quitsOtherWorkspaceApps"), std::string::npos);
    EXPECT_NE(written.find("\"desktopUUID\": \"E1D2C3B4-0000-4000-8000-000000000001\""), std::string::npos);
}

TEST(ProfileStore, DamagedFileFailsToOpenNamingFileAndKeyAndStaysUntouched) {
    TemporaryDirectory dir;
    auto path = dir / "profiles.json";
    const std::string damaged = R"({"version": 2, "profiles": [{"id": "x"}]})";
    writeText(path, damaged);
    EXPECT_EQ(std::string(thrown<DataFileError>([&] { ProfileStore{path}; }).value().what()),
              "cannot decode " + path.string() + ": profiles[0]: No value associated with key \"items\".");
    EXPECT_EQ(readText(path), damaged);
}
