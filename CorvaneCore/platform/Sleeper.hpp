#pragma once

namespace corvane {

/// Blocks the calling thread for a while. Tests pass one that only moves a manual clock.
class Sleeper {
public:
    virtual ~Sleeper() = default;
    /// Returns after `seconds` (at once for zero or less).
    virtual void sleep(double seconds) = 0;
};

} // namespace corvane
