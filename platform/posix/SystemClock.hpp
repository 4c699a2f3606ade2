#pragma once

#include "CorvaneCore/platform/Clock.hpp"

namespace corvane {

class SystemClock final : public Clock {
public:
    Date now() const override;
};

} // namespace corvane
