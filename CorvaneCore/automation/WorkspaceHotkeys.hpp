#pragma once

#include "CorvaneCore/automation/HotkeyAction.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

namespace WorkspaceHotkeys {

inline constexpr HotkeyModifiers defaultModifiers{HotkeyModifiers::control | HotkeyModifiers::option};
/// The combinations offered for numbered hotkeys, in menu order.
inline constexpr std::array<HotkeyModifiers, 5> modifierChoices = {
    HotkeyModifiers{6}, HotkeyModifiers{5}, HotkeyModifiers{3}, HotkeyModifiers{7}, HotkeyModifiers{14}};
/// The ANSI key codes of the digits 1 to 9 (5 and 6, 8 and 9 are not in code order).
inline constexpr std::array<std::uint16_t, 9> digitKeyCodes = {18, 19, 20, 21, 23, 22, 26, 28, 25};

/// Digit index + 1 with `modifiers`, for the first nine workspaces only.
std::optional<Hotkey> numbered(int index, HotkeyModifiers modifiers);

/// Own hotkeys first (the first workspace in list order wins a shared one), then, when
/// `numbered` is given, a digit for each of the first nine workspaces still without one whose
/// combination is free.
std::map<Uuid, Hotkey> bindings(const std::vector<Profile>& profiles, std::optional<HotkeyModifiers> numbered);

} // namespace WorkspaceHotkeys

/// Everything the application wants as a global hotkey, in order of precedence.
struct HotkeyRegistry {
    struct Wanted {
        std::optional<HotkeyModifiers> numbered;
        std::optional<Hotkey> focusDock, nextWorkspace, previousWorkspace;
        /// Colour-picker widgets with a hotkey.
        std::vector<std::pair<Uuid, Hotkey>> colourPickers;
    };
    struct Dropped {
        HotkeyAction action;
        Hotkey hotkey;
        std::string reason;
    };

    std::vector<std::pair<HotkeyAction, Hotkey>> bindings;
    std::vector<Dropped> dropped;

    /// Workspaces first, then the Dock, next and previous, then colour pickers; a later wish for
    /// a combination already bound is dropped, with the reason.
    static HotkeyRegistry build(const std::vector<Profile>& profiles, const Wanted& wanted);
};

} // namespace corvane
