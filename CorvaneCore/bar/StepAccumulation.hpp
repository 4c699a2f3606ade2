#pragma once

namespace corvane {

/// Adds a scroll delta to what has gathered so far; a change of direction starts over from the
/// new delta, so a hesitant back-and-forth never adds up to a step.
inline double accumulating(double accumulated, double delta) {
    bool reverses = accumulated != 0 && ((accumulated < 0) != (delta < 0));
    return reverses ? delta : accumulated + delta;
}

} // namespace corvane
