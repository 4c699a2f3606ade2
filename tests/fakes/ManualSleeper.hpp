#pragma once

#include "CorvaneCore/platform/Sleeper.hpp"
#include "fakes/ManualClock.hpp"

#include <functional>
#include <vector>

namespace corvane {

/// Sleeps by moving a manual clock; `onSleep` lets a test change the world while "time passes".
class ManualSleeper final : public Sleeper {
public:
    explicit ManualSleeper(ManualClock& clock) : clock_(clock) {}
    void sleep(double seconds) override {
        sleeps.push_back(seconds);
        if (seconds > 0) clock_.advance(seconds);
        if (onSleep) onSleep();
    }
    double total() const {
        double sum = 0;
        for (auto s : sleeps) sum += s;
        return sum;
    }

    std::vector<double> sleeps;
    std::function<void()> onSleep;

private:
    ManualClock& clock_;
};

} // namespace corvane
