#pragma once

#include "CorvaneCore/dock/NativeDockPreferences.hpp"
#include "CorvaneCore/platform/DockSettings.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"

namespace corvane {

/// Keeps the macOS Dock out of the own Dock bar's way, and remembers how the user had it so that
/// `unchanged` puts it back. Main thread.
class NativeDockController {
public:
    static constexpr const char* originalKey = "dev.tessik.corvane.nativeDock.original.v2";
    static constexpr const char* legacyOriginalKey = "dev.tessik.corvane.nativeDock.original";

    NativeDockController(DockSettings& settings, UserDefaults& defaults, Log& log)
        : settings_(settings), defaults_(defaults), log_(log) {}

    /// Writes the Dock values `mode` asks for with the bar at `barPosition`. Throws `DockError`.
    void apply(NativeDockMode mode, DockPosition barPosition);

    /// The user's own setup: the stored record (moved from the older key when found there), or
    /// else the Dock's current values, which are stored as the original from then on.
    NativeDockPreferences userOriginal();

private:
    DockSettings& settings_;
    UserDefaults& defaults_;
    Log& log_;
};

} // namespace corvane
