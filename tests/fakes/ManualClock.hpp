#pragma once

#include "CorvaneCore/platform/Clock.hpp"

namespace corvane {

class ManualClock final : public Clock {
public:
    explicit ManualClock(Date start = Date{700000000}) : now_(start) {}
    Date now() const override { return now_; }
    void advance(double seconds) { now_ = now_ + seconds; }
    void set(Date date) { now_ = date; }

private:
    Date now_;
};

} // namespace corvane
