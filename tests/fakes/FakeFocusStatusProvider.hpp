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
    bool isAuthorized() const override { return authorized; }

    std::optional<bool> reading;
    mutable std::deque<std::optional<bool>> readings;
    bool authorized = true;
    mutable int polls = 0;
};

} // namespace corvane
