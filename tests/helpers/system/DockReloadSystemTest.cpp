// The real reloader, process table and process runner against the stand-in Dock. The only tests
// that wait on wall time: each wait is bounded and polls, so a loaded machine only makes them slower.

#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneCore/dock/SystemDockReloader.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/PosixProcessRunner.hpp"
#include "platform/posix/ProcProcessTable.hpp"
#include "platform/posix/SystemClock.hpp"
#include "platform/posix/ThreadSleeper.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace corvane {
namespace {

DockItem app(std::string path) { return AppEntry{std::move(path), std::nullopt, std::nullopt, std::nullopt}; }

template <typename Predicate> bool waitFor(Predicate predicate, double seconds = 8.0) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!predicate()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

struct Start {
    int pid = 0;
    std::string items;
};

class DockReloadSystemTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (::access(SystemDockReloader::killallPath, X_OK) != 0) GTEST_SKIP() << "killall is not installed";
        DockPlistWriter(backend).write(DockSnapshot{{app("/Applications/Old.app")}, {}, {}});
    }

    void TearDown() override {
        if (supervisor_ <= 0) return;
        ::kill(supervisor_, SIGTERM);
        int status = 0;
        if (!waitFor([&] { return ::waitpid(supervisor_, &status, WNOHANG) == supervisor_; }, 5.0)) {
            ADD_FAILURE() << "the supervisor did not stop";
            ::kill(supervisor_, SIGKILL);
            ::waitpid(supervisor_, &status, 0);
        }
    }

    /// Starts the supervised Dock and waits until it has read its preferences.
    enum class Restores { never, once, always };
    void startDock(Restores restores) {
        std::vector<std::string> arguments{CORVANE_DOCK_SUPERVISOR, CORVANE_DOCK_STANDIN, plist.string(), log.string()};
        if (restores != Restores::never) {
            arguments.push_back(restores == Restores::once ? "--restore-once" : "--restore-always");
            arguments.push_back(marker.string());
        }
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        ASSERT_EQ(posix_spawn(&supervisor_, argv[0], nullptr, nullptr, argv.data(), environ), 0);
        ASSERT_TRUE(waitFor([&] { return !starts().empty(); })) << "the Dock did not start";
    }

    std::vector<Start> starts() const {
        std::vector<Start> result;
        std::istringstream lines(readText(log));
        for (std::string line; std::getline(lines, line);) {
            auto space = line.find(' ');
            if (space == std::string::npos) continue;
            result.push_back(Start{std::stoi(line.substr(0, space)), line.substr(space + 1)});
        }
        return result;
    }

    TemporaryDirectory folder;
    std::filesystem::path plist = folder / "com.apple.dock.plist";
    std::filesystem::path log = folder / "starts.log";
    std::filesystem::path marker = folder / "restored";
    PlistFileBackend backend{plist};
    SystemClock clock;
    ThreadSleeper sleeper;
    ProcProcessTable processes;
    PosixProcessRunner runner;
    // A short settle time keeps the test quick. The relaunch wait is longer than the production
    // one: it only polls, and a sanitized build on a loaded machine can take seconds to start the
    // stand-in again.
    SystemDockReloader reloader{processes, runner, clock, sleeper, DockReloadTiming{0.3, 20.0, 0.05},
                                CORVANE_DOCK_STANDIN_NAME};
    DockSwapper swapper{DockPlistReader(backend, clock), DockPlistWriter(backend), reloader};
    const DockSnapshot target{{app("/Applications/New.app"), SpacerVariant::small}, {}, {}};

private:
    pid_t supervisor_ = 0;
};

TEST_F(DockReloadSystemTest, TheProcessTableFindsTheDockAndASwapRestartsItWithTheNewItems) {
    auto before = clock.now();
    startDock(Restores::never);
    auto dock = processes.find(CORVANE_DOCK_STANDIN_NAME);
    ASSERT_TRUE(dock);
    EXPECT_NEAR(dock->startTime - before, 0.0, 2.0);
    EXPECT_FALSE(processes.find("no-such-process"));
    const int firstDock = starts().front().pid;
    EXPECT_EQ(dock->pid, firstDock);
    ASSERT_EQ(starts().front().items, "/Applications/Old.app|");

    swapper.swap(target);

    EXPECT_TRUE(waitFor([&] {
        auto all = starts();
        return all.back().pid != firstDock && all.back().items == "/Applications/New.app|spacer|";
    })) << readText(log);
}

TEST_F(DockReloadSystemTest, ADockThatRestoresItsOldItemsWhileRestartingIsSwappedOnTheRetry) {
    startDock(Restores::once);
    swapper.swap(target);

    EXPECT_TRUE(std::filesystem::exists(marker)) << "the stand-in put its old items back once";
    EXPECT_FALSE(DockChangeDetector::diff(target, swapper.snapshot()).hasChanges());
    EXPECT_TRUE(waitFor([&] { return starts().back().items == "/Applications/New.app|spacer|"; })) << readText(log);
}

TEST_F(DockReloadSystemTest, ADockThatAlwaysRestoresItsOldItemsFailsTheSwap) {
    startDock(Restores::always);
    EXPECT_STREQ(thrown<DockError>([&] { swapper.swap(target); }).value().what(),
                 "Failed to reload dock because the Dock kept its previous items; try again");
}

} // namespace
} // namespace corvane
