#pragma once

#include "CorvaneCore/dock/DockPosition.hpp"

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class JsonReader;

/// The macOS Dock's own look: "autohide", "autohide-delay" and "tilesize". Unset means the
/// Dock's default (the key is absent).
struct NativeDockPreferences {
    /// A delay this long is one this application set to keep the Dock out of sight.
    static constexpr double replacementDelayThreshold = 100.0;
    /// Smaller tiles are this application's hiding size, never the user's.
    static constexpr double smallestUserTileSize = 16.0;

    std::optional<bool> autohide;
    std::optional<double> delay;
    std::optional<double> tileSize;

    /// The values with this application's hiding values dropped, so that they are never
    /// remembered as the user's own.
    NativeDockPreferences asUserOriginal() const;

    bool operator==(const NativeDockPreferences&) const = default;
};

/// Keys `autohide`, `delay`, `tileSize`, each omitted when unset.
nlohmann::json encodeNativeDockPreferences(const NativeDockPreferences& preferences);
NativeDockPreferences decodeNativeDockPreferences(const JsonReader& reader);
std::string nativeDockPreferencesText(const NativeDockPreferences& preferences);
/// Throws `DecodingError`.
NativeDockPreferences nativeDockPreferencesFromText(std::string_view text);

/// What becomes of the macOS Dock while the own Dock bar is in use.
enum class NativeDockMode { unchanged, autoHide, hidden };

namespace NativeDockModeValues {
inline constexpr double hiddenDelay = 1000.0;
inline constexpr double hiddenTileSize = 1.0;
} // namespace NativeDockModeValues

std::string_view rawValue(NativeDockMode mode);
std::optional<NativeDockMode> nativeDockModeFromRaw(std::string_view raw);

/// `autoHide` becomes `hidden` when the bar sits on the native Dock's edge: a Dock that pops up
/// under the bar would cover it.
NativeDockMode resolved(NativeDockMode mode, DockPosition barPosition, DockPosition nativePosition);
/// The values to write for `mode`, given the user's original setup.
NativeDockPreferences preferences(NativeDockMode mode, const NativeDockPreferences& original);

} // namespace corvane
