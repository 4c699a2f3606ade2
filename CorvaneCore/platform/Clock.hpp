#pragma once

#include "CorvaneCore/support/Date.hpp"

namespace corvane {

/// The current time. Tests pass a manual clock that they move by hand.
class Clock {
public:
    virtual ~Clock() = default;
    /// Any thread.
    virtual Date now() const = 0;
};

} // namespace corvane
