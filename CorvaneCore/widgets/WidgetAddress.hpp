#pragma once

#include "CorvaneCore/support/Uuid.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

struct DockWidget;

/// Names a widget from outside the widgets file: by identity, or by the macOS Dock slot it is
/// bound to.
struct WidgetAddress {
    struct Slot {
        int number = 0;
        bool operator==(const Slot&) const = default;
    };

    std::variant<Uuid, Slot> value;

    static WidgetAddress id(const Uuid& uuid) { return WidgetAddress{uuid}; }
    static WidgetAddress slot(int number) { return WidgetAddress{Slot{number}}; }

    /// The address a placeholder's bundle identifier carries: the widget form with a valid UUID,
    /// or the slot form with a number in 1…12. Anything else, or no identifier, is none.
    static std::optional<WidgetAddress> fromBundleIdentifier(std::optional<std::string_view> identifier);

    const Uuid* widgetID() const { return std::get_if<Uuid>(&value); }
    std::optional<int> slotNumber() const;

    /// A slot address never matches a widget without a slot.
    bool matches(const DockWidget& widget) const;
    /// The UUID text, or "slot" + n: the suffix of per-widget state keys.
    std::string key() const;
    /// The placeholder bundle identifier of this address.
    std::string bundleIdentifier() const;

    bool operator==(const WidgetAddress&) const = default;
};

} // namespace corvane
