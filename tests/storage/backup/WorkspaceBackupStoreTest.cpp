#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneFiles/FileLock.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

class WorkspaceBackups : public ::testing::Test {
protected:
    void writeProfiles(const std::string& name) {
        ProfilesFile file;
        Profile profile;
        profile.id = Uuid::generate();
        profile.name = name;
        file.profiles.push_back(profile);
        writeText(data / "profiles.json", profilesFileText(file));
    }
    static std::size_t filesIn(const fs::path& folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    TemporaryDirectory data;
    WorkspaceBackupStore store{data.path()};
    Date now{800000000};
};

} // namespace

TEST_F(WorkspaceBackups, UnchangedDataIsBackedUpOnceWithItsInfoAndWithoutAMissingWidgetsFile) {
    writeProfiles("Work");
    auto first = store.backUp(WorkspaceBackup::Reason::launch, now);
    ASSERT_TRUE(first);
    EXPECT_TRUE(fs::exists(first->url / "profiles.json"));
    EXPECT_FALSE(fs::exists(first->url / "widgets.json"));
    EXPECT_EQ(filesIn(first->url), 2u);
    EXPECT_NE(readText(first->url / "info.json").find("\"reason\": \"launch\""), std::string::npos);
    EXPECT_EQ(store.contents(*first).profiles->profiles.at(0).name, "Work");
    EXPECT_FALSE(store.contents(*first).widgetsText);

    EXPECT_FALSE(store.backUp(WorkspaceBackup::Reason::launch, now + 60));
    EXPECT_FALSE(store.backUp(WorkspaceBackup::Reason::quit, now + 120));
    writeProfiles("Play");
    EXPECT_TRUE(store.backUp(WorkspaceBackup::Reason::quit, now + 180));
    auto list = store.list();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].reason, WorkspaceBackup::Reason::quit);
    EXPECT_EQ(list[1], *first);
}

TEST_F(WorkspaceBackups, KeepsTheNewestFortyAndIgnoresFoldersWithoutInfo) {
    for (int i = 0; i < 41; ++i) {
        writeProfiles("Version " + std::to_string(i));
        ASSERT_TRUE(store.backUp(WorkspaceBackup::Reason::launch, now + i));
    }
    fs::create_directories(store.directory() / "half-written");
    writeText(store.directory() / "broken/info.json", "{\"date\": \"not a date\", \"reason\": \"launch\"}");
    writeProfiles("Version 41");
    store.backUp(WorkspaceBackup::Reason::quit, now + 41);
    auto list = store.list();
    ASSERT_EQ(list.size(), 40u);
    EXPECT_EQ(list.front().date, now + 41);
    EXPECT_EQ(list.back().date, now + 2);
    EXPECT_TRUE(fs::exists(store.directory() / "half-written")) << "a folder that is not a backup is left alone";

    // A second backup at the same moment gets a counter instead of overwriting the first.
    writeProfiles("Version 42");
    auto same = store.backUp(WorkspaceBackup::Reason::quit, now + 41);
    ASSERT_TRUE(same);
    EXPECT_EQ(same->url.filename().string(), list.front().url.filename().string() + "-001");
}

TEST_F(WorkspaceBackups, RestorePutsFilesBackAfterBackingUpThePresent) {
    writeProfiles("Old");
    writeText(data / "widgets.json", "{\"widgets\": []}\n");
    auto old = store.backUp(WorkspaceBackup::Reason::launch, now);
    writeProfiles("New");
    fs::remove(data / "widgets.json");
    store.restore(*old, now + 10);
    EXPECT_NE(readText(data / "profiles.json").find("\"Old\""), std::string::npos);
    EXPECT_EQ(readText(data / "widgets.json"), "{\"widgets\": []}\n");
    auto list = store.list();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].reason, WorkspaceBackup::Reason::restore);
    EXPECT_NE(readText(list[0].url / "profiles.json").find("\"New\""), std::string::npos);
}

TEST_F(WorkspaceBackups, RestoreWaitsForAChangeInProgressAndBacksItUp) {
    writeProfiles("Old");
    auto old = store.backUp(WorkspaceBackup::Reason::launch, now);
    std::optional<std::thread> restoring;
    {
        FileLock change(data / "profiles.json"); // another process in the middle of a change
        restoring.emplace([&] { store.restore(*old, now + 10); });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        writeProfiles("Changed meanwhile");
    }
    restoring->join();
    EXPECT_NE(readText(data / "profiles.json").find("\"Old\""), std::string::npos);
    auto list = store.list();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_NE(readText(list[0].url / "profiles.json").find("\"Changed meanwhile\""), std::string::npos);
}

TEST_F(WorkspaceBackups, ABackupCutShortIsNeverListedAndTheNextBackupClearsIt) {
    writeProfiles("Work");
    auto taken = store.backUp(WorkspaceBackup::Reason::launch, now);
    ASSERT_TRUE(taken);
    // What a backup killed before it was renamed into place leaves: complete, info and all.
    auto leftover = store.directory() / ("." + taken->url.filename().string() + ".999999999.AbCdEf.tmp");
    fs::copy(taken->url, leftover);
    ASSERT_TRUE(fs::exists(leftover / "info.json"));
    EXPECT_EQ(store.list().size(), 1u);

    EXPECT_FALSE(store.backUp(WorkspaceBackup::Reason::quit, now + 1)) << "nothing changed";
    EXPECT_FALSE(fs::exists(leftover));
}
