#pragma once

#include "CorvaneCore/platform/FocusStatusProvider.hpp"

#include <deque>

namespace corvane {

/// Answers with `reading`, or with the queued `readings` first, one per poll.
class FakeFocusStatusProvider final : public FocusStatusProvider {
public:
    std::optional<bool> isFocused() const override {
        ++polls;
        if (readings.empty()) return reading;
        auto next = readings.front();
        readings.pop_front();
        return next;
    }
    FocusAuthorization authorization() const override { return access; }
    void requestAuthorization() override { ++requests; }

    std::optional<bool> reading;
    mutable std::deque<std::optional<bool>> readings;
    FocusAuthorization access = FocusAuthorization::authorized;
    int requests = 0;
    mutable int polls = 0;
};

} // namespace corvane
