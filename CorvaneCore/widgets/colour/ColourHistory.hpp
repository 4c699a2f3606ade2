#pragma once

#include "CorvaneCore/widgets/colour/PickedColour.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The colours picked so far, newest first; each colour appears once.
struct ColourHistory {
    static constexpr int currentVersion = 1;
    static constexpr int minimumLimit = ColourPickerSettings::minHistoryLimit;
    static constexpr int maximumLimit = ColourPickerSettings::maxHistoryLimit;

    int version = currentVersion;
    std::vector<PickedColour> colours;

    /// Puts the pick at the front, replacing an earlier pick of the same colour (whose pin the
    /// new pick inherits: the user pinned the colour, not the moment), then trims to `limit`.
    void add(PickedColour colour, int limit);
    /// Drops unpinned colours from the old end until at most `limit` (clamped to 4…60) remain, or
    /// only pinned ones are left beyond it.
    void trim(int limit);
    void togglePin(const Uuid& id);
    /// Removes the entry whether pinned or not: removing is an explicit choice on that swatch.
    void remove(const Uuid& id);
    void clearUnpinned();
    /// The newest pick.
    const PickedColour* latest() const { return colours.empty() ? nullptr : &colours.front(); }

    bool operator==(const ColourHistory&) const = default;
};

/// The colours file: pretty-printed, keys sorted. Channels outside 0…255 are clamped; a missing
/// pin reads as unpinned. Throws `DecodingError`.
std::string colourHistoryText(const ColourHistory& history);
ColourHistory colourHistoryFromText(std::string_view text);

} // namespace corvane
