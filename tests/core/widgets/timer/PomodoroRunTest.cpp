#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "fakes/FixedOffsetCalendar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

const FixedOffsetCalendar calendar(-5 * 3600);
const CalendarDay today{2026, 6, 10};
const Date morning = calendar.at(today, 9);

PomodoroSettings withCycles(int cycles) {
    PomodoroSettings settings;
    settings.cyclesBeforeLongBreak = cycles;
    return settings;
}

using Phase = PomodoroPhase;

} // namespace

TEST(PomodoroRun, PhasesAndCyclesFollowTheLongBreakRhythm) {
    struct Case {
        int cyclesBeforeLongBreak;
        std::vector<Phase> phases;
        std::vector<int> cycles;
    };
    const Case cases[] = {
        {4,
         {Phase::focus, Phase::shortBreak, Phase::focus, Phase::shortBreak, Phase::focus, Phase::shortBreak,
          Phase::focus, Phase::longBreak, Phase::focus},
         {0, 1, 1, 2, 2, 3, 3, 4, 0}},
        // One and zero act as two: never a long break after every session.
        {1, {Phase::focus, Phase::shortBreak, Phase::focus, Phase::longBreak, Phase::focus}, {0, 1, 1, 2, 0}},
        {0, {Phase::focus, Phase::shortBreak, Phase::focus, Phase::longBreak, Phase::focus}, {0, 1, 1, 2, 0}},
    };
    for (const auto& c : cases) {
        auto settings = withCycles(c.cyclesBeforeLongBreak);
        PomodoroRun run;
        run.resetEverything(morning);
        std::vector<Phase> phases;
        std::vector<int> cycles;
        auto now = morning;
        for (std::size_t i = 0; i < c.phases.size(); ++i) {
            phases.push_back(run.phase);
            cycles.push_back(run.cycle);
            run.start(now, calendar);
            now = now + run.length(settings);
            run.advance(now, settings, true, calendar);
        }
        EXPECT_EQ(phases, c.phases) << c.cyclesBeforeLongBreak;
        EXPECT_EQ(cycles, c.cycles) << c.cyclesBeforeLongBreak;
    }
}

TEST(PomodoroRun, SkippingFocusCountsNothingButStillChoosesTheBreakByTheNextSession) {
    auto settings = withCycles(4);
    PomodoroRun run;
    run.resetEverything(morning);
    run.cycle = 3;
    run.sessionsToday = 5;
    run.start(morning, calendar);
    run.advance(morning + 60, settings, false, calendar);
    EXPECT_EQ(run.phase, Phase::longBreak);
    EXPECT_EQ(run.cycle, 3);
    EXPECT_EQ(run.sessionsToday, 5);
    // Skipping the long break still starts a new round.
    run.advance(morning + 120, settings, false, calendar);
    EXPECT_EQ(run.phase, Phase::focus);
    EXPECT_EQ(run.cycle, 0);
}

TEST(PomodoroRun, BreaksStartByThemselvesWhenAskedButFocusNeverDoes) {
    auto settings = withCycles(4);
    settings.startsBreaksAutomatically = true;
    PomodoroRun run;
    run.resetEverything(morning);
    run.start(morning, calendar);
    auto focusEnd = morning + settings.focus;
    run.advance(focusEnd, settings, true, calendar);
    EXPECT_EQ(run.phase, Phase::shortBreak);
    EXPECT_EQ(run.startedAt, focusEnd);
    EXPECT_EQ(run.endDate(settings), focusEnd + settings.shortBreak);
    run.advance(focusEnd + settings.shortBreak, settings, true, calendar);
    EXPECT_EQ(run.phase, Phase::focus);
    EXPECT_FALSE(run.isRunning());
    EXPECT_EQ(run.accumulated, 0);

    settings.startsBreaksAutomatically = false;
    run.start(morning + 4000, calendar);
    run.advance(morning + 5000, settings, true, calendar);
    EXPECT_FALSE(run.isRunning());
}

TEST(PomodoroRun, PhaseLengthsComeFromTheSettingsAndAreAtLeastASecond) {
    PomodoroSettings settings;
    settings.focus = 0;
    settings.shortBreak = 120;
    settings.longBreak = -4;
    PomodoroRun run;
    EXPECT_EQ(run.length(settings), 1);
    run.start(morning, calendar);
    EXPECT_TRUE(run.isFinished(morning + 1, settings));
    EXPECT_FALSE(run.isFinished(morning + 0.5, settings));
    EXPECT_EQ(run.displayedSeconds(morning + 0.5, settings), 1);
    run.phase = Phase::shortBreak;
    EXPECT_EQ(run.remaining(morning + 30, settings), 90);
    EXPECT_EQ(run.progress(morning + 30, settings), 0.25);
    EXPECT_EQ(run.endDate(settings), morning + 120);
    run.phase = Phase::longBreak;
    EXPECT_EQ(run.length(settings), 1);
    EXPECT_EQ(run.progress(morning + 30, settings), 1);
}

TEST(PomodoroRun, ANewDayStartsTheSessionCountAgain) {
    PomodoroSettings settings;
    PomodoroRun run;
    run.resetEverything(morning);
    run.start(morning, calendar);
    run.advance(morning + settings.focus, settings, true, calendar);
    EXPECT_EQ(run.sessionsToday, 1);

    // Paused across midnight (local, five hours behind UTC): the next start counts from zero.
    auto lateEvening = calendar.at(today, 23, 59);
    run.start(lateEvening - 60, calendar);
    run.pause(lateEvening);
    run.start(calendar.at(today.adding(1), 0, 1), calendar);
    EXPECT_EQ(run.sessionsToday, 0);
    EXPECT_EQ(run.cycle, 1);
    EXPECT_EQ(run.day, calendar.at(today.adding(1), 0, 1));

    // The same local day keeps counting even though UTC has moved on.
    PomodoroRun sameDay;
    sameDay.day = calendar.at(today, 18);
    sameDay.sessionsToday = 3;
    sameDay.rollDay(calendar.at(today, 23), calendar);
    EXPECT_EQ(sameDay.sessionsToday, 3);
}

TEST(PomodoroRun, RecordRoundTripsThroughItsJson) {
    PomodoroRun run;
    run.phase = Phase::longBreak;
    run.cycle = 4;
    run.sessionsToday = 7;
    run.day = morning;
    run.start(morning, calendar);
    EXPECT_EQ(decodePomodoroRun(encodePomodoroRun(run)), run);
    EXPECT_EQ(decodePomodoroRun("{}"), PomodoroRun{});
    EXPECT_THROW(decodePomodoroRun(R"({"phase": "nap"})"), DecodingError);
    EXPECT_EQ(PomodoroRun::format(1500), "25:00");
}
