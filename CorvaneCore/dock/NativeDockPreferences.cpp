#include "CorvaneCore/dock/NativeDockPreferences.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/RawValue.hpp"

namespace corvane {

NativeDockPreferences NativeDockPreferences::asUserOriginal() const {
    auto original = *this;
    if (delay && *delay >= replacementDelayThreshold) {
        original.autohide.reset();
        original.delay.reset();
    }
    if (tileSize && *tileSize < smallestUserTileSize) original.tileSize.reset();
    return original;
}

Json encodeNativeDockPreferences(const NativeDockPreferences& preferences) {
    auto object = Json::object();
    if (preferences.autohide) object["autohide"] = *preferences.autohide;
    if (preferences.delay) object["delay"] = *preferences.delay;
    if (preferences.tileSize) object["tileSize"] = *preferences.tileSize;
    return object;
}

NativeDockPreferences decodeNativeDockPreferences(const JsonReader& reader) {
    reader.object();
    NativeDockPreferences preferences;
    if (auto autohide = reader.optional("autohide")) preferences.autohide = autohide->boolean();
    if (auto delay = reader.optional("delay")) preferences.delay = delay->number();
    if (auto tileSize = reader.optional("tileSize")) preferences.tileSize = tileSize->number();
    return preferences;
}

std::string nativeDockPreferencesText(const NativeDockPreferences& preferences) {
    return encodeNativeDockPreferences(preferences).dump();
}

NativeDockPreferences nativeDockPreferencesFromText(std::string_view text) {
    auto json = parseJson(text);
    return decodeNativeDockPreferences(JsonReader(json));
}

std::string_view rawValue(NativeDockMode mode) {
    switch (mode) {
    case NativeDockMode::unchanged: return "unchanged";
    case NativeDockMode::autoHide: return "autoHide";
    case NativeDockMode::hidden: return "hidden";
    }
    return "autoHide";
}

std::optional<NativeDockMode> nativeDockModeFromRaw(std::string_view raw) {
    return caseWithRawValue({NativeDockMode::unchanged, NativeDockMode::autoHide, NativeDockMode::hidden},
                            raw);
}

NativeDockMode resolved(NativeDockMode mode, DockPosition barPosition, DockPosition nativePosition) {
    if (mode == NativeDockMode::autoHide && barPosition == nativePosition) return NativeDockMode::hidden;
    return mode;
}

NativeDockPreferences preferences(NativeDockMode mode, const NativeDockPreferences& original) {
    switch (mode) {
    case NativeDockMode::unchanged: return original;
    case NativeDockMode::autoHide: return {true, original.delay, original.tileSize};
    case NativeDockMode::hidden:
        return {true, NativeDockModeValues::hiddenDelay, NativeDockModeValues::hiddenTileSize};
    }
    return original;
}

} // namespace corvane
