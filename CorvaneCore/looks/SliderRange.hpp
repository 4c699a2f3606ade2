#pragma once

#include <algorithm>

namespace corvane {

/// A closed range of values that an editor's slider offers; settings read from a file are
/// clamped into it before use.
struct SliderRange {
    double lower = 0;
    double upper = 0;

    constexpr double clamped(double value) const { return std::clamp(value, lower, upper); }
    constexpr bool contains(double value) const { return lower <= value && value <= upper; }

    bool operator==(const SliderRange&) const = default;
};

} // namespace corvane
