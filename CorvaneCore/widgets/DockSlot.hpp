#pragma once

// Widgets placed in the macOS Dock stand there as placeholder applications; their bundle
// identifiers say which widget (by id) or which slot (1…12) they hold.

#include "CorvaneCore/support/Uuid.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct DockWidget;

namespace DockSlot {

inline constexpr int count = 12;

inline constexpr std::string_view appBundleIdentifier = "dev.tessik.Corvane";
inline constexpr std::string_view slotBundleIdentifierPrefix = "dev.tessik.Corvane.Slot";
inline constexpr std::string_view widgetBundleIdentifierPrefix = "dev.tessik.Corvane.Widget.";

/// Posted after the widgets file changed.
inline constexpr std::string_view widgetsChangedNotification = "dev.tessik.corvane.widgetsChanged";
/// Asks the application to open a widget's editor.
inline constexpr std::string_view editWidgetNotification = "dev.tessik.corvane.editWidget";

/// "dev.tessik.Corvane.Slot" + n.
std::string bundleIdentifier(int slot);
/// "dev.tessik.Corvane.Widget." + the upper-case UUID.
std::string widgetBundleIdentifier(const Uuid& id);
/// "Corvane Slot " + n + ".app".
std::string bundleName(int slot);

/// The UUID after the widget prefix; none without the prefix or when the rest is no UUID.
std::optional<Uuid> widgetID(std::string_view bundleIdentifier);
/// The decimal number after the slot prefix, whatever its value; none otherwise.
std::optional<int> slot(std::string_view bundleIdentifier);
/// The application itself or any of its placeholders.
bool isCorvane(std::string_view bundleIdentifier);

/// The smallest slot 1…12 no widget holds; none when all are taken.
std::optional<int> freeSlot(const std::vector<DockWidget>& widgets);
/// The same over a set of taken slot numbers (any values; those outside 1…12 take nothing).
std::optional<int> freeSlot(const std::vector<long long>& takenSlots);

} // namespace DockSlot

} // namespace corvane
