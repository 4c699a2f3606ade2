#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <sys/stat.h>
#include <thread>

using namespace corvane;
namespace fs = std::filesystem;

namespace {
std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}
} // namespace

TEST(AtomicFile, ReplacesWholeFileCreatesFoldersAndLeavesNoTemporary) {
    TemporaryDirectory dir;
    auto path = dir / "nested/data.json";
    EXPECT_FALSE(readFileIfExists(path));
    writeFileAtomically(path, "first");
    writeFileAtomically(path, "second, longer");
    EXPECT_EQ(readFileIfExists(path), "second, longer");
    EXPECT_EQ(entriesIn(path.parent_path()), 1u);
}

TEST(AtomicFile, RemovesTemporariesOfDeadWritersButNotOfLiveOnes) {
    TemporaryDirectory dir;
    // A process id far above any real one stands for a writer that was killed mid-save.
    writeText(dir / ".data.json.999999999.AbCdEf.tmp", "half");
    writeText(dir / (".data.json." + std::to_string(getppid()) + ".AbCdEf.tmp"), "in progress");
    writeText(dir / ".other.json.999999999.AbCdEf.tmp", "someone else's file");
    writeFileAtomically(dir / "data.json", "whole");
    EXPECT_FALSE(fs::exists(dir / ".data.json.999999999.AbCdEf.tmp"));
    EXPECT_TRUE(fs::exists(dir / (".data.json." + std::to_string(getppid()) + ".AbCdEf.tmp")));
    EXPECT_TRUE(fs::exists(dir / ".other.json.999999999.AbCdEf.tmp"));
}

TEST(AtomicFile, ANewFileGetsTheModeAskedForAndSomeoneElsesKeepsItsOwnWhenAsked) {
    TemporaryDirectory dir;
    writeText(dir / "theirs.plist", "old");
    ::chmod((dir / "theirs.plist").c_str(), 0640);
    writeText(dir / "mine.plist", "old");
    ::chmod((dir / "mine.plist").c_str(), 0640);
    writeFileAtomically(dir / "theirs.plist", "new", 0600, ExistingFileMode::kept);
    writeFileAtomically(dir / "new.plist", "new", 0600, ExistingFileMode::kept);
    writeFileAtomically(dir / "mine.plist", "new", 0600);
    auto mode = [&](const char* name) {
        struct stat info {};
        EXPECT_EQ(::stat((dir / name).c_str(), &info), 0);
        return info.st_mode & 0777;
    };
    EXPECT_EQ(mode("theirs.plist"), 0640u);
    EXPECT_EQ(mode("new.plist"), 0600u);
    EXPECT_EQ(mode("mine.plist"), 0600u);
}

TEST(AtomicFile, AFolderOfNewNamesIsClearedOfEveryAbandonedTemporaryAndNothingElse) {
    TemporaryDirectory dir;
    const auto live = std::to_string(getppid());
    writeText(dir / ".dock-1.plist.999999999.AbCdEf.tmp", "half");
    writeText(dir / ".2026-launch.999999999.AbCdEf.tmp/info.json", "{}");
    writeText(dir / (".dock-2.plist." + live + ".AbCdEf.tmp"), "in progress");
    writeText(dir / ".dock-3.plist.999999999.short.tmp", "not ours");
    writeText(dir / "dock-4.plist", "a backup");
    removeAbandonedTemporaries(dir.path());
    EXPECT_FALSE(fs::exists(dir / ".dock-1.plist.999999999.AbCdEf.tmp"));
    EXPECT_FALSE(fs::exists(dir / ".2026-launch.999999999.AbCdEf.tmp"));
    EXPECT_TRUE(fs::exists(dir / (".dock-2.plist." + live + ".AbCdEf.tmp")));
    EXPECT_TRUE(fs::exists(dir / ".dock-3.plist.999999999.short.tmp"));
    EXPECT_TRUE(fs::exists(dir / "dock-4.plist"));

    auto staging = createTemporaryFolder(dir.path(), "2026-quit");
    EXPECT_TRUE(fs::is_directory(staging));
    EXPECT_TRUE(isTemporaryName(staging.filename().string()));
    EXPECT_FALSE(isTemporaryName("2026-quit"));
}

TEST(AtomicFile, FailureThrowsNamesTheFileAndKeepsTheOldContent) {
    TemporaryDirectory dir;
    auto path = dir / "data.json";
    writeFileAtomically(path, "old");
    fs::create_directory(dir / "folder");
    EXPECT_THROW(writeFileAtomically(dir / "folder", "x"), DataFileError);
    ::chmod(dir.path().c_str(), 0500);
    if (::geteuid() != 0) { // root writes through permissions
        auto error = thrown<DataFileError>([&] { writeFileAtomically(path, "new"); });
        EXPECT_NE(std::string(error.value().what()).find(path.string()), std::string::npos);
    }
    ::chmod(dir.path().c_str(), 0700);
    EXPECT_EQ(readFileIfExists(path), "old");
    EXPECT_EQ(entriesIn(dir.path()), 2u);
}

TEST(AtomicFile, PublishingTakesTheFirstFreeNameAndNeverReplacesAnother) {
    TemporaryDirectory dir;
    writeText(dir / "dock-1.plist", "older");
    auto staged = createTemporaryFolder(dir.path(), "dock-1");
    writeText(staged / "dock.plist", "newer");
    EXPECT_EQ(publishUnderFreeName(staged / "dock.plist", dir.path(), "dock-1", ".plist"), dir / "dock-1-001.plist");
    EXPECT_EQ(readFileIfExists(dir / "dock-1.plist"), "older");
    EXPECT_EQ(readFileIfExists(dir / "dock-1-001.plist"), "newer");
    EXPECT_FALSE(fs::exists(staged / "dock.plist"));

    writeText(dir / "2026-quit/info.json", "{}");
    writeText(staged / "info.json", "{\"b\":1}");
    EXPECT_EQ(publishUnderFreeName(staged, dir.path(), "2026-quit"), dir / "2026-quit-001");
    EXPECT_EQ(readFileIfExists(dir / "2026-quit/info.json"), "{}");
    EXPECT_EQ(readFileIfExists(dir / "2026-quit-001/info.json"), "{\"b\":1}");
}

TEST(AtomicFile, WritersPublishingUnderOneNameAtOnceEachKeepTheirOwnFile) {
    TemporaryDirectory dir;
    constexpr int perWriter = 150;
    auto writer = [&](std::string tag) {
        for (int i = 0; i < perWriter; ++i) {
            auto staged = createTemporaryFolder(dir.path(), "dock");
            writeText(staged / "f", tag + std::to_string(i));
            publishUnderFreeName(staged / "f", dir.path(), "dock", ".plist");
            fs::remove(staged);
        }
    };
    std::thread a(writer, "a"), b(writer, "b");
    a.join();
    b.join();
    std::set<std::string> contents;
    for (const auto& entry : fs::directory_iterator(dir.path())) contents.insert(*readFileIfExists(entry.path()));
    EXPECT_EQ(contents.size(), 2u * perWriter);
}

TEST(AtomicFile, AReadRacingAFileComingAndGoingSeesItWholeOrMissing) {
    TemporaryDirectory dir;
    auto path = dir / "widgets.json";
    std::atomic<bool> done = false;
    std::thread churn([&] {
        for (int i = 0; i < 3000; ++i) {
            writeFileAtomically(path, "whole");
            fs::remove(path);
        }
        done = true;
    });
    int failures = 0;
    while (!done) {
        try {
            auto contents = readFileIfExists(path);
            EXPECT_TRUE(!contents || *contents == "whole");
        } catch (const DataFileError& error) {
            if (++failures == 1) ADD_FAILURE() << error.what();
        }
    }
    churn.join();
    EXPECT_EQ(failures, 0);
}
