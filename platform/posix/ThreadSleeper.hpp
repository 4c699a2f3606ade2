#pragma once

#include "CorvaneCore/platform/Sleeper.hpp"

namespace corvane {

class ThreadSleeper final : public Sleeper {
public:
    void sleep(double seconds) override;
};

} // namespace corvane
