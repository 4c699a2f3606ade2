#include "CorvaneCore/widgets/WidgetAddress.hpp"

#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"

namespace corvane {

std::optional<WidgetAddress> WidgetAddress::fromBundleIdentifier(std::optional<std::string_view> identifier) {
    if (!identifier) return std::nullopt;
    if (auto widget = DockSlot::widgetID(*identifier)) return id(*widget);
    if (auto n = DockSlot::slot(*identifier); n && *n >= 1 && *n <= DockSlot::count) return slot(*n);
    return std::nullopt;
}

std::optional<int> WidgetAddress::slotNumber() const {
    if (auto s = std::get_if<Slot>(&value)) return s->number;
    return std::nullopt;
}

bool WidgetAddress::matches(const DockWidget& widget) const {
    if (auto uuid = widgetID()) return widget.id == *uuid;
    return widget.slot && widget.slot == slotNumber();
}

std::string WidgetAddress::key() const {
    if (auto uuid = widgetID()) return uuid->string();
    return "slot" + std::to_string(*slotNumber());
}

std::string WidgetAddress::bundleIdentifier() const {
    if (auto uuid = widgetID()) return DockSlot::widgetBundleIdentifier(*uuid);
    return DockSlot::bundleIdentifier(*slotNumber());
}

} // namespace corvane
