#pragma once

#include "CorvaneCore/bar/Geometry.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace corvane {

using WindowMap = std::map<std::int32_t, std::set<std::uint32_t>>;

/// Which windows are new since the last look, per process.
struct WindowArrivals {
    WindowMap last;

    /// Remembers the windows of `running` without reporting them: they were there before.
    void seed(const WindowMap& windows, const std::vector<std::int32_t>& running);
    /// The windows not seen before, per process (processes without new ones are left out).
    WindowMap record(const WindowMap& windows);
    void forget(std::int32_t pid) { last.erase(pid); }

    bool operator==(const WindowArrivals&) const = default;
};

namespace WindowDesktops {

struct Display {
    std::uint32_t id = 0;
    Rect frame;
    std::optional<std::uint64_t> desktop;
    bool operator==(const Display&) const = default;
};

/// The display holding the frame's centre, else the one it overlaps most, else none.
std::optional<Display> display(const Rect& of, const std::vector<Display>& among);
/// A process's windows' displays, each once, in the order of `among`.
std::vector<std::uint32_t> displays(const std::vector<Rect>& windows, const std::vector<Display>& among);
/// The display of a process's first window that lies on one.
std::optional<std::uint32_t> frontDisplay(const std::vector<Rect>& windows, const std::vector<Display>& among);
/// What is known of an app's desktops after a look: unchanged when it was seen on no shown
/// desktop, else the desktops not shown now plus those it was seen on. The window server only
/// reports shown desktops, so what is known of hidden ones is kept.
std::set<std::uint64_t> updated(const std::set<std::uint64_t>& current, const std::set<std::uint64_t>& seen,
                                const std::set<std::uint64_t>& shown);

} // namespace WindowDesktops

} // namespace corvane
