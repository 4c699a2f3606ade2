#include "CorvaneCore/widgets/pet/PetPace.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace corvane;

namespace {

// A long gap makes the smoothing weight exactly 1, so each reading becomes the load.
constexpr double kLongGap = 1000;

PetGait afterReading(PetPace& pace, double reading, PetMetric metric = PetMetric::cpu) {
    pace.feed(reading, kLongGap, metric);
    return pace.gait;
}

} // namespace

TEST(PetPace, GaitThresholdsHoldBackOnTheWayDown) {
    // Hot, so that the long gaps never let the calm pet fall asleep.
    PetPace pace(0, PetGait::sitting, true);
    EXPECT_EQ(afterReading(pace, 0.05), PetGait::sitting);
    EXPECT_EQ(afterReading(pace, 0.099), PetGait::sitting);
    EXPECT_EQ(afterReading(pace, 0.1), PetGait::walking);
    EXPECT_EQ(afterReading(pace, 0.449), PetGait::walking);
    EXPECT_EQ(afterReading(pace, 0.45), PetGait::running);
    EXPECT_EQ(afterReading(pace, 0.43), PetGait::running) << "running holds down to 0.42";
    EXPECT_EQ(afterReading(pace, 0.41), PetGait::walking);
    EXPECT_EQ(afterReading(pace, 0.071), PetGait::walking) << "walking holds down to 0.07";
    EXPECT_EQ(afterReading(pace, 0.069), PetGait::sitting);
    EXPECT_EQ(afterReading(pace, 0.09), PetGait::sitting) << "a sitting pet needs the full threshold again";

    PetPace memory(0, PetGait::sitting, true);
    EXPECT_EQ(afterReading(memory, 0.59, PetMetric::memory), PetGait::sitting);
    EXPECT_EQ(afterReading(memory, 0.6, PetMetric::memory), PetGait::walking);
    EXPECT_EQ(afterReading(memory, 0.85, PetMetric::memory), PetGait::running);
    EXPECT_EQ(afterReading(memory, 0.83, PetMetric::memory), PetGait::running);
}

TEST(PetPace, FirstReadingIsTakenAsItIsAndLaterOnesAreSmoothed) {
    PetPace pace;
    pace.feed(0.8, 0, PetMetric::cpu);
    EXPECT_DOUBLE_EQ(pace.load, 0.8);
    EXPECT_EQ(pace.readings, 1);
    pace.feed(0.0, PetPace::memory, PetMetric::cpu);
    EXPECT_NEAR(pace.load, 0.8 * std::exp(-1.0), 1e-12);
    pace.feed(0.5, -3, PetMetric::cpu);
    EXPECT_NEAR(pace.load, 0.8 * std::exp(-1.0), 1e-12) << "a negative gap counts as none";
    pace.feed(NAN, 10, PetMetric::cpu);
    EXPECT_EQ(pace.readings, 3) << "a reading that is not a number is ignored";
    pace.feed(7, kLongGap, PetMetric::cpu);
    EXPECT_DOUBLE_EQ(pace.load, 1.0);
    EXPECT_DOUBLE_EQ(PetPace(-2, PetGait::sitting).load, 0.0);
}

TEST(PetPace, CalmPetSitsFortyFiveSecondsThenSleepsUnlessTheMachineIsHot) {
    PetPace pace(0.3, PetGait::walking);
    pace.readings = 1;
    pace.feed(0, kLongGap, PetMetric::cpu);
    EXPECT_EQ(pace.gait, PetGait::sitting);
    EXPECT_EQ(pace.calmFor, 0) << "the calm time starts once the pet has stopped";
    for (int i = 0; i < 8; ++i)
        pace.feed(0, 5, PetMetric::cpu);
    EXPECT_EQ(pace.gait, PetGait::sitting);
    pace.feed(0, 5, PetMetric::cpu);
    EXPECT_DOUBLE_EQ(pace.calmFor, 45);
    EXPECT_EQ(pace.gait, PetGait::sleeping);

    PetPace hot(0, PetGait::sitting, true);
    for (int i = 0; i < 1000; ++i)
        hot.feed(0, 5, PetMetric::cpu);
    EXPECT_EQ(hot.gait, PetGait::sitting);
    EXPECT_GT(hot.calmFor, 45);
}

TEST(PetPace, FrameIntervalAndSpeedFollowTheEffortWithinTheGait) {
    struct Row {
        PetPace pace;
        PetMetric metric;
        double interval, speed;
    };
    std::vector<Row> rows = {
        {PetPace(0, PetGait::sleeping), PetMetric::cpu, 1.4, 0},
        {PetPace(0, PetGait::sitting), PetMetric::cpu, 0.9, 0},
        {PetPace(0.1, PetGait::walking), PetMetric::cpu, 0.24, 0.6},
        {PetPace(0.275, PetGait::walking), PetMetric::cpu, 0.19, 0.9},
        {PetPace(0.08, PetGait::walking), PetMetric::cpu, 0.24, 0.6},
        {PetPace(0.725, PetGait::walking), PetMetric::memory, 0.19, 0.9},
        {PetPace(0.45, PetGait::running), PetMetric::cpu, 0.12, 2.0},
        {PetPace(1.0, PetGait::running), PetMetric::cpu, 0.065, 4.5},
        {PetPace(0.925, PetGait::running), PetMetric::memory, 0.0925, 3.25},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pace.load);
        EXPECT_NEAR(row.pace.frameInterval(row.metric), row.interval, 1e-12);
        EXPECT_NEAR(row.pace.speed(row.metric), row.speed, 1e-12);
    }
}
