#pragma once

#include "CorvaneCore/support/Uuid.hpp"

#include <string>
#include <variant>

namespace corvane {

/// What a global hotkey does.
struct HotkeyAction {
    struct Profile {
        Uuid id;
        bool operator==(const Profile&) const = default;
    };
    struct PickColour {
        Uuid widget;
        bool operator==(const PickColour&) const = default;
    };
    struct FocusDock {
        bool operator==(const FocusDock&) const = default;
    };
    struct NextWorkspace {
        bool operator==(const NextWorkspace&) const = default;
    };
    struct PreviousWorkspace {
        bool operator==(const PreviousWorkspace&) const = default;
    };

    std::variant<Profile, PickColour, FocusDock, NextWorkspace, PreviousWorkspace> value;

    static HotkeyAction profile(const Uuid& id) { return {Profile{id}}; }
    static HotkeyAction pickColour(const Uuid& widget) { return {PickColour{widget}}; }
    static HotkeyAction focusDock() { return {FocusDock{}}; }
    static HotkeyAction nextWorkspace() { return {NextWorkspace{}}; }
    static HotkeyAction previousWorkspace() { return {PreviousWorkspace{}}; }

    /// "profile:" + id, "pickColour:" + id, "focusDock", "nextWorkspace", "previousWorkspace":
    /// gives registrations a stable order.
    std::string sortKey() const;

    bool operator==(const HotkeyAction&) const = default;
};

} // namespace corvane
