#include "platform/macos/CFPreferencesDockSettings.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "platform/macos/CFPlistBridge.hpp"

namespace corvane {

namespace {

constexpr const char* kDomain = "com.apple.dock";

std::optional<PlistValue> copyValue(const char* key) {
    auto value = adoptCF(CFPreferencesCopyAppValue(cfString(key).get(), cfString(kDomain).get()));
    return plistValueFromCF(value.get());
}

void setValue(const char* key, CFTypeRef value) {
    // A null value removes the key from the domain.
    CFPreferencesSetAppValue(cfString(key).get(), value, cfString(kDomain).get());
}

} // namespace

NativeDockPreferences CFPreferencesDockSettings::current() const {
    CFPreferencesAppSynchronize(cfString(kDomain).get());
    NativeDockPreferences preferences;
    if (auto autohide = copyValue("autohide")) preferences.autohide = autohide->boolean();
    if (auto delay = copyValue("autohide-delay")) preferences.delay = delay->number();
    if (auto tileSize = copyValue("tilesize")) preferences.tileSize = tileSize->number();
    return preferences;
}

std::optional<std::string> CFPreferencesDockSettings::orientation() const {
    auto value = adoptCF(CFPreferencesCopyAppValue(cfString("orientation").get(), cfString(kDomain).get()));
    return stringFromCF(value.get());
}

void CFPreferencesDockSettings::write(const NativeDockPreferences& preferences) {
    auto set = [](const char* key, const std::optional<PlistValue>& value) {
        if (!value) return setValue(key, nullptr);
        auto cfValue = cfFromPlistValue(*value);
        setValue(key, cfValue.get());
    };
    set("autohide", preferences.autohide ? std::optional<PlistValue>(*preferences.autohide) : std::nullopt);
    set("autohide-delay", preferences.delay ? std::optional<PlistValue>(*preferences.delay) : std::nullopt);
    set("tilesize", preferences.tileSize ? std::optional<PlistValue>(*preferences.tileSize) : std::nullopt);
    if (!CFPreferencesAppSynchronize(cfString(kDomain).get()))
        throw DockError::plistWriteFailed(url_.string(), "cfprefsd refused to synchronize com.apple.dock");
}

} // namespace corvane
