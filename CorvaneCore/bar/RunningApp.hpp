#pragma once

#include "CorvaneCore/workspace/DockItem.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>

namespace corvane {

/// A running application, as the bar and the switcher see it.
struct RunningApp {
    std::int32_t pid = 0;
    std::optional<std::string> bundleIdentifier;
    /// The application bundle's path.
    std::optional<std::string> path;
    std::string name;
    /// Desktops (space ids) with a window of the app; empty when unknown.
    std::set<std::uint64_t> desktops;

    /// The same bundle path, or else the same bundle identifier; path is tested first.
    bool matches(const AppEntry& entry) const {
        return (path && *path == entry.path) ||
               (bundleIdentifier && entry.bundleIdentifier && *bundleIdentifier == *entry.bundleIdentifier);
    }

    bool operator==(const RunningApp&) const = default;
};

} // namespace corvane

template <> struct std::hash<corvane::RunningApp> {
    std::size_t operator()(const corvane::RunningApp& app) const noexcept {
        std::size_t h = std::hash<std::int32_t>{}(app.pid);
        auto mix = [&h](std::size_t value) { h ^= value + 0x9E3779B97F4A7C15ull + (h << 6) + (h >> 2); };
        mix(std::hash<std::optional<std::string>>{}(app.bundleIdentifier));
        mix(std::hash<std::optional<std::string>>{}(app.path));
        mix(std::hash<std::string>{}(app.name));
        for (auto desktop : app.desktops)
            mix(std::hash<std::uint64_t>{}(desktop));
        return h;
    }
};
