#pragma once

#include "CorvaneCore/bar/DockStyle.hpp"
#include "CorvaneCore/dock/NativeDockPreferences.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"
#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/JSONValue.hpp"
#include "CorvaneCore/workspace/Hotkey.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

/// Every user setting, each holding the value used when its key is absent.
struct AppSettings {
    bool usesOwnDock = true;
    bool filtersByDesktop = true;
    bool hidesDockWhenCovered = false;
    bool showsAppDockMenuItems = false;
    bool widgetsFollowIconPack = true;
    bool reservesDockSpace = true;
    /// None lets the own bar decide.
    std::optional<bool> autoHidesDock;
    /// Seconds.
    std::optional<double> dockRevealDelay;
    bool usesPrivateDockSpace = true;
    bool showsDockOnEveryDisplay = false;
    DockStyle dockStyle;
    /// Folder path → stack options, as an object of objects.
    JSONValue stackOptions = JSONValue::Object{};
    bool showsWorkspaceSwitcherInDock = false;
    bool numberedWorkspaceHotkeys = true;
    HotkeyModifiers workspaceHotkeyModifiers{HotkeyModifiers::control | HotkeyModifiers::option};
    /// The built-in default until the user sets another or switches it off.
    std::optional<Hotkey> focusDockHotkey = defaultFocusDockHotkey;
    std::optional<Hotkey> nextWorkspaceHotkey;
    std::optional<Hotkey> previousWorkspaceHotkey;
    bool switchesWorkspaceByGesture = true;
    NativeDockMode nativeDockMode = NativeDockMode::autoHide;
    bool launchAtLogin = false;
    std::int64_t onboardingVersion = 0;
    std::optional<std::int64_t> onboardingPage;
    bool downloadsTileMigrated = false;
    std::optional<Date> downloadsSeenAt;

    /// Control + option + D: beside the numbered workspace hotkeys, on a letter none of them uses.
    static constexpr Hotkey defaultFocusDockHotkey{2, HotkeyModifiers{HotkeyModifiers::control | HotkeyModifiers::option}};

    bool operator==(const AppSettings&) const = default;
};

/// The user's settings in the user defaults, each under "dev.tessik.corvane.preferences." + its
/// name. Main thread.
class AppPreferences {
public:
    static constexpr std::string_view keyPrefix = "dev.tessik.corvane.preferences";
    /// Beside `focusDockHotkey`: the user switched the built-in default off.
    static constexpr std::string_view focusDockHotkeyOffName = "focusDockHotkeyOff";
    /// Posted by the command-line tool after it changed settings, so a running application reads
    /// them again: the system's settings store tells no one of a change.
    static constexpr std::string_view changedNotification = "dev.tessik.corvane.settings-changed";

    /// One setting: its name and the field of `AppSettings` that holds it.
    struct Field {
        using Member = std::variant<bool AppSettings::*, std::optional<bool> AppSettings::*,
                                    std::optional<double> AppSettings::*, std::int64_t AppSettings::*,
                                    std::optional<std::int64_t> AppSettings::*, HotkeyModifiers AppSettings::*,
                                    std::optional<Hotkey> AppSettings::*, NativeDockMode AppSettings::*,
                                    DockStyle AppSettings::*, JSONValue AppSettings::*,
                                    std::optional<Date> AppSettings::*>;
        std::string_view name;
        Member member;
    };
    /// Every setting, in the order the settings pages show them.
    static const std::vector<Field>& fields();
    static const Field* field(std::string_view name);
    static std::string key(std::string_view name) { return std::string(keyPrefix) + "." + std::string(name); }

    explicit AppPreferences(UserDefaults& defaults) : defaults_(defaults) {}

    /// Every setting; a missing or unreadable value takes its default, an unknown
    /// `nativeDockMode` text reads as `autoHide`.
    AppSettings load() const;
    /// Writes the settings that differ between `before` and `after`; an unset optional setting
    /// removes its key. Throws as the user defaults do.
    void store(const AppSettings& before, const AppSettings& after);

    /// "nextWorkspaceHotkey", "previousWorkspaceHotkey" or "focusDockHotkey".
    std::optional<Hotkey> hotkey(std::string_view named) const;
    void setHotkey(std::string_view named, const std::optional<Hotkey>& hotkey);

    /// Removes every key under the prefix, so every setting reads as its default again.
    void resetSettings();

    UserDefaults& defaults() { return defaults_; }

private:
    UserDefaults& defaults_;
};

} // namespace corvane
