#include "CorvaneWidgetsUI/timer/PomodoroModel.hpp"
#include "CorvaneWidgetsUI/timer/SecondTicker.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingUserAlerts.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

using Phase = PomodoroPhase;

struct PomodoroHarness {
    explicit PomodoroHarness(PomodoroSettings settings)
        : widget(Uuid::generate(), "Focus", std::nullopt, settings) {
        clock.set(calendar.at({2026, 9, 14}, 9));
    }

    ManualClock clock;
    ManualScheduler scheduler{clock};
    FixedOffsetCalendar calendar{3600};
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    SecondTicker ticker{scheduler};
    DockWidget widget;

    TimeKeepingServices services() { return {clock, calendar, alerts, &defaults}; }
};

PomodoroSettings shortPhases(bool automaticBreaks, bool rings) {
    PomodoroSettings settings;
    settings.focus = 10;
    settings.shortBreak = 3;
    settings.longBreak = 5;
    settings.cyclesBeforeLongBreak = 2;
    settings.startsBreaksAutomatically = automaticBreaks;
    settings.ringsAtTheEnd = rings;
    return settings;
}

} // namespace

TEST(PomodoroModel, ARoundWithAutomaticBreaksRingsPerPhaseAndCounts) {
    PomodoroHarness h(shortPhases(true, true));
    PomodoroModel model(h.widget, h.services());
    h.ticker.add([&] { model.tick(); });
    const auto id = model.notificationIdentifier();
    EXPECT_EQ(id, "dev.tessik.corvane.pomodoro." + h.widget.id.string());

    model.toggle();
    EXPECT_EQ(h.alerts.pendingNotification(id)->title, "Focus done, take a break");
    EXPECT_EQ(h.alerts.pendingNotification(id)->delay, 10);

    h.scheduler.advance(10); // focus ends; the short break runs at once
    EXPECT_EQ(model.run().phase, Phase::shortBreak);
    EXPECT_TRUE(model.run().isRunning());
    EXPECT_EQ(model.run().sessionsToday, 1);
    EXPECT_EQ(h.alerts.sounds, std::vector<std::string>{"Glass"});
    EXPECT_EQ(h.alerts.pendingNotification(id)->title, "Break over");
    EXPECT_EQ(h.alerts.pendingNotification(id)->delay, 3);

    h.scheduler.advance(3); // the break ends; focus waits for the user
    EXPECT_EQ(model.run().phase, Phase::focus);
    EXPECT_FALSE(model.run().isRunning());
    EXPECT_EQ(h.alerts.sounds, (std::vector<std::string>{"Glass", "Submarine"}));
    EXPECT_EQ(h.alerts.pendingNotification(id), nullptr);

    h.scheduler.advance(30);
    EXPECT_EQ(h.alerts.sounds.size(), 2u);

    model.toggle();
    h.scheduler.advance(10); // second session: the long break
    EXPECT_EQ(model.run().phase, Phase::longBreak);
    EXPECT_EQ(model.run().cycle, 2);
    h.scheduler.advance(5);
    EXPECT_EQ(model.run().phase, Phase::focus);
    EXPECT_EQ(model.run().cycle, 0);
    EXPECT_EQ(model.run().sessionsToday, 2);
    EXPECT_EQ(h.alerts.attentionRequests.size(), 4u);
}

TEST(PomodoroModel, WithoutRingingTheEndStillAsksForAttentionAndTheBreakWaits) {
    PomodoroHarness h(shortPhases(false, false));
    PomodoroModel model(h.widget, h.services());
    model.toggle();
    h.clock.advance(9);
    model.tick();
    EXPECT_EQ(model.run().phase, Phase::focus);
    h.clock.advance(1.4); // ticks land late; the phase ends on the first one after
    model.tick();
    EXPECT_EQ(model.run().phase, Phase::shortBreak);
    EXPECT_FALSE(model.run().isRunning());
    EXPECT_TRUE(h.alerts.sounds.empty());
    EXPECT_EQ(h.alerts.attentionRequests.size(), 1u);
    EXPECT_TRUE(h.alerts.pending.empty());
}

TEST(PomodoroModel, SkippingFocusIsNotCountedAndPausingWithdrawsTheNotification) {
    PomodoroHarness h(shortPhases(false, true));
    PomodoroModel model(h.widget, h.services());
    model.toggle();
    h.clock.advance(4);
    model.toggle();
    EXPECT_TRUE(h.alerts.pending.empty());
    EXPECT_EQ(model.run().accumulated, 4);
    model.skip();
    EXPECT_EQ(model.run().phase, Phase::shortBreak);
    EXPECT_EQ(model.run().sessionsToday, 0);
    EXPECT_EQ(model.run().cycle, 0);
    EXPECT_TRUE(h.alerts.sounds.empty());

    model.skip();
    model.finish(h.clock.now());
    EXPECT_EQ(model.run().sessionsToday, 1);
    model.resetEverything();
    EXPECT_EQ(model.run().sessionsToday, 0);
    EXPECT_EQ(model.run().phase, Phase::focus);
}

TEST(PomodoroModel, TheRunComesBackAfterARestartAndSettingChangesMoveTheEnd) {
    PomodoroHarness h(shortPhases(false, true));
    {
        PomodoroModel model(h.widget, h.services());
        model.toggle();
    }
    h.alerts.pending.clear();
    h.clock.advance(4);
    PomodoroModel model(h.widget, h.services());
    EXPECT_TRUE(model.run().isRunning());
    EXPECT_EQ(h.alerts.pendingNotification(model.notificationIdentifier())->delay, 6);

    auto longer = h.widget;
    auto settings = shortPhases(false, true);
    settings.focus = 60;
    longer.kind = settings;
    model.setWidget(longer);
    EXPECT_EQ(h.alerts.pendingNotification(model.notificationIdentifier())->delay, 56);
    EXPECT_EQ(model.run().remaining(h.clock.now(), model.settings()), 56);
}
