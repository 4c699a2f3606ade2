#include "CorvaneCore/bar/ScrollSteps.hpp"
#include "CorvaneCore/bar/WheelNotches.hpp"

#include <gtest/gtest.h>

#include <vector>

using namespace corvane;

namespace {

struct Event {
    double delta;
    double at;
};

template <typename Stepper> std::vector<int> feed(Stepper& stepper, const std::vector<Event>& events) {
    std::vector<int> steps;
    for (auto event : events)
        steps.push_back(stepper.step(event.delta, event.at));
    return steps;
}

} // namespace

TEST(ScrollSteps, OneGestureSwitchesOnce) {
    ScrollSteps steps;
    // Nine events of 10 points: 90 in all.
    std::vector<Event> swipe;
    for (int i = 0; i < 9; ++i)
        swipe.push_back({10, 0.01 * i});
    EXPECT_EQ(feed(steps, swipe), (std::vector<int>{0, 0, 1, 0, 0, 0, 0, 0, 0}));
    // 0.2 s after the last event is still the same gesture.
    EXPECT_EQ(feed(steps, {{40, 0.28}}), std::vector<int>{0});
    // A pause longer than the idle gap starts a new one.
    EXPECT_EQ(feed(steps, {{40, 0.60}}), std::vector<int>{1});
    EXPECT_EQ(steps.step(0, 5), 0);
    EXPECT_EQ(steps.lastEvent, 0.60);
}

TEST(ScrollSteps, ReversingDiscardsWhatHadGathered) {
    ScrollSteps steps;
    EXPECT_EQ(feed(steps, {{20, 0}, {-20, 0.01}, {-15, 0.02}}), (std::vector<int>{0, 0, -1}));
}

TEST(ScrollSteps, CooldownSwallowsAStepTooSoonAfterTheLast) {
    ScrollSteps steps(30, 0.35, 0.1);
    EXPECT_EQ(feed(steps, {{30, 0}}), std::vector<int>{1});
    // New gesture after 0.2 s: reaches the threshold, but within the cooldown, so it starts over.
    EXPECT_EQ(feed(steps, {{20, 0.2}, {20, 0.25}, {20, 0.3}, {20, 0.36}}), (std::vector<int>{0, 0, 0, 1}));
}

TEST(WheelNotches, StepsOncePerTurnUntilTheWheelRests) {
    WheelNotches wheel;
    EXPECT_EQ(feed(wheel, {{1, 0}, {1, 0.05}, {1, 0.1}, {-1.5, 0.15}}), (std::vector<int>(4, 0)));
    EXPECT_EQ(feed(wheel, {{2, 0.2}, {2, 0.3}, {2, 0.4}}), (std::vector<int>{0, 1, 0}));
    EXPECT_EQ(feed(wheel, {{1.5, 0.45}, {4, 0.5}}), (std::vector<int>{0, 1}));
    EXPECT_EQ(feed(wheel, {{-4, 0.6}, {-4, 0.86}}), (std::vector<int>{0, -1})); // re-armed by the pause
    EXPECT_EQ(wheel.step(-4, 0.9), 0);
    wheel.reset();
    EXPECT_EQ(wheel.step(-4, 0.95), -1);
}
