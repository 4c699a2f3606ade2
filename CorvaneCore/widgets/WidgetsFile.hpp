#pragma once

#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/JSONValue.hpp"

#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

struct WidgetAddress;

/// An entry of the widgets file that this build cannot read, most likely a kind added by a newer
/// build. It is written back exactly as it was found.
struct UnrecognizedWidget {
    JSONValue raw;

    /// The "id" member when it is a UUID string.
    std::optional<Uuid> id() const;
    /// The "slot" member when it is a whole number, so that the slot stays reserved.
    std::optional<long long> slot() const;

    bool operator==(const UnrecognizedWidget&) const = default;
};

/// Every widget of the user, as "widgets.json" holds them.
struct WidgetsFile {
    static constexpr int currentVersion = 1;

    int version = currentVersion;
    /// In file order.
    std::vector<DockWidget> widgets;
    /// Written after `widgets`, in the order they were read.
    std::vector<UnrecognizedWidget> unrecognized;

    static WidgetsFile empty() { return {}; }

    /// Builds the file from the bytes of the older "collections.json", which knew only
    /// application collections. Throws `DecodingError` and migrates nothing when they do not
    /// decode.
    static WidgetsFile migrating(std::string_view legacyCollections);

    /// The smallest slot 1…12 neither a widget nor an unrecognized entry holds.
    std::optional<int> freeSlot() const;

    /// The first widget the address matches.
    const DockWidget* widget(const WidgetAddress& address) const;
    DockWidget* widget(const WidgetAddress& address);

    bool operator==(const WidgetsFile&) const = default;
};

} // namespace corvane
