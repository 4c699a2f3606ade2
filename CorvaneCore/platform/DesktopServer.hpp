#pragma once

#include "CorvaneCore/automation/DesktopSpace.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// The window server's desktops (Spaces). Its calls are private to the system and may be
/// missing on any release: each operation then answers empty or false and the features that
/// need it stay inert. Main thread.
class DesktopServer {
public:
    /// One display and its desktops.
    struct Display {
        std::uint32_t id = 0;
        /// The desktop in front on it; none when unknown.
        std::optional<DesktopSpace> current;
        std::vector<DesktopSpace> desktops;
        bool operator==(const Display&) const = default;
    };

    virtual ~DesktopServer() = default;
    /// Every display with its desktops; empty when the window server cannot be asked.
    virtual std::vector<Display> displays() = 0;
    /// The space id of the desktop that has the focus; none when unknown.
    virtual std::optional<std::uint64_t> activeSpace() = 0;
    /// Whether `assign` can move an application's windows at once.
    virtual bool canAssign() const = 0;
    /// Puts the process's windows on the desktop `space`, or on every desktop when none. False
    /// when unavailable.
    virtual bool assign(std::int32_t pid, std::optional<std::uint64_t> space) = 0;
};

} // namespace corvane
