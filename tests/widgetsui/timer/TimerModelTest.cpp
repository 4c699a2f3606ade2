#include "CorvaneWidgetsUI/timer/SecondTicker.hpp"
#include "CorvaneWidgetsUI/timer/TimerModel.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingUserAlerts.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

struct TimerHarness {
    ManualClock clock;
    ManualScheduler scheduler{clock};
    FixedOffsetCalendar calendar;
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    SecondTicker ticker{scheduler};
    DockWidget widget{Uuid::generate(), "Tea", std::nullopt, TimerSettings{{180, 240}}};

    TimeKeepingServices services() { return {clock, calendar, alerts, &defaults}; }
};

} // namespace

TEST(TimerModel, TheTickStopsAFinishedCountdownAtZeroRingsOnceAndAsksForAttention) {
    TimerHarness h;
    TimerModel model(h.widget, h.services());
    EXPECT_EQ(model.run().duration, 180); // the first preset
    int changes = 0;
    model.onChange = [&] { ++changes; };
    h.ticker.add([&] { model.tick(); });

    model.startCountdown(60);
    const auto* notification = h.alerts.pendingNotification(model.notificationIdentifier());
    ASSERT_NE(notification, nullptr);
    EXPECT_EQ(notification->title, "Time's up");
    EXPECT_EQ(notification->delay, 60);
    EXPECT_EQ(model.notificationIdentifier(), "dev.tessik.corvane.timer." + h.widget.id.string());

    h.scheduler.advance(59);
    EXPECT_TRUE(model.run().isRunning());
    EXPECT_EQ(model.run().displayedSeconds(model.now()), 1);
    EXPECT_TRUE(h.alerts.sounds.empty());

    h.scheduler.advance(1);
    EXPECT_FALSE(model.run().isRunning());
    EXPECT_GE(model.run().accumulated, 60);
    EXPECT_EQ(h.alerts.sounds, std::vector<std::string>{"Glass"});
    EXPECT_EQ(h.alerts.attentionRequests, std::vector<UserAlerts::Attention>{UserAlerts::Attention::critical});

    h.scheduler.advance(5);
    EXPECT_EQ(h.alerts.sounds.size(), 1u);
    EXPECT_EQ(changes, 1 + 65); // the preset, then one per tick

    // Starting again starts over.
    model.start();
    EXPECT_EQ(model.run().remaining(model.now()), 60);
}

TEST(TimerModel, PausingWithdrawsTheNotificationAndResumingSchedulesWhatIsLeft) {
    TimerHarness h;
    TimerModel model(h.widget, h.services());
    model.startCountdown(300);
    h.clock.advance(100);
    model.pause();
    EXPECT_TRUE(h.alerts.pending.empty());
    h.clock.advance(1000);
    model.toggle();
    EXPECT_EQ(h.alerts.pendingNotification(model.notificationIdentifier())->delay, 200);
    // An end less than a second away is still announced a second out, not refused as past.
    h.clock.advance(199.6);
    model.pause();
    model.start();
    EXPECT_EQ(h.alerts.pendingNotification(model.notificationIdentifier())->delay, 1);
    model.reset();
    EXPECT_TRUE(h.alerts.pending.empty());

    // A stopwatch-mode run has no end to announce.
    model.setMode(TimerRun::Mode::stopwatch);
    model.start();
    EXPECT_TRUE(h.alerts.pending.empty());
    h.clock.advance(7200);
    model.tick();
    EXPECT_TRUE(h.alerts.sounds.empty());
}

TEST(TimerModel, RunsPersistPerWidgetAndAnUnreadableRecordGivesAFreshRun) {
    TimerHarness h;
    {
        TimerModel model(h.widget, h.services());
        model.startCountdown(90);
    }
    const auto key = "dev.tessik.corvane.timerRun." + h.widget.id.string();
    ASSERT_TRUE(h.defaults.dataValue(key));
    h.alerts.pending.clear();

    h.clock.advance(30);
    TimerModel reopened(h.widget, h.services());
    EXPECT_TRUE(reopened.run().isRunning());
    EXPECT_EQ(reopened.run().remaining(h.clock.now()), 60);
    // The restored run gets its notification back.
    EXPECT_EQ(h.alerts.pendingNotification(reopened.notificationIdentifier())->delay, 60);

    h.defaults.setString(key, "{\"mode\": 7}");
    TimerModel fresh(h.widget, h.services());
    EXPECT_FALSE(fresh.run().hasStarted());
    EXPECT_EQ(fresh.run().duration, 180);

    TimerModel other(DockWidget{Uuid::generate(), "Other", std::nullopt, TimerSettings{}}, h.services());
    EXPECT_FALSE(other.run().hasStarted());
}

TEST(SecondTicker, TicksOnceASecondOnlyWhileSomethingListens) {
    ManualClock clock;
    ManualScheduler scheduler(clock);
    SecondTicker ticker(scheduler);
    EXPECT_FALSE(ticker.isTicking());
    int a = 0, b = 0;
    auto first = ticker.add([&] { ++a; });
    SecondTicker::Handle second = 0;
    second = ticker.add([&] {
        if (++b == 2) ticker.remove(second);
    });
    scheduler.advance(3.5);
    EXPECT_EQ(a, 3);
    EXPECT_EQ(b, 2);
    ticker.remove(first);
    EXPECT_FALSE(ticker.isTicking());
    EXPECT_EQ(scheduler.pendingCount(), 0u);
    scheduler.advance(10);
    EXPECT_EQ(a, 3);
}
