#pragma once

#include "CorvaneCore/dock/NativeDockPreferences.hpp"

#include <optional>
#include <string>

namespace corvane {

/// The macOS Dock's look in its preferences domain: "autohide", "autohide-delay", "tilesize"
/// and "orientation". Main thread.
class DockSettings {
public:
    virtual ~DockSettings() = default;
    /// The current values; a key that is absent or of another type is unset. Throws `DockError`.
    virtual NativeDockPreferences current() const = 0;
    /// The "orientation" text; none when absent.
    virtual std::optional<std::string> orientation() const = 0;
    /// Sets each key to its value or removes it when unset, then makes the domain durable.
    /// Throws `DockError`.
    virtual void write(const NativeDockPreferences& preferences) = 0;
};

} // namespace corvane
