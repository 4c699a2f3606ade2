#pragma once

#include <algorithm>

namespace corvane {

/// A location in points.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// An axis-aligned rectangle in points: origin and size, the size never negative in what this
/// code builds. Whether y grows up or down is the caller's coordinate space.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double minY() const { return y; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    bool isEmpty() const { return width <= 0 || height <= 0; }

    /// Minimum edges inside, maximum edges outside, as window systems test hits.
    bool contains(Point p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }

    /// The shared part; a zero rectangle when the two do not overlap.
    Rect intersection(const Rect& other) const {
        double left = std::max(minX(), other.minX());
        double right = std::min(maxX(), other.maxX());
        double bottom = std::max(minY(), other.minY());
        double top = std::min(maxY(), other.maxY());
        if (right <= left || top <= bottom) return {};
        return {left, bottom, right - left, top - bottom};
    }

    bool operator==(const Rect&) const = default;
};

} // namespace corvane
