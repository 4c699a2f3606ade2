#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace corvane {

/// One desktop (Space). Workspaces name desktops by `uuid`: space ids change across restarts.
struct DesktopSpace {
    std::uint64_t id = 0;
    std::string uuid;
    /// Its position among the desktops, from 1.
    int number = 0;

    bool operator==(const DesktopSpace&) const = default;
};

} // namespace corvane
