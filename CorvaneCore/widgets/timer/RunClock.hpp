#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <algorithm>
#include <optional>

namespace corvane {

/// The clock every time-keeping record shares: a start while running plus what was counted
/// before it. Nothing ticks inside; each reading takes the moment it is asked about. The run
/// records derive from it so that `startedAt` and `accumulated` stay fields of each record, as
/// their JSON has them.
struct RunClock {
    std::optional<Date> startedAt;
    double accumulated = 0;

    bool isRunning() const { return startedAt.has_value(); }
    bool hasStarted() const { return isRunning() || accumulated > 0; }
    /// A clock set back since the start never takes time away.
    double elapsed(Date now) const { return accumulated + (startedAt ? std::max(0.0, now - *startedAt) : 0.0); }
    void start(Date now) {
        if (!startedAt) startedAt = now;
    }
    void pause(Date now) {
        if (!startedAt) return;
        accumulated += std::max(0.0, now - *startedAt);
        startedAt.reset();
    }
    void reset() {
        startedAt.reset();
        accumulated = 0;
    }

    bool operator==(const RunClock&) const = default;
};

} // namespace corvane
