#include "CorvaneCore/automation/FocusBinding.hpp"
#include "CorvaneCore/automation/FocusModeMonitor.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeFocusStatusProvider.hpp"
#include "fakes/ManualScheduler.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(FocusModeMonitor, ReportsChangesOnItsOwnTimerAndReportsAgainAfterAnUnknownReading) {
    ManualClock clock;
    ManualScheduler queue(clock);
    FakeFocusStatusProvider provider;
    provider.readings = {true, true, std::nullopt, true};
    CapturingLog log;
    FocusModeMonitor monitor(provider, queue, log, 5.0);
    std::vector<bool> reports;
    monitor.start([&](bool focused) { reports.push_back(focused); });
    EXPECT_TRUE(log.contains("focus monitor started (interval=5.000000s)"));

    queue.advance(4.9);
    EXPECT_EQ(provider.polls, 0) << "the first poll comes one interval after the start";
    queue.advance(0.1 + 5 * 3);
    EXPECT_EQ(provider.polls, 4);
    EXPECT_EQ(reports, (std::vector<bool>{true, true}));
    EXPECT_TRUE(log.contains("focus changed: isFocused=true"));

    monitor.stop();
    EXPECT_TRUE(log.contains("focus monitor stopped"));
    queue.advance(60);
    EXPECT_EQ(provider.polls, 4);
    EXPECT_FALSE(monitor.isRunning());

    // A restart keeps the last known value: the same reading again is no change.
    provider.reading = true;
    monitor.start([&](bool focused) { reports.push_back(focused); });
    queue.advance(5);
    EXPECT_EQ(reports.size(), 2u);
    EXPECT_EQ(provider.polls, 5) << "only the restarted timer polls";
}

TEST(FocusModeMonitor, WithoutPermissionNothingIsEverReported) {
    ManualClock clock;
    ManualScheduler queue(clock);
    FakeFocusStatusProvider provider;
    provider.access = FocusAuthorization::denied;
    CapturingLog log;
    int reports = 0;
    {
        FocusModeMonitor monitor(provider, queue, log);
        monitor.start([&](bool) { ++reports; });
        queue.advance(30);
    }
    EXPECT_EQ(provider.polls, 6);
    EXPECT_EQ(reports, 0);
    EXPECT_EQ(queue.pendingCount(), 0u) << "a monitor that goes away takes its timer with it";
}

TEST(FocusBinding, OnPicksTheFirstBoundWorkspaceOffTheFirstUnbound) {
    std::vector<Profile> profiles(4);
    profiles[0].name = "Home";
    profiles[1].name = "Deep work";
    profiles[1].focusModeBinding = "Work";
    profiles[2].name = "Reading";
    profiles[2].focusModeBinding = ""; // an empty text is still a binding
    profiles[3].name = "Play";
    EXPECT_EQ(FocusBinding::workspace(true, profiles)->name, "Deep work");
    EXPECT_EQ(FocusBinding::workspace(false, profiles)->name, "Home");

    for (auto& p : profiles) p.focusModeBinding = "any";
    EXPECT_EQ(FocusBinding::workspace(false, profiles), nullptr);
    profiles.clear();
    EXPECT_EQ(FocusBinding::workspace(true, profiles), nullptr);
    EXPECT_FALSE(FocusBinding::anyBound(profiles));
}
