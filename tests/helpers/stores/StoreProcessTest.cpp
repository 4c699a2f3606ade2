// The data folder's files under processes that die mid-save or write at the same time, with the
// store writer run as a separate process.

#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/SystemClock.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <set>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

constexpr const char* kWriter = CORVANE_STORE_WRITER;

/// A running store writer; its standard output, if asked for, comes through a pipe.
class Writer {
public:
    explicit Writer(std::vector<std::string> arguments, bool pipesOutput = false) : arguments_(std::move(arguments)) {
        std::vector<char*> argv{const_cast<char*>(kWriter)};
        for (auto& argument : arguments_) argv.push_back(argument.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        int fds[2] = {-1, -1};
        if (pipesOutput) {
            if (::pipe(fds) != 0) throw std::runtime_error("pipe failed");
            output_ = fds[0];
            posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
            posix_spawn_file_actions_addclose(&actions, fds[0]);
            posix_spawn_file_actions_addclose(&actions, fds[1]);
        }
        int error = posix_spawn(&pid_, kWriter, &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (fds[1] >= 0) ::close(fds[1]);
        if (error != 0) throw std::runtime_error("cannot start the store writer");
    }
    ~Writer() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        if (output_ >= 0) ::close(output_);
    }

    /// Waits for `rounds` finished rounds of the churn; false when the writer ended first.
    bool awaitRounds(int rounds) {
        char byte;
        for (int i = 0; i < rounds; ++i)
            if (::read(output_, &byte, 1) != 1) return false;
        return true;
    }
    /// The exit status, or -1 when the writer did not exit normally.
    int wait() {
        int status = 0;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill() {
        ::kill(pid_, SIGKILL);
        int status = 0;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
    }

private:
    std::vector<std::string> arguments_;
    pid_t pid_ = -1;
    int output_ = -1;
};

std::vector<std::string> temporariesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec))
        if (isTemporaryName(entry.path().filename().string())) names.push_back(entry.path().filename().string());
    return names;
}

/// Everything a killed writer may leave: each file reads, each backup is whole, and nothing else
/// lies around but temporaries.
void expectConsistent(const fs::path& dir) {
    ASSERT_NO_THROW(ProfileStore{dir / "profiles.json"});
    ASSERT_NO_THROW(WidgetStore{dir / "widgets.json"});
    if (fs::exists(dir / "dock.plist")) {
        ASSERT_NO_THROW(PlistFileBackend(dir / "dock.plist").readTiles());
    }

    const std::set<std::string> known = {"profiles.json", "widgets.json", "dock.plist", "backups", "workspace-backups",
                                         ".profiles.json.lock", ".widgets.json.lock"};
    for (const auto& entry : fs::directory_iterator(dir)) {
        auto name = entry.path().filename().string();
        EXPECT_TRUE(known.count(name) || isTemporaryName(name)) << "left behind: " << name;
    }

    WorkspaceBackupStore workspaceBackups(dir, 5);
    std::set<fs::path> listed;
    for (const auto& backup : workspaceBackups.list()) {
        listed.insert(backup.url);
        auto profiles = readFileIfExists(backup.url / "profiles.json");
        ASSERT_TRUE(profiles) << backup.url;
        EXPECT_NO_THROW(profilesFileFromText(*profiles)) << backup.url;
        if (auto widgets = readFileIfExists(backup.url / "widgets.json")) {
            EXPECT_NO_THROW(WidgetsFileCodec::decode(*widgets)) << backup.url;
        }
    }
    if (fs::exists(dir / "workspace-backups")) {
        for (const auto& entry : fs::directory_iterator(dir / "workspace-backups")) {
            EXPECT_TRUE(listed.count(entry.path()) || isTemporaryName(entry.path().filename().string()))
                << "a backup folder that is not listed: " << entry.path().filename();
        }
    }

    if (fs::exists(dir / "backups"))
        for (const auto& entry : fs::directory_iterator(dir / "backups")) {
            auto name = entry.path().filename().string();
            if (isTemporaryName(name)) continue;
            EXPECT_TRUE(name.starts_with("dock-") && entry.path().extension() == ".plist") << name;
            EXPECT_NO_THROW(PlistFileBackend(entry.path()).readTiles()) << name;
        }
}

/// Where the writers work: a memory file system when there is one. Flushing to disk protects
/// against power loss, not against a kill, and would make each save many times slower here.
fs::path scratchFolder() {
    std::error_code ec;
    return fs::is_directory("/dev/shm", ec) ? fs::path("/dev/shm") : fs::temp_directory_path();
}

/// One save of every kind, as the next run of the application would make.
void saveEverything(const fs::path& dir) {
    ProfileStore(dir / "profiles.json").save();
    WidgetStore(dir / "widgets.json").save();
    PlistFileBackend dock(dir / "dock.plist");
    dock.writeTiles(dock.readTiles());
    SystemClock clock;
    BackupManager(dir / "backups", dock, [](const fs::path& file) { return std::make_unique<PlistFileBackend>(file); },
                  clock)
        .snapshot();
    WorkspaceBackupStore(dir, 5).backUp(WorkspaceBackup::Reason::manual, clock.now());
}

} // namespace

TEST(StoreProcesses, AWriterKilledAtAnyMomentLeavesReadableFilesAndOnlyTemporariesTheNextSaveRemoves) {
    TemporaryDirectory dir;
    std::mt19937 random(std::random_device{}());
    int cutShort = 0;
    for (int kill = 0; kill < 200; ++kill) {
        Writer writer({"churn", dir.path().string()}, /*pipesOutput=*/true);
        // The first round brings every file into being.
        if (kill == 0) {
            ASSERT_TRUE(writer.awaitRounds(1));
        }
        // Waiting here is the point: the kill must land at an unforeseen moment of a round.
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
        writer.kill();

        expectConsistent(dir.path());
        if (::testing::Test::HasFatalFailure()) return;
        cutShort += !temporariesIn(dir.path()).empty() || !temporariesIn(dir / "backups").empty() ||
                    !temporariesIn(dir / "workspace-backups").empty();
        if (kill % 20 == 19) {
            saveEverything(dir.path());
            EXPECT_TRUE(temporariesIn(dir.path()).empty());
            EXPECT_TRUE(temporariesIn(dir / "backups").empty());
            EXPECT_TRUE(temporariesIn(dir / "workspace-backups").empty());
        }
    }
    // Otherwise the test proved nothing about a save cut short.
    EXPECT_GT(cutShort, 0);
    std::printf("saves cut short: %d\n", cutShort);
}

TEST(StoreProcesses, TwoWritersChangingTheWidgetsFileAtOnceLoseNothing) {
    TemporaryDirectory dir(scratchFolder());
    constexpr int rounds = 100;
    Writer first({"widgets", dir.path().string(), "A", std::to_string(rounds)});
    Writer second({"widgets", dir.path().string(), "B", std::to_string(rounds)});
    ASSERT_EQ(first.wait(), 0);
    ASSERT_EQ(second.wait(), 0);

    WidgetStore store(dir / "widgets.json");
    std::set<std::string> names;
    for (const auto& widget : store.file().widgets) names.insert(widget.name);
    for (std::string tag : {"A", "B"}) {
        for (int round = 0; round < rounds; ++round) EXPECT_TRUE(names.count(tag + "-" + std::to_string(round))) << tag << round;
        auto counter = std::find_if(store.file().widgets.begin(), store.file().widgets.end(),
                                    [&](const DockWidget& widget) { return widget.name == tag + "-counter"; });
        ASSERT_NE(counter, store.file().widgets.end());
        EXPECT_EQ(std::get<NoteSettings>(counter->kind.value).text, std::to_string(rounds)) << tag;
    }
}
