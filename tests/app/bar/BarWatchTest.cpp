// What the bar knows of running applications and windows, and when it looks again: after the
// system's notices, after pointer activity and on a timer only while covering matters.

#include "CorvaneApp/bar/BarWatch.hpp"
#include "fakes/FakeRunningApplications.hpp"
#include "fakes/FakeWindowList.hpp"
#include "fakes/ManualScheduler.hpp"

#include <gtest/gtest.h>

#include <memory>

using namespace corvane;

namespace {

class Watch : public ::testing::Test {
protected:
    Watch() {
        apps.launch(42, "com.apple.mail", "/Applications/Mail.app");
        windows.shown = {{.ownerPid = 42, .bounds = {0, 25, 800, 600}}};
        windows.front = 42;
        watch = std::make_unique<BarWatch>(scheduler, apps, windows,
                                           BarWatch::Callbacks{.onApplicationsChange = [this] { ++appChanges; },
                                                               .onWindowsChange = [this] { ++windowChanges; }});
    }
    std::vector<std::int32_t> pids() const {
        std::vector<std::int32_t> found;
        for (const auto& app : watch->applications()) found.push_back(app.pid);
        return found;
    }

    ManualClock clock;
    ManualScheduler scheduler{clock};
    FakeRunningApplications apps;
    FakeWindowList windows;
    std::unique_ptr<BarWatch> watch;
    int appChanges = 0, windowChanges = 0;
};

} // namespace

TEST_F(Watch, LaunchesAndQuitsAreReadOnceTheBurstSettlesAndOnlyAChangeIsReported) {
    EXPECT_EQ(pids(), (std::vector<std::int32_t>{42}));
    apps.launch(7, "com.apple.Notes");
    apps.launch(8, "com.apple.TextEdit");
    for (int i = 0; i < 3; ++i) apps.launchedOrQuit();
    EXPECT_EQ(scheduler.pendingCount(), 1u) << "one reading for the burst";
    scheduler.advance(BarWatch::applicationsSettle / 2);
    EXPECT_EQ(appChanges, 0);
    scheduler.advance(BarWatch::applicationsSettle);
    EXPECT_EQ(appChanges, 1);
    EXPECT_EQ(pids(), (std::vector<std::int32_t>{42, 7, 8}));

    // The app quits: its pid leaves the bar, so a click cannot reach a dead process.
    apps.apps.erase(apps.apps.begin());
    apps.launchedOrQuit();
    scheduler.advance(BarWatch::applicationsSettle);
    EXPECT_EQ(appChanges, 2);
    EXPECT_EQ(pids(), (std::vector<std::int32_t>{7, 8}));

    // A background process starting changes nothing the bar shows.
    apps.launchedOrQuit();
    scheduler.advance(BarWatch::applicationsSettle);
    EXPECT_EQ(appChanges, 2);

    apps.launchedOrQuit();
    watch.reset();
    EXPECT_FALSE(apps.launchedOrQuit) << "no notice reaches a watch that is gone";
    EXPECT_FALSE(windows.arranged);
    EXPECT_EQ(scheduler.pendingCount(), 0u);
}

TEST_F(Watch, WindowsAreReadAgainOnlyWhenSomethingMayHaveMovedThem) {
    EXPECT_EQ(windows.reads, 1);
    // Covering off: pointer activity and time read nothing.
    for (int i = 0; i < 10; ++i) watch->pointerActivity();
    scheduler.advance(60);
    EXPECT_EQ(windows.reads, 1);

    // Another app comes to the front and fills the screen: read at once, and after the slide.
    windows.front = 9;
    windows.shown.push_back({.ownerPid = 9, .bounds = {0, 0, 1440, 900}});
    windows.arrange();
    EXPECT_EQ(windows.reads, 2);
    EXPECT_EQ(windowChanges, 1);
    EXPECT_TRUE(watch->windowsOn({0, 0, 1440, 900}, 900).isFullScreen);
    scheduler.advance(BarWatch::arrangementSettle);
    EXPECT_EQ(windows.reads, 3);
    EXPECT_EQ(windowChanges, 1) << "the same windows are no change";

    // Covering on: a slow timer, and one reading per stretch of pointer activity.
    watch->watchCovering(true);
    EXPECT_EQ(windows.reads, 4);
    scheduler.advance(BarWatch::coverInterval * 3);
    EXPECT_EQ(windows.reads, 7);
    for (int i = 0; i < 10; ++i) watch->pointerActivity();
    scheduler.advance(BarWatch::pointerSettle);
    EXPECT_EQ(windows.reads, 8);

    watch->watchCovering(false);
    scheduler.advance(60);
    EXPECT_EQ(windows.reads, 8);
    EXPECT_EQ(scheduler.pendingCount(), 0u);
}
