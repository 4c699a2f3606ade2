#include "CorvaneWidgetsUI/pet/PetLife.hpp"
#include "fakes/FakeSystemLoad.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/ManualScheduler.hpp"

#include <gtest/gtest.h>

#include <cmath>

using namespace corvane;

namespace {

struct Pet {
    ManualClock clock;
    ManualScheduler scheduler{clock};
    PetLife life{PetSettings{}, PetRoom{200, 20, 30, 40}, clock, scheduler,
                 std::make_unique<SeededRandom>(3)};
    int changes = 0;

    Pet() {
        life.onChange = [this] { ++changes; };
    }
};

} // namespace

TEST(PetLife, FramesFollowThePaceOnTheScheduler) {
    Pet pet;
    EXPECT_DOUBLE_EQ(pet.life.walk().position, 30) << "a new pet starts at home";
    pet.life.start();
    pet.scheduler.advance(0.2);
    EXPECT_EQ(pet.changes, 0);
    pet.scheduler.advance(0.1);
    EXPECT_EQ(pet.changes, 1) << "a resting pet still steps four times a second";
    EXPECT_NEAR(pet.clock.now() - pet.life.last(), 0.05, 1e-6) << "stepped at the frame's time";

    pet.life.record(1.0);
    EXPECT_EQ(pet.life.pace().gait, PetGait::running);
    pet.scheduler.advance(0.9);
    pet.changes = 0;
    pet.scheduler.advance(0.65);
    EXPECT_EQ(pet.changes, 10) << "a flat-out pet moves every 0.065 seconds";
    EXPECT_TRUE(pet.life.summary().isLively);

    pet.life.onChange = [&] { pet.life.stop(); };
    pet.scheduler.advance(1);
    EXPECT_FALSE(pet.life.isRunning());
    EXPECT_EQ(pet.scheduler.pendingCount(), 0u) << "stopping from an observer schedules nothing more";
}

TEST(PetLife, FeedingShowsInTheSummaryUntilTheMealIsEaten) {
    Pet pet;
    pet.life.start();
    pet.life.feed();
    EXPECT_EQ(pet.changes, 1);
    EXPECT_TRUE(pet.life.summary().hasFood);
    pet.scheduler.advance(1);
    EXPECT_TRUE(pet.life.summary().isInside) << "already at its bowl, it eats";
    EXPECT_FALSE(pet.life.summary().isLively);
    pet.scheduler.advance(PetWalk::mealLength);
    EXPECT_FALSE(pet.life.summary().hasFood);
    EXPECT_FALSE(pet.life.summary().isInside);

    // A room that shrank takes the pet along.
    pet.life.place(PetRoom{30, 20, std::nullopt, 10});
    EXPECT_DOUBLE_EQ(pet.life.walk().position, 20);
    pet.life.stop();
    pet.clock.advance(600);
    pet.life.settle();
    EXPECT_EQ(pet.life.last(), pet.clock.now());
}

TEST(PetLife, ReadsTheFollowedMetricEveryTwoSecondsWhileRunning) {
    ManualClock clock;
    ManualScheduler scheduler(clock);
    FakeSystemLoad load;
    PetSettings memory;
    memory.follows = PetMetric::memory;
    PetLife life(memory, PetRoom{200, 20, 30, 40}, clock, scheduler, std::make_unique<SeededRandom>(5),
                 &load);

    load.memoryValue = 0.9;
    load.hot = true;
    life.start();
    EXPECT_EQ(life.pace().readings, 1) << "the first reading comes at once";
    EXPECT_EQ(life.pace().gait, PetGait::running);
    EXPECT_TRUE(life.pace().isHot);
    load.memoryValue.reset();
    scheduler.advance(PetLife::readingInterval);
    EXPECT_EQ(life.pace().readings, 1) << "no reading, no change";
    load.memoryValue = 0.2;
    scheduler.advance(PetLife::readingInterval);
    EXPECT_EQ(life.pace().readings, 2);
    EXPECT_NEAR(life.pace().load, 0.9 - 0.7 * (1 - std::exp(-4.0 / PetPace::memory)), 1e-6);
    EXPECT_EQ(load.cpuReadings, 0);

    life.stop();
    EXPECT_EQ(scheduler.pendingCount(), 0u);
    scheduler.advance(10);
    EXPECT_EQ(life.pace().readings, 2);
}
