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

    /// Writes the Dock values `mode` asks for with the bar at `barPosition`. True when they differ
    /// from the Dock's current ones: the running Dock shows them only once it restarts. Throws
    /// `DockError`.
    bool apply(NativeDockMode mode, DockPosition barPosition);

    /// Puts the user's own values back when the Dock still holds the hiding ones of an earlier
    /// session that never handed the screen back (it crashed, or the Mac shut down under it),
    /// and only then. True when it wrote. Throws `DockError`.
    bool restoreLeftHidden();

    /// The user's own setup: the stored record (moved from the older key when found there), or
    /// else the Dock's current values, which are stored as the original from then on.
    NativeDockPreferences userOriginal();

private:
    DockSettings& settings_;
    UserDefaults& defaults_;
    Log& log_;
};

} // namespace corvane
