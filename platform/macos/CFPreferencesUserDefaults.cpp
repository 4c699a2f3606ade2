#include "platform/macos/CFPreferencesUserDefaults.hpp"

#include "platform/macos/CFPlistBridge.hpp"

#include <algorithm>
#include <stdexcept>

namespace corvane {

std::optional<UserDefaults::Value> CFPreferencesUserDefaults::value(const std::string& key) const {
    auto stored = adoptCF(CFPreferencesCopyAppValue(cfString(key).get(), cfString(domain_).get()));
    auto converted = plistValueFromCF(stored.get());
    if (!converted) return std::nullopt;
    return std::visit(
        [](const auto& v) -> std::optional<Value> {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, std::int64_t> || std::is_same_v<T, double> ||
                          std::is_same_v<T, std::string> || std::is_same_v<T, Bytes>)
                return Value(v);
            else
                return std::nullopt;
        },
        converted->storage);
}

void CFPreferencesUserDefaults::set(const std::string& key, const Value& value) {
    auto cfValue = cfFromPlistValue(std::visit([](const auto& v) { return PlistValue(v); }, value));
    if (!cfValue) throw std::runtime_error("cannot store " + key);
    CFPreferencesSetAppValue(cfString(key).get(), cfValue.get(), cfString(domain_).get());
    CFPreferencesAppSynchronize(cfString(domain_).get());
}

void CFPreferencesUserDefaults::remove(const std::string& key) {
    CFPreferencesSetAppValue(cfString(key).get(), nullptr, cfString(domain_).get());
    CFPreferencesAppSynchronize(cfString(domain_).get());
}

void CFPreferencesUserDefaults::synchronize() { CFPreferencesAppSynchronize(cfString(domain_).get()); }

std::vector<std::string> CFPreferencesUserDefaults::keys() const {
    auto list = adoptCF(CFPreferencesCopyKeyList(cfString(domain_).get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    std::vector<std::string> result;
    if (!list || CFGetTypeID(list.get()) != CFArrayGetTypeID()) return result;
    for (CFIndex i = 0, count = CFArrayGetCount(list.get()); i < count; ++i)
        if (auto key = stringFromCF(CFArrayGetValueAtIndex(list.get(), i))) result.push_back(*key);
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace corvane
