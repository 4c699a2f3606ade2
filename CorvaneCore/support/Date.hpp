#pragma once

#include <compare>

namespace corvane {

/// An absolute moment, held as seconds since 2001-01-01T00:00:00Z: the form the data files store.
struct Date {
    /// Seconds between the Unix epoch and the reference date.
    static constexpr double kUnixOffset = 978307200.0;

    double sinceReferenceDate = 0;

    static Date fromUnixTime(double seconds) { return Date{seconds - kUnixOffset}; }
    double unixTime() const { return sinceReferenceDate + kUnixOffset; }

    Date operator+(double seconds) const { return Date{sinceReferenceDate + seconds}; }
    Date operator-(double seconds) const { return Date{sinceReferenceDate - seconds}; }
    double operator-(Date other) const { return sinceReferenceDate - other.sinceReferenceDate; }
    auto operator<=>(const Date&) const = default;
};

} // namespace corvane
