#include "platform/macos/CFPreferencesSpacesPreferences.hpp"

#include "CorvaneCore/automation/AppDesktopBindings.hpp"
#include "platform/macos/CFPlistBridge.hpp"

#include <stdexcept>

namespace corvane {

std::map<std::string, std::string> CFPreferencesSpacesPreferences::appBindings() const {
    auto domain = cfString(AppDesktopBindings::domain);
    CFPreferencesAppSynchronize(domain.get());
    auto stored = adoptCF(CFPreferencesCopyAppValue(cfString(AppDesktopBindings::key).get(), domain.get()));
    std::map<std::string, std::string> bindings;
    auto value = plistValueFromCF(stored.get());
    if (!value || !value->dictionary()) return bindings;
    for (const auto& [bundle, target] : *value->dictionary())
        if (auto text = target.string()) bindings.emplace(bundle, *text);
    return bindings;
}

void CFPreferencesSpacesPreferences::setAppBindings(const std::map<std::string, std::string>& bindings) {
    PlistDictionary dictionary;
    for (const auto& [bundle, target] : bindings) dictionary.emplace(bundle, PlistValue(target));
    auto value = cfFromPlistValue(PlistValue(std::move(dictionary)));
    if (!value) throw std::runtime_error("cannot store the desktop assignments");
    auto domain = cfString(AppDesktopBindings::domain);
    CFPreferencesSetAppValue(cfString(AppDesktopBindings::key).get(), value.get(), domain.get());
    if (!CFPreferencesAppSynchronize(domain.get()))
        throw std::runtime_error("cfprefsd refused to synchronize com.apple.spaces");
}

} // namespace corvane
