#pragma once

#include "CorvaneCore/support/Uuid.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct HotkeyModifiers {
    static constexpr std::uint64_t command = 1;
    static constexpr std::uint64_t option = 2;
    static constexpr std::uint64_t control = 4;
    static constexpr std::uint64_t shift = 8;

    std::uint64_t rawValue = 0;

    bool contains(std::uint64_t member) const { return (rawValue & member) == member; }
    /// Symbols of the set bits in the menu order ⌃ ⌥ ⇧ ⌘, whatever the bit order.
    std::string displaySymbols() const;
    /// A global hotkey needs command, option or control; shift alone does not do.
    bool isValidForGlobalHotkey() const { return (rawValue & (command | option | control)) != 0; }

    bool operator==(const HotkeyModifiers&) const = default;
};

struct Profile;

struct Hotkey {
    /// A macOS virtual key code of the ANSI layout.
    std::uint16_t keyCode = 0;
    HotkeyModifiers modifiers;

    std::string keyLabel() const { return label(keyCode); }
    /// The key cap of the 55 standard ANSI codes; "Key" + the decimal code for any other.
    static std::string label(std::uint16_t keyCode);
    /// The key code whose cap reads `label` (any letter case), for parsing typed hotkeys.
    static std::optional<std::uint16_t> keyCodeForLabel(const std::string& label);
    std::string displayString() const { return modifiers.displaySymbols() + keyLabel(); }
    /// The first workspace, in list order and other than `excluding`, that has this same hotkey.
    const Profile* conflictingProfile(const std::vector<Profile>& profiles, const Uuid& excluding) const;

    bool operator==(const Hotkey&) const = default;
};

} // namespace corvane
