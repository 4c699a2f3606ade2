#pragma once

#include "CorvaneCore/workspace/DockItem.hpp"

#include <cstdint>
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
