#include "CorvaneApp/preferences/AppPreferences.hpp"

#include "CorvaneCore/bar/DockStyleCoding.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"

#include <algorithm>

namespace corvane {

namespace {

std::string text(const Bytes& data) { return std::string(data.begin(), data.end()); }
Bytes bytes(const std::string& text) { return Bytes(text.begin(), text.end()); }

std::optional<Hotkey> hotkeyFromData(const std::optional<Bytes>& data) {
    if (!data) return std::nullopt;
    try {
        auto json = parseJson(text(*data));
        return decodeHotkey(JsonReader(json));
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

Bytes hotkeyData(const Hotkey& hotkey) { return bytes(encodeHotkey(hotkey).dump()); }

constexpr std::string_view focusDockHotkeyName = "focusDockHotkey";

} // namespace

const std::vector<AppPreferences::Field>& AppPreferences::fields() {
    using S = AppSettings;
    static const std::vector<Field> all = {
        {"usesOwnDock", &S::usesOwnDock},
        {"filtersByDesktop", &S::filtersByDesktop},
        {"hidesDockWhenCovered", &S::hidesDockWhenCovered},
        {"showsAppDockMenuItems", &S::showsAppDockMenuItems},
        {"widgetsFollowIconPack", &S::widgetsFollowIconPack},
        {"reservesDockSpace", &S::reservesDockSpace},
        {"autoHidesDock", &S::autoHidesDock},
        {"dockRevealDelay", &S::dockRevealDelay},
        {"usesPrivateDockSpace", &S::usesPrivateDockSpace},
        {"showsDockOnEveryDisplay", &S::showsDockOnEveryDisplay},
        {"dockStyle", &S::dockStyle},
        {"stackOptions", &S::stackOptions},
        {"showsWorkspaceSwitcherInDock", &S::showsWorkspaceSwitcherInDock},
        {"numberedWorkspaceHotkeys", &S::numberedWorkspaceHotkeys},
        {"workspaceHotkeyModifiers", &S::workspaceHotkeyModifiers},
        {focusDockHotkeyName, &S::focusDockHotkey},
        {"nextWorkspaceHotkey", &S::nextWorkspaceHotkey},
        {"previousWorkspaceHotkey", &S::previousWorkspaceHotkey},
        {"switchesWorkspaceByGesture", &S::switchesWorkspaceByGesture},
        {"nativeDockMode", &S::nativeDockMode},
        {"launchAtLogin", &S::launchAtLogin},
        {"onboardingVersion", &S::onboardingVersion},
        {"onboardingPage", &S::onboardingPage},
        {"downloadsTileMigrated", &S::downloadsTileMigrated},
        {"downloadsSeenAt", &S::downloadsSeenAt},
    };
    return all;
}

const AppPreferences::Field* AppPreferences::field(std::string_view name) {
    const auto& all = fields();
    auto it = std::find_if(all.begin(), all.end(), [&](const Field& f) { return f.name == name; });
    return it == all.end() ? nullptr : &*it;
}

AppSettings AppPreferences::load() const {
    AppSettings settings;
    for (const auto& field : fields()) {
        auto k = key(field.name);
        std::visit(
            [&](auto member) {
                using T = std::remove_cvref_t<decltype(settings.*member)>;
                auto& target = settings.*member;
                if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, std::optional<bool>>) {
                    if (auto v = defaults_.boolValue(k)) target = *v;
                } else if constexpr (std::is_same_v<T, std::optional<double>>) {
                    if (auto v = defaults_.doubleValue(k)) target = *v;
                } else if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::optional<std::int64_t>>) {
                    if (auto v = defaults_.intValue(k)) target = *v;
                } else if constexpr (std::is_same_v<T, HotkeyModifiers>) {
                    if (auto v = defaults_.intValue(k); v && *v >= 0) target = HotkeyModifiers{static_cast<std::uint64_t>(*v)};
                } else if constexpr (std::is_same_v<T, std::optional<Hotkey>>) {
                    target = hotkey(field.name);
                } else if constexpr (std::is_same_v<T, NativeDockMode>) {
                    if (auto v = defaults_.stringValue(k)) target = nativeDockModeFromRaw(*v).value_or(NativeDockMode::autoHide);
                } else if constexpr (std::is_same_v<T, DockStyle>) {
                    if (auto v = defaults_.dataValue(k)) target = dockStyleFromText(text(*v));
                } else if constexpr (std::is_same_v<T, JSONValue>) {
                    if (auto v = defaults_.dataValue(k)) try {
                            auto value = JSONValue::fromJson(parseJson(text(*v)));
                            if (value.object()) target = std::move(value);
                        } catch (const DecodingError&) {
                        }
                } else if constexpr (std::is_same_v<T, std::optional<Date>>) {
                    if (auto v = defaults_.doubleValue(k)) target = Date{*v};
                } else {
                    static_assert(sizeof(T) == 0, "every kind of setting is handled");
                }
            },
            field.member);
    }
    return settings;
}

void AppPreferences::store(const AppSettings& before, const AppSettings& after) {
    for (const auto& field : fields()) {
        auto k = key(field.name);
        std::visit(
            [&](auto member) {
                using T = std::remove_cvref_t<decltype(after.*member)>;
                const auto& value = after.*member;
                if (before.*member == value) return;
                if constexpr (std::is_same_v<T, bool>) {
                    defaults_.setBool(k, value);
                } else if constexpr (std::is_same_v<T, std::optional<bool>>) {
                    if (value) defaults_.setBool(k, *value);
                    else defaults_.remove(k);
                } else if constexpr (std::is_same_v<T, std::optional<double>>) {
                    if (value) defaults_.setDouble(k, *value);
                    else defaults_.remove(k);
                } else if constexpr (std::is_same_v<T, std::int64_t>) {
                    defaults_.setInt(k, value);
                } else if constexpr (std::is_same_v<T, std::optional<std::int64_t>>) {
                    if (value) defaults_.setInt(k, *value);
                    else defaults_.remove(k);
                } else if constexpr (std::is_same_v<T, HotkeyModifiers>) {
                    defaults_.setInt(k, static_cast<std::int64_t>(value.rawValue));
                } else if constexpr (std::is_same_v<T, std::optional<Hotkey>>) {
                    setHotkey(field.name, value);
                } else if constexpr (std::is_same_v<T, NativeDockMode>) {
                    defaults_.setString(k, std::string(rawValue(value)));
                } else if constexpr (std::is_same_v<T, DockStyle>) {
                    defaults_.setData(k, bytes(dockStyleText(value)));
                } else if constexpr (std::is_same_v<T, JSONValue>) {
                    defaults_.setData(k, bytes(value.toJson().dump()));
                } else if constexpr (std::is_same_v<T, std::optional<Date>>) {
                    if (value) defaults_.setDouble(k, value->sinceReferenceDate);
                    else defaults_.remove(k);
                } else {
                    static_assert(sizeof(T) == 0, "every kind of setting is handled");
                }
            },
            field.member);
    }
}

std::optional<Hotkey> AppPreferences::hotkey(std::string_view named) const {
    auto stored = hotkeyFromData(defaults_.dataValue(key(named)));
    if (named != focusDockHotkeyName || stored) return stored;
    if (defaults_.boolValue(key(focusDockHotkeyOffName)).value_or(false)) return std::nullopt;
    return AppSettings::defaultFocusDockHotkey;
}

void AppPreferences::setHotkey(std::string_view named, const std::optional<Hotkey>& hotkey) {
    if (hotkey) defaults_.setData(key(named), hotkeyData(*hotkey));
    else defaults_.remove(key(named));
    // Without the flag an absent focus hotkey would read as the built-in default again.
    if (named == focusDockHotkeyName) {
        if (hotkey) defaults_.remove(key(focusDockHotkeyOffName));
        else defaults_.setBool(key(focusDockHotkeyOffName), true);
    }
}

void AppPreferences::resetSettings() {
    auto prefix = std::string(keyPrefix) + ".";
    for (const auto& k : defaults_.keys())
        if (k.starts_with(prefix)) defaults_.remove(k);
}

} // namespace corvane
