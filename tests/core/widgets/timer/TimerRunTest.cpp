#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
const Date t0{800000000};
}

TEST(RunClock, PausesAccumulateAndAClockSetBackNeverTakesTimeAway) {
    StopwatchRun run;
    EXPECT_FALSE(run.hasStarted());
    run.start(t0);
    run.start(t0 + 5); // already running: the first start stands
    EXPECT_EQ(run.elapsed(t0 + 10), 10);
    run.pause(t0 + 10);
    run.pause(t0 + 50);
    EXPECT_EQ(run.elapsed(t0 + 99), 10);
    EXPECT_TRUE(run.hasStarted());

    run.start(t0 + 100);
    EXPECT_EQ(run.elapsed(t0 + 40), 10);
    run.pause(t0 + 40);
    EXPECT_EQ(run.accumulated, 10);
}

TEST(TimerRun, CountdownReadings) {
    TimerRun run;
    run.startCountdown(t0, 90);
    run.pause(t0 + 30);
    run.start(t0 + 100);
    struct Case {
        double at;
        double remaining;
        std::int64_t displayed;
        double progress;
        bool finished;
    };
    for (auto c : {Case{100, 60, 60, 1.0 / 3, false}, Case{100.2, 59.8, 60, 30.2 / 90, false},
                   Case{159.5, 0.5, 1, 89.5 / 90, false}, Case{160, 0, 0, 1, true}, Case{500, 0, 0, 1, true}}) {
        EXPECT_NEAR(run.remaining(t0 + c.at), c.remaining, 1e-6) << c.at;
        EXPECT_EQ(run.displayedSeconds(t0 + c.at), c.displayed) << c.at;
        EXPECT_NEAR(run.progress(t0 + c.at), c.progress, 1e-6) << c.at;
        EXPECT_EQ(run.isFinished(t0 + c.at), c.finished) << c.at;
    }
    EXPECT_EQ(run.endDate(), t0 + 160);
    run.pause(t0 + 120);
    EXPECT_FALSE(run.endDate());

    TimerRun empty;
    empty.duration = 0;
    EXPECT_EQ(empty.progress(t0), 1);
}

TEST(TimerRun, StartingAFinishedCountdownStartsItOver) {
    TimerRun run;
    run.startCountdown(t0, 60);
    run.pause(t0 + 61);
    ASSERT_TRUE(run.isFinished(t0 + 61));
    run.start(t0 + 70);
    EXPECT_EQ(run.accumulated, 0);
    EXPECT_EQ(run.remaining(t0 + 70), 60);
    EXPECT_EQ(run.endDate(), t0 + 130);

    // A paused, unfinished countdown resumes where it was.
    run.pause(t0 + 80);
    run.start(t0 + 90);
    EXPECT_EQ(run.remaining(t0 + 90), 50);
}

TEST(TimerRun, StopwatchModeCountsUpAndNeverFinishes) {
    TimerRun run;
    run.mode = TimerRun::Mode::stopwatch;
    run.duration = 10;
    run.start(t0);
    EXPECT_FALSE(run.isFinished(t0 + 3600));
    EXPECT_FALSE(run.endDate());
    EXPECT_EQ(run.displayedSeconds(t0 + 125.9), 125);
    EXPECT_NEAR(run.progress(t0 + 125), 5.0 / 60, 1e-9);
    EXPECT_EQ(run.progress(t0 + 120), 0);
}

TEST(TimerRun, FormatsPadSecondsButNotTheLeadingField) {
    struct Case {
        std::int64_t seconds;
        const char* text;
    };
    for (auto c : {Case{0, "0:00"}, Case{59, "0:59"}, Case{600, "10:00"}, Case{3599, "59:59"}, Case{3600, "1:00:00"},
                   Case{3661, "1:01:01"}, Case{36000, "10:00:00"}, Case{-5, "0:00"}})
        EXPECT_EQ(TimerRun::format(c.seconds), c.text) << c.seconds;
}

TEST(StopwatchRun, TextPadsMinutesAndShowsTenthsOnRequest) {
    struct Case {
        double seconds;
        bool tenths;
        const char* text;
    };
    for (auto c : {Case{61.27, true, "01:01.2"}, Case{61.27, false, "01:01"}, Case{0.99, true, "00:00.9"},
                   Case{-3, true, "00:00.0"}, Case{3599.95, true, "59:59.9"}, Case{3725.5, true, "1:02:05"},
                   Case{3725.5, false, "1:02:05"}})
        EXPECT_EQ(StopwatchRun::text(c.seconds, c.tenths), c.text) << c.seconds;
}

TEST(StopwatchRun, LapsRecordTotalsAndResetClearsThem) {
    StopwatchRun run;
    run.toggle(t0);
    run.lap(t0 + 12.5);
    run.toggle(t0 + 20);
    run.lap(t0 + 40);
    EXPECT_EQ(run.laps, (std::vector<double>{12.5, 20}));
    run.toggle(t0 + 50);
    EXPECT_EQ(run.elapsed(t0 + 51), 21);
    run.reset();
    EXPECT_EQ(run, StopwatchRun{});
}

TEST(TimerRun, RecordsRoundTripThroughTheirJsonAndToleratePartialRecords) {
    TimerRun timer;
    timer.startCountdown(t0, 1500);
    timer.pause(t0 + 12.5);
    EXPECT_EQ(decodeTimerRun(encodeTimerRun(timer)), timer);
    timer.mode = TimerRun::Mode::stopwatch;
    timer.start(t0 + 20);
    EXPECT_EQ(decodeTimerRun(encodeTimerRun(timer)), timer);
    EXPECT_NE(encodeTimerRun(timer).find("\"mode\":\"stopwatch\""), std::string::npos);
    EXPECT_EQ(decodeTimerRun("{}"), TimerRun{});
    EXPECT_THROW(decodeTimerRun(R"({"mode": "sundial"})"), DecodingError);

    StopwatchRun stopwatch;
    stopwatch.start(t0);
    stopwatch.lap(t0 + 3);
    EXPECT_EQ(decodeStopwatchRun(encodeStopwatchRun(stopwatch)), stopwatch);
    EXPECT_THROW(decodeStopwatchRun(R"({"laps": 3})"), DecodingError);
}
