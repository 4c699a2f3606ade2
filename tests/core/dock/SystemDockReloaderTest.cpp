#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/SystemDockReloader.hpp"
#include "fakes/FakeProcessTable.hpp"
#include "fakes/ManualSleeper.hpp"
#include "fakes/ScriptedProcessRunner.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class SystemDockReloaderTest : public ::testing::Test {
protected:
    std::string reloadFailure() {
        auto error = thrown<DockError>([&] { reloader.reload(); }).value_or(DockError::noBackupAvailable());
        EXPECT_EQ(error.kind, DockError::Kind::dockReloadFailed);
        return error.errorDescription();
    }

    ManualClock clock{Date{1000}};
    ManualSleeper sleeper{clock};
    FakeProcessTable processes;
    ScriptedProcessRunner runner;
    SystemDockReloader reloader{processes, runner, clock, sleeper};
};

TEST_F(SystemDockReloaderTest, WaitsOnlyForTheRestOfAYoungDocksSettleTime) {
    reloader.waitUntilSettled();
    EXPECT_TRUE(sleeper.sleeps.empty()) << "no Dock, no wait";

    processes.start("Dock", 10, clock.now() - 0.5);
    reloader.waitUntilSettled();
    EXPECT_EQ(sleeper.sleeps, std::vector<double>{1.5});

    sleeper.sleeps.clear();
    reloader.waitUntilSettled();
    EXPECT_TRUE(sleeper.sleeps.empty()) << "a settled Dock";

    processes.start("Dock", 11, clock.now() + 30);
    reloader.waitUntilSettled();
    EXPECT_EQ(sleeper.sleeps, std::vector<double>{2.0}) << "a start time ahead of the clock waits no more than the interval";
}

TEST_F(SystemDockReloaderTest, KillsTheDockAndReturnsWhenANewOneRuns) {
    processes.start("Dock", 10, Date{0});
    runner.onRun = [&](const ProcessRequest&) { processes.stop("Dock"); };
    int polls = 0;
    sleeper.onSleep = [&] {
        if (++polls == 3) processes.start("Dock", 42, clock.now());
    };
    reloader.reload();

    ASSERT_EQ(runner.requests.size(), 1u);
    EXPECT_EQ(runner.requests[0].executable, "/usr/bin/killall");
    EXPECT_EQ(runner.requests[0].arguments, std::vector<std::string>{"Dock"});
    EXPECT_EQ(sleeper.sleeps, (std::vector<double>{0.1, 0.1, 0.1}));
}

TEST_F(SystemDockReloaderTest, ADockThatStillRunsUnderItsOldIdIsNotANewOne) {
    processes.start("Dock", 10, Date{0});
    EXPECT_EQ(reloadFailure(), "Failed to reload dock because the Dock did not relaunch");
    EXPECT_NEAR(sleeper.total(), 5.0, 1e-9);
}

TEST_F(SystemDockReloaderTest, WithNoDockBeforeAnyDockThatAppearsCounts) {
    sleeper.onSleep = [&] { processes.start("Dock", 10, clock.now()); };
    reloader.reload();
    EXPECT_EQ(sleeper.sleeps.size(), 1u);
}

TEST_F(SystemDockReloaderTest, KillallFailuresNameTheirCause) {
    runner.result = ProcessResult{1, false, false, "", ""};
    EXPECT_EQ(reloadFailure(), "Failed to reload dock because killall exited with 1: ");

    runner.result = ProcessResult{1, false, false, "", "Dock: no process found\n"};
    EXPECT_EQ(reloadFailure(), "Failed to reload dock because killall exited with 1: Dock: no process found");

    runner.result = ProcessResult{2, false, false, "", "\xff\xfe"};
    EXPECT_EQ(reloadFailure(), "Failed to reload dock because killall exited with 2");

    runner.launchError = "No such file or directory";
    EXPECT_EQ(reloadFailure(), "Failed to reload dock because failed to launch killall: No such file or directory");
    EXPECT_TRUE(sleeper.sleeps.empty());
}

} // namespace
} // namespace corvane
