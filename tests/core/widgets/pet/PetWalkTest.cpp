#include "CorvaneCore/widgets/pet/PetWalk.hpp"
#include "CorvaneCore/widgets/pet/PetCoat.hpp"
#include "fakes/ScriptedRandom.hpp"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace corvane;

namespace {

// Positions 10…190 for the pet's centre; the basket and bowl at 30.
const PetRoom kRoom{200, 20, 30, 40};
const PetPace kSitting(0, PetGait::sitting);
const PetPace kWalking(0.2, PetGait::walking);
const PetPace kRunning(0.9, PetGait::running);

PetWalk cat(double position = 100) {
    PetWalk walk(position, false);
    walk.repertoire = PetWalk::repertoireOf(PetSpecies::cat);
    return walk;
}

/// Makes the walk choose its next plan now, with these draws.
void choose(PetWalk& walk, const PetPace& pace, std::initializer_list<double> draws,
            const PetRoom& room = kRoom) {
    walk.plan = PetWalk::Plan::pause();
    walk.planLeft = 0;
    ScriptedRandom random(draws);
    walk.step(0, pace, PetMetric::cpu, room, random);
}

void run(PetWalk& walk, const PetPace& pace, double seconds, RandomSource& random,
         const PetRoom& room = kRoom, double dt = 0.1) {
    for (double t = 0; t < seconds - 1e-9; t += dt)
        walk.step(dt, pace, PetMetric::cpu, room, random);
}

} // namespace

TEST(PetWalk, ChoosesByWeightInTableOrder) {
    // Walking weights for a cat in a roomy space: 6, 2.2, 1.4, 1.4, 1.8, 1.3, 0.5, 0.4 (15 in all).
    auto walk = cat();
    choose(walk, kWalking, {8.9 / 15, 0.0, 0.9, 0.5});
    EXPECT_EQ(walk.plan, PetWalk::Plan::quirk());
    EXPECT_DOUBLE_EQ(walk.pacing, 0.75);
    EXPECT_DOUBLE_EQ(walk.planLeft, 1.85);
    EXPECT_EQ(walk.action, PetAction::quirk);

    walk = cat();
    choose(walk, kWalking, {14.95 / 15, 0.5, 0.1, 0.0});
    EXPECT_EQ(walk.plan, PetWalk::Plan::gesture(PetAction::stretching));
    EXPECT_TRUE(walk.facesBack) << "a draw under 0.22 turns the pet round";
    EXPECT_DOUBLE_EQ(walk.planLeft, 2.9);

    walk = cat();
    choose(walk, kWalking, {0.0, 0.5, 0.8, 0.5});
    ASSERT_NE(walk.plan.as<PetWalk::Plan::Travel>(), nullptr);
    EXPECT_DOUBLE_EQ(walk.plan.as<PetWalk::Plan::Travel>()->to, 10 + 180 * 0.8) << "drawn in 10…190";
    EXPECT_FALSE(walk.plan.as<PetWalk::Plan::Travel>()->hurried);
    EXPECT_DOUBLE_EQ(walk.planLeft, 4.5);

    // Saving energy: 2.1, 3.52, 1.4, 0, 0.54, 0.39, 0.5, 0.4; the hurried travel is skipped.
    walk = cat();
    walk.savesEnergy = true;
    choose(walk, kWalking, {7.12 / 8.85, 0.5, 0.5});
    ASSERT_NE(walk.plan.as<PetWalk::Plan::Jump>(), nullptr);
    EXPECT_EQ(*walk.plan.as<PetWalk::Plan::Jump>(), (PetWalk::Plan::Jump{100, 140}));
}

TEST(PetWalk, JumpsAlongAnArcAndLandsWalking) {
    auto walk = cat();
    choose(walk, kRunning, {11 / 13.8, 0.5, 0.5}); // 4.5, 3, 1.6, 1, 2.5, 1.2: the jump
    ASSERT_TRUE(walk.jumpProgress);
    EXPECT_DOUBLE_EQ(walk.planLeft, PetWalk::jumpLength);
    EXPECT_EQ(walk.action, PetAction::jumping);

    ScriptedRandom random({});
    walk.step(PetWalk::jumpLength / 2, kRunning, PetMetric::cpu, kRoom, random);
    EXPECT_DOUBLE_EQ(walk.position, 120);
    EXPECT_DOUBLE_EQ(walk.lift(), 1.0);
    walk.step(PetWalk::jumpLength / 2, kRunning, PetMetric::cpu, kRoom, random);
    EXPECT_DOUBLE_EQ(walk.position, 140);
    EXPECT_FALSE(walk.jumpProgress);
    EXPECT_EQ(walk.lift(), 0);
    EXPECT_EQ(walk.action, PetAction::walking);
    EXPECT_EQ(random.drawn, 0);

    // At the far wall the landing would be no more than half a body away: the pet turns and
    // walks off instead.
    walk = cat(185);
    choose(walk, kRunning, {11 / 13.8, 0.5, 0.5, 0.25});
    EXPECT_TRUE(walk.facesBack);
    ASSERT_NE(walk.plan.as<PetWalk::Plan::Travel>(), nullptr);
    EXPECT_DOUBLE_EQ(walk.plan.as<PetWalk::Plan::Travel>()->to, 55);
    EXPECT_DOUBLE_EQ(walk.planLeft, 1.5);

    // A finished stalk pounces six tenths of a hop.
    walk = cat();
    choose(walk, kWalking, {13.4 / 15, 0.5, 0.5, 0.0}); // the stalk, 0.9 s
    EXPECT_EQ(walk.action, PetAction::crouching);
    walk.step(0.5, kWalking, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(walk.action, PetAction::crouching);
    walk.step(0.5, kWalking, PetMetric::cpu, kRoom, random);
    ASSERT_NE(walk.plan.as<PetWalk::Plan::Jump>(), nullptr);
    EXPECT_DOUBLE_EQ(walk.plan.as<PetWalk::Plan::Jump>()->to, 124);
}

TEST(PetWalk, RoomOfOneBodyLengthKeepsThePetInPlace) {
    const PetRoom tight{20, 20, std::nullopt, 40};
    auto walk = cat(3);
    SeededRandom random(7);
    for (const auto* pace : {&kSitting, &kWalking, &kRunning}) {
        for (int i = 0; i < 3000; ++i) {
            walk.step(0.1, *pace, PetMetric::cpu, tight, random);
            ASSERT_DOUBLE_EQ(walk.position, 10);
            ASSERT_EQ(walk.plan.as<PetWalk::Plan::Jump>(), nullptr);
            ASSERT_EQ(walk.plan.as<PetWalk::Plan::Stalk>(), nullptr);
            auto* travel = walk.plan.as<PetWalk::Plan::Travel>();
            ASSERT_TRUE(!travel || (!travel->hurried && travel->to == 10));
        }
    }
}

TEST(PetWalk, FedPetRunsToItsBowlEatsThenGroomsForFourSeconds) {
    auto walk = cat(180);
    walk.feed();
    ScriptedRandom random({}, 0.0);
    walk.step(0.1, kWalking, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(walk.action, PetAction::running) << "more than three bodies from the bowl";
    EXPECT_TRUE(walk.facesBack);
    EXPECT_DOUBLE_EQ(walk.position, 180 - 0.1 * 20 * 3.2);
    run(walk, kWalking, 3, random);
    EXPECT_EQ(walk.action, PetAction::walking) << "close to the bowl";
    run(walk, kWalking, 1, random);
    EXPECT_EQ(walk.action, PetAction::eating);
    EXPECT_TRUE(walk.isInside());
    EXPECT_DOUBLE_EQ(walk.position, 30);
    EXPECT_FALSE(walk.facesBack);

    while (walk.hasFood())
        walk.step(0.25, kWalking, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(walk.plan, PetWalk::Plan::gesture(PetAction::grooming));
    EXPECT_DOUBLE_EQ(walk.planLeft, 4);
    run(walk, kWalking, 3.75, random, kRoom, 0.25);
    EXPECT_EQ(walk.action, PetAction::grooming);
    walk.step(0.25, kWalking, PetMetric::cpu, kRoom, random);
    EXPECT_NE(walk.action, PetAction::grooming) << "the grooming is over after four seconds";

    // A dog cannot groom: after its meal it chooses what to do next.
    PetWalk dog(30, false);
    dog.repertoire = PetWalk::repertoireOf(PetSpecies::dog);
    dog.feed(0.5);
    run(dog, kSitting, 0.5, random, kRoom, 0.25);
    EXPECT_FALSE(dog.hasFood());
    EXPECT_EQ(dog.planLeft, 0);
    dog.step(0.1, kSitting, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(dog.plan, PetWalk::Plan::pause()) << "a zero draw chooses the first candidate";
    EXPECT_EQ(dog.action, PetAction::sitting);
}

TEST(PetWalk, SleepyPetGoesHomeAndWakesWithAYawnAndAStretch) {
    auto walk = cat(100);
    const PetPace asleep(0, PetGait::sleeping);
    SeededRandom random(1);
    walk.step(0.5, asleep, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(walk.action, PetAction::walking);
    EXPECT_DOUBLE_EQ(walk.position, 100 - 0.5 * 20 * 0.9);
    run(walk, asleep, 10, random);
    EXPECT_EQ(walk.action, PetAction::sleeping);
    EXPECT_DOUBLE_EQ(walk.position, 30);

    walk.step(0.1, kSitting, PetMetric::cpu, kRoom, random);
    EXPECT_EQ(walk.action, PetAction::yawning);
    EXPECT_EQ(walk.queued.size(), 1u);
    run(walk, kSitting, 2.2, random);
    EXPECT_EQ(walk.action, PetAction::stretching);
    EXPECT_TRUE(walk.queued.empty());
}

TEST(PetWalk, SeededWalksReplayExactlyAndStayInTheRoom) {
    auto first = cat(), second = cat();
    SeededRandom a(42), b(42);
    const PetPace* paces[] = {&kSitting, &kWalking, &kRunning, &kWalking};
    for (int i = 0; i < 4000; ++i) {
        const auto& pace = *paces[(i / 500) % 4];
        if (i == 1700) first.feed(), second.feed();
        first.step(0.07, pace, PetMetric::cpu, kRoom, a);
        second.step(0.07, pace, PetMetric::cpu, kRoom, b);
        ASSERT_GE(first.position, 10);
        ASSERT_LE(first.position, 190);
    }
    EXPECT_EQ(first, second);
}

TEST(PetCoat, UnknownCoatFallsBackToTheSpeciesFirst) {
    EXPECT_EQ(coat(PetSpecies::dog, "dalmatian").title, "Dalmatian");
    EXPECT_EQ(coat(PetSpecies::dog, "tuxedo").id, "golden");
    EXPECT_EQ(coat(PetSpecies::ghost, std::nullopt).id, "mist");
}
