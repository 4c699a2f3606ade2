#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

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

TEST(AtomicFile, SecretsGetOwnerOnlyPermissions) {
    TemporaryDirectory dir;
    writeFileAtomically(dir / "key", "k", 0600);
    struct stat info {};
    ASSERT_EQ(::stat((dir / "key").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
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

TEST(AtomicFile, FailureThrowsNamesTheFileAndKeepsTheOldContent) {
    TemporaryDirectory dir;
    auto path = dir / "data.json";
    writeFileAtomically(path, "old");
    fs::create_directory(dir / "folder");
    EXPECT_THROW(writeFileAtomically(dir / "folder", "x"), DataFileError);
    ::chmod(dir.path().c_str(), 0500);
    if (::geteuid() != 0) { // root writes through permissions
        try {
            writeFileAtomically(path, "new");
            FAIL() << "wrote into a read-only folder";
        } catch (const DataFileError& error) {
            EXPECT_NE(std::string(error.what()).find(path.string()), std::string::npos);
        }
    }
    ::chmod(dir.path().c_str(), 0700);
    EXPECT_EQ(readFileIfExists(path), "old");
    EXPECT_EQ(entriesIn(dir.path()), 2u);
}
