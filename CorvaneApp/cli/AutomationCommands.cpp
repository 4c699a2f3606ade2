#include "CorvaneApp/cli/AutomationCommands.hpp"

#include "CorvaneApp/automation/WantedHotkeys.hpp"
#include "CorvaneApp/cli/DockSession.hpp"
#include "CorvaneApp/cli/HotkeyArgument.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneCore/automation/DesktopBinding.hpp"
#include "CorvaneCore/automation/FocusBinding.hpp"
#include "CorvaneCore/automation/WorkspaceCycle.hpp"
#include "CorvaneCore/bar/DockStyleCoding.hpp"
#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

using Field = AppPreferences::Field;

// ---- settings as text and JSON -------------------------------------------------------------

std::string numberText(double value) { return Json(value).dump(); }

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string result;
    for (const auto& part : parts) result += (result.empty() ? "" : separator) + part;
    return result;
}

std::string modifiersText(HotkeyModifiers modifiers) {
    std::vector<std::string> parts;
    if (modifiers.contains(HotkeyModifiers::control)) parts.push_back("ctrl");
    if (modifiers.contains(HotkeyModifiers::option)) parts.push_back("opt");
    if (modifiers.contains(HotkeyModifiers::shift)) parts.push_back("shift");
    if (modifiers.contains(HotkeyModifiers::command)) parts.push_back("cmd");
    return joined(parts, "+");
}

std::string settingText(const Field& field, const AppSettings& settings) {
    return std::visit(
        [&](auto member) -> std::string {
            using T = std::remove_cvref_t<decltype(settings.*member)>;
            const auto& value = settings.*member;
            if constexpr (std::is_same_v<T, bool>) return value ? "true" : "false";
            else if constexpr (std::is_same_v<T, std::optional<bool>>) return value ? (*value ? "true" : "false") : "unset";
            else if constexpr (std::is_same_v<T, std::optional<double>>) return value ? numberText(*value) : "unset";
            else if constexpr (std::is_same_v<T, std::int64_t>) return std::to_string(value);
            else if constexpr (std::is_same_v<T, std::optional<std::int64_t>>) return value ? std::to_string(*value) : "unset";
            else if constexpr (std::is_same_v<T, HotkeyModifiers>) return value.displaySymbols() + " (" + modifiersText(value) + ")";
            else if constexpr (std::is_same_v<T, std::optional<Hotkey>>) return value ? value->displayString() : "none";
            else if constexpr (std::is_same_v<T, NativeDockMode>) return std::string(rawValue(value));
            else if constexpr (std::is_same_v<T, DockStyle>) return value == DockStyle{} ? "default" : "customized (prefs --json shows it)";
            else if constexpr (std::is_same_v<T, JSONValue>) return value.toJson().dump();
            else if constexpr (std::is_same_v<T, std::optional<Date>>) return value ? iso8601(*value, false) : "unset";
            else static_assert(sizeof(T) == 0, "every kind of setting is handled");
        },
        field.member);
}

Json settingJson(const Field& field, const AppSettings& settings) {
    return std::visit(
        [&](auto member) -> Json {
            using T = std::remove_cvref_t<decltype(settings.*member)>;
            const auto& value = settings.*member;
            if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, std::int64_t>) return value;
            else if constexpr (std::is_same_v<T, std::optional<bool>> || std::is_same_v<T, std::optional<double>> ||
                               std::is_same_v<T, std::optional<std::int64_t>>) return value ? Json(*value) : Json();
            else if constexpr (std::is_same_v<T, HotkeyModifiers>) return value.rawValue;
            else if constexpr (std::is_same_v<T, std::optional<Hotkey>>) return value ? encodeHotkey(*value) : Json();
            else if constexpr (std::is_same_v<T, NativeDockMode>) return std::string(rawValue(value));
            else if constexpr (std::is_same_v<T, DockStyle>) return encodeDockStyle(value);
            else if constexpr (std::is_same_v<T, JSONValue>) return value.toJson();
            else if constexpr (std::is_same_v<T, std::optional<Date>>) return value ? Json(iso8601(*value, false)) : Json();
            else static_assert(sizeof(T) == 0, "every kind of setting is handled");
        },
        field.member);
}

// ---- settings from text --------------------------------------------------------------------

[[noreturn]] void badValue(const Field& field, const std::string& value, const std::string& allowed) {
    throw UsageError(std::string(field.name) + " takes " + allowed + ", not " + quoted(value));
}

bool isUnset(const std::string& value) { return value == "unset" || value == "none" || value == "off"; }

std::optional<bool> flagFrom(const std::string& value) {
    if (value == "true" || value == "on" || value == "yes") return true;
    if (value == "false" || value == "off" || value == "no") return false;
    return std::nullopt;
}

std::optional<double> numberFrom(const std::string& value) {
    try {
        std::size_t used = 0;
        auto number = std::stod(value, &used);
        if (used == value.size() && std::isfinite(number)) return number;
    } catch (const std::exception&) {
    }
    return std::nullopt;
}

std::optional<std::int64_t> integerFrom(const std::string& value) {
    try {
        std::size_t used = 0;
        auto number = std::stoll(value, &used);
        if (used == value.size()) return number;
    } catch (const std::exception&) {
    }
    return std::nullopt;
}

std::optional<Json> jsonObjectFrom(const std::string& value) {
    try {
        auto json = parseJson(value);
        if (json.is_object()) return json;
    } catch (const DecodingError&) {
    }
    return std::nullopt;
}

void setSetting(const Field& field, const std::string& value, AppSettings& settings) {
    std::visit(
        [&](auto member) {
            using T = std::remove_cvref_t<decltype(settings.*member)>;
            auto& target = settings.*member;
            if constexpr (std::is_same_v<T, bool>) {
                auto flag = flagFrom(value);
                if (!flag) badValue(field, value, "true or false");
                target = *flag;
            } else if constexpr (std::is_same_v<T, std::optional<bool>>) {
                auto flag = value == "unset" ? std::nullopt : flagFrom(value);
                if (!flag && value != "unset") badValue(field, value, "true, false or unset");
                target = flag;
            } else if constexpr (std::is_same_v<T, std::optional<double>>) {
                if (isUnset(value)) return target.reset();
                auto number = numberFrom(value);
                if (!number || *number < 0) badValue(field, value, "a number of seconds (0 or more) or unset");
                target = number;
            } else if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::optional<std::int64_t>>) {
                if constexpr (std::is_same_v<T, std::optional<std::int64_t>>)
                    if (isUnset(value)) return target.reset();
                auto number = integerFrom(value);
                if (!number || *number < 0) badValue(field, value, "a whole number (0 or more)");
                target = *number;
            } else if constexpr (std::is_same_v<T, HotkeyModifiers>) {
                auto modifiers = parseModifiersArgument(value);
                if (auto raw = integerFrom(value); raw && *raw >= 0) modifiers = HotkeyModifiers{static_cast<std::uint64_t>(*raw)};
                const auto& choices = WorkspaceHotkeys::modifierChoices;
                if (!modifiers || std::find(choices.begin(), choices.end(), *modifiers) == choices.end()) {
                    std::vector<std::string> names;
                    for (auto choice : choices) names.push_back(modifiersText(choice));
                    badValue(field, value, "one of " + joined(names, ", "));
                }
                target = *modifiers;
            } else if constexpr (std::is_same_v<T, std::optional<Hotkey>>) {
                if (isUnset(value)) return target.reset();
                auto hotkey = parseHotkeyArgument(value);
                if (!hotkey.modifiers.isValidForGlobalHotkey())
                    badValue(field, value, "a hotkey with ctrl, opt or cmd, like \"ctrl+opt+right\", or none");
                target = hotkey;
            } else if constexpr (std::is_same_v<T, NativeDockMode>) {
                auto mode = nativeDockModeFromRaw(value);
                if (!mode) badValue(field, value, "unchanged, autoHide or hidden");
                target = *mode;
            } else if constexpr (std::is_same_v<T, DockStyle>) {
                if (value == "default") return void(target = DockStyle{});
                auto json = jsonObjectFrom(value);
                if (!json) badValue(field, value, "a JSON object of style settings or default");
                target = decodeDockStyle(*json);
            } else if constexpr (std::is_same_v<T, JSONValue>) {
                auto json = jsonObjectFrom(value);
                if (!json || !std::all_of(json->begin(), json->end(), [](const Json& v) { return v.is_object(); }))
                    badValue(field, value, "a JSON object from folder paths to option objects");
                target = JSONValue::fromJson(*json);
            } else if constexpr (std::is_same_v<T, std::optional<Date>>) {
                if (isUnset(value)) return target.reset();
                auto date = parseIso8601(value);
                if (!date) badValue(field, value, "an ISO 8601 date such as 2025-01-31T09:00:00Z, or unset");
                target = date;
            } else {
                static_assert(sizeof(T) == 0, "every kind of setting is handled");
            }
        },
        field.member);
}

const Field& fieldNamed(const std::string& name) {
    if (auto field = AppPreferences::field(name)) return *field;
    std::vector<std::string> names;
    for (const auto& f : AppPreferences::fields()) names.emplace_back(f.name);
    throw UsageError("unknown setting " + quoted(name) + "; the settings are: " + joined(names, ", "));
}

// ---- hotkeys -------------------------------------------------------------------------------

struct ActionDescription {
    std::string kind, text;
    std::optional<Uuid> id;
};

ActionDescription describe(const HotkeyAction& action, const std::vector<Profile>& profiles,
                           const std::vector<DockWidget>& widgets) {
    return std::visit(
        [&](const auto& which) -> ActionDescription {
            using T = std::decay_t<decltype(which)>;
            if constexpr (std::is_same_v<T, HotkeyAction::Profile>) {
                auto it = std::find_if(profiles.begin(), profiles.end(), [&](const Profile& p) { return p.id == which.id; });
                return {"profile", "switch to " + quoted(it == profiles.end() ? which.id.string() : it->name), which.id};
            } else if constexpr (std::is_same_v<T, HotkeyAction::PickColour>) {
                auto it = std::find_if(widgets.begin(), widgets.end(), [&](const DockWidget& w) { return w.id == which.widget; });
                return {"pickColour", "pick a colour with " + quoted(it == widgets.end() ? which.widget.string() : it->name),
                        which.widget};
            } else if constexpr (std::is_same_v<T, HotkeyAction::FocusDock>) {
                return {"focusDock", "bring the Dock forward", std::nullopt};
            } else if constexpr (std::is_same_v<T, HotkeyAction::NextWorkspace>) {
                return {"nextWorkspace", "next workspace", std::nullopt};
            } else {
                return {"previousWorkspace", "previous workspace", std::nullopt};
            }
        },
        action.value);
}

Json hotkeyEntry(const HotkeyAction& action, const Hotkey& hotkey, const std::vector<Profile>& profiles,
                 const std::vector<DockWidget>& widgets) {
    auto description = describe(action, profiles, widgets);
    Json entry = Json::object({{"action", description.kind}, {"description", description.text},
                               {"keys", hotkey.displayString()}, {"hotkey", encodeHotkey(hotkey)}});
    if (description.id) entry["id"] = description.id->string();
    return entry;
}

/// The Focus rule, applied now through the same switch as "switch".
void applyFocus(ToolContext& context, bool isFocused) {
    DockSession session(context);
    auto target = FocusBinding::workspace(isFocused, session.store.file().profiles);
    auto& out = context.out;
    if (!target) {
        out << (isFocused ? "No workspace is bound to a Focus; nothing to switch to.\n"
                          : "Every workspace is bound to a Focus; nothing to switch to.\n");
        return;
    }
    switchWorkspace(session, Profile(*target), out);
}

void cycle(ToolContext& context, int step) {
    DockSession session(context);
    const auto& file = session.store.file();
    auto next = WorkspaceCycle::next(file.activeProfileId, file.profiles, step);
    if (!next) {
        context.out << "Nothing to switch to: there are fewer than two workspaces.\n";
        return;
    }
    switchWorkspace(session, *next, context.out);
}

} // namespace

void addAutomationCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        bool json = false;
        std::string name, value, workspace, desktop;
    };
    auto args = std::make_shared<Arguments>();
    auto& out = context.out;

    app.add_subcommand("next", "Switch to the next workspace in list order, as the next-workspace hotkey does")
        ->callback([&context] { cycle(context, +1); });
    app.add_subcommand("previous", "Switch to the previous workspace in list order")
        ->callback([&context] { cycle(context, -1); });

    auto* hotkeys = app.add_subcommand("hotkeys", "The global hotkeys the application registers, and those it drops");
    hotkeys->add_flag("--json", args->json, "Print {\"registered\": [...], \"dropped\": [...]}");
    hotkeys->callback([&context, &out, args] {
        auto defaults = context.openDefaults();
        auto settings = AppPreferences(*defaults).load();
        auto dataDirectory = context.dataDirectory();
        ProfileStore store(StoragePath::profilesFileURL(dataDirectory));
        WidgetStore widgetStore(StoragePath::widgetsFileURL(dataDirectory));
        const auto& profiles = store.file().profiles;
        const auto& widgets = widgetStore.file().widgets;
        auto registry = HotkeyRegistry::build(profiles, wantedHotkeys(settings, widgets));
        if (args->json) {
            auto registered = Json::array(), dropped = Json::array();
            for (const auto& [action, hotkey] : registry.bindings)
                registered.push_back(hotkeyEntry(action, hotkey, profiles, widgets));
            for (const auto& drop : registry.dropped) {
                auto entry = hotkeyEntry(drop.action, drop.hotkey, profiles, widgets);
                entry["reason"] = drop.reason;
                dropped.push_back(entry);
            }
            out << prettyJson(Json::object({{"registered", registered}, {"dropped", dropped}}));
            return;
        }
        if (registry.bindings.empty()) out << "No hotkeys.\n";
        for (const auto& [action, hotkey] : registry.bindings)
            out << "  " << hotkey.displayString() << "  " << describe(action, profiles, widgets).text << "\n";
        if (!registry.dropped.empty()) out << "Dropped:\n";
        for (const auto& drop : registry.dropped)
            out << "  " << drop.hotkey.displayString() << "  " << describe(drop.action, profiles, widgets).text << " ("
                << drop.reason << ")\n";
    });

    auto* prefs = app.add_subcommand("prefs", "Show or change the application's settings");
    prefs->add_flag("--json", args->json, "Print every setting as JSON");
    prefs->callback([&context, &out, args, prefs] {
        if (!prefs->get_subcommands().empty()) return;
        auto defaults = context.openDefaults();
        auto settings = AppPreferences(*defaults).load();
        if (args->json) {
            auto object = Json::object();
            for (const auto& field : AppPreferences::fields()) object[std::string(field.name)] = settingJson(field, settings);
            out << prettyJson(object);
            return;
        }
        std::size_t width = 0;
        for (const auto& field : AppPreferences::fields()) width = std::max(width, field.name.size());
        for (const auto& field : AppPreferences::fields())
            out << field.name << std::string(width - field.name.size() + 2, ' ') << settingText(field, settings) << "\n";
    });
    auto* set = prefs->add_subcommand("set", "Change one setting");
    set->add_option("NAME", args->name, "A setting's name as prefs lists it")->required();
    set->add_option("VALUE", args->value, "Its new value; unset or none clears an optional setting")->required();
    set->callback([&context, &out, args] {
        const auto& field = fieldNamed(args->name);
        auto defaults = context.openDefaults();
        AppPreferences preferences(*defaults);
        auto before = preferences.load();
        auto after = before;
        setSetting(field, std::string(text::trimmed(args->value)), after);
        preferences.store(before, after);
        context.services.notifier.post(std::string(AppPreferences::changedNotification));
        out << field.name << " = " << settingText(field, after) << "\n";
    });
    prefs->add_subcommand("reset", "Put every setting back to its default")->callback([&context, &out] {
        auto defaults = context.openDefaults();
        AppPreferences(*defaults).resetSettings();
        context.services.notifier.post(std::string(AppPreferences::changedNotification));
        out << "Every setting is back to its default.\n";
    });

    auto* focus = app.add_subcommand("focus", "Apply the Focus rule now: on brings the first workspace bound to a "
                                              "Focus, off the first one bound to none");
    focus->add_option("STATE", args->value, "on or off")->required()->check(CLI::IsMember({"on", "off"}));
    focus->callback([&context, args] { applyFocus(context, args->value == "on"); });

    auto* desktop = app.add_subcommand("desktop", "Bind workspaces to desktops (Spaces)");
    desktop->require_subcommand(1);
    auto* bind = desktop->add_subcommand("bind", "Bring WORKSPACE whenever the desktop UUID comes to the front");
    bind->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    bind->add_option("UUID", args->desktop, "The desktop's identifier")->required();
    bind->callback([&context, &out, args] {
        auto uuid = std::string(text::trimmed(args->desktop));
        if (uuid.empty()) throw UsageError("a desktop UUID cannot be blank");
        ProfileStore store(StoragePath::profilesFileURL(context.dataDirectory()), &context.services.notifier);
        auto profile = resolveWorkspace(store.file().profiles, args->workspace);
        if (std::find(profile.desktopUUIDs.begin(), profile.desktopUUIDs.end(), uuid) != profile.desktopUUIDs.end()) {
            out << quoted(profile.name) << " is already bound to desktop " << uuid << ".\n";
            return;
        }
        profile.desktopUUIDs.push_back(uuid);
        if (auto other = DesktopBinding::conflictingProfile(profile, store.file().profiles))
            throw std::runtime_error("desktop " + uuid + " is already bound to " + quoted(other->name) +
                                     "; unbind it there first");
        store.update(profile);
        out << "Bound " << quoted(profile.name) << " to desktop " << uuid << ".\n";
    });
    auto* unbind = desktop->add_subcommand("unbind", "Unbind WORKSPACE from every desktop");
    unbind->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    unbind->callback([&context, &out, args] {
        ProfileStore store(StoragePath::profilesFileURL(context.dataDirectory()), &context.services.notifier);
        auto profile = resolveWorkspace(store.file().profiles, args->workspace);
        if (profile.desktopUUIDs.empty()) {
            out << quoted(profile.name) << " is bound to no desktop.\n";
            return;
        }
        profile.desktopUUIDs.clear();
        store.update(profile);
        out << "Unbound " << quoted(profile.name) << " from its desktops.\n";
    });
}

} // namespace corvane
