#include "CorvaneCore/dock/NativeDockController.hpp"

#include "CorvaneCore/support/DecodingError.hpp"

#include <cmath>
#include <cstdio>

namespace corvane {

namespace {

std::optional<NativeDockPreferences> storedPreferences(const UserDefaults& defaults, const std::string& key) {
    std::string text;
    if (auto data = defaults.dataValue(key)) text.assign(data->begin(), data->end());
    else if (auto string = defaults.stringValue(key)) text = *string;
    else return std::nullopt;
    try {
        return nativeDockPreferencesFromText(text);
    } catch (const DecodingError&) {
        // A damaged record is no record: the Dock's current values are taken again.
        return std::nullopt;
    }
}

void store(UserDefaults& defaults, const std::string& key, const NativeDockPreferences& preferences) {
    auto text = nativeDockPreferencesText(preferences);
    defaults.setData(key, Bytes(text.begin(), text.end()));
}

std::string describe(const std::optional<bool>& flag) {
    return flag ? (*flag ? "true" : "false") : "unset";
}

std::string describe(const std::optional<double>& number) {
    if (!number) return "unset";
    char buffer[32];
    if (std::isfinite(*number) && *number == std::floor(*number) && std::abs(*number) < 1e15)
        std::snprintf(buffer, sizeof buffer, "%.1f", *number);
    else
        std::snprintf(buffer, sizeof buffer, "%g", *number);
    return buffer;
}

} // namespace

NativeDockPreferences NativeDockController::userOriginal() {
    if (auto original = storedPreferences(defaults_, originalKey)) return *original;
    if (auto legacy = storedPreferences(defaults_, legacyOriginalKey)) {
        store(defaults_, originalKey, *legacy);
        defaults_.remove(legacyOriginalKey);
        return *legacy;
    }
    auto original = settings_.current().asUserOriginal();
    store(defaults_, originalKey, original);
    return original;
}

bool NativeDockController::apply(NativeDockMode mode, DockPosition barPosition) {
    auto original = userOriginal();
    auto nativePosition = dockPositionFromNativeOrientation(settings_.orientation());
    auto values = preferences(resolved(mode, barPosition, nativePosition), original);
    bool changes = settings_.current() != values;
    settings_.write(values);
    log_.info("dock", "native dock autohide=" + describe(values.autohide) + " delay=" + describe(values.delay) +
                          " tilesize=" + describe(values.tileSize));
    return changes;
}

bool NativeDockController::restoreLeftHidden() {
    // Without a stored original this application never hid the Dock; values that merely look
    // like hiding ones are the user's own then.
    if (!storedPreferences(defaults_, originalKey) && !storedPreferences(defaults_, legacyOriginalKey)) return false;
    auto current = settings_.current();
    if (current.asUserOriginal() == current) return false;
    return apply(NativeDockMode::unchanged, DockPosition::bottom);
}

} // namespace corvane
