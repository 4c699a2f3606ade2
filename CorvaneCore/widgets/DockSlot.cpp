#include "CorvaneCore/widgets/DockSlot.hpp"

#include "CorvaneCore/widgets/DockWidget.hpp"

#include <algorithm>
#include <charconv>

namespace corvane::DockSlot {

std::string bundleIdentifier(int n) {
    return std::string(slotBundleIdentifierPrefix) + std::to_string(n);
}

std::string widgetBundleIdentifier(const Uuid& id) {
    return std::string(widgetBundleIdentifierPrefix) + id.string();
}

std::string bundleName(int n) {
    return "Corvane Slot " + std::to_string(n) + ".app";
}

std::optional<Uuid> widgetID(std::string_view identifier) {
    if (!identifier.starts_with(widgetBundleIdentifierPrefix)) return std::nullopt;
    return Uuid::parse(identifier.substr(widgetBundleIdentifierPrefix.size()));
}

std::optional<int> slot(std::string_view identifier) {
    if (!identifier.starts_with(slotBundleIdentifierPrefix)) return std::nullopt;
    auto rest = identifier.substr(slotBundleIdentifierPrefix.size());
    // An explicit plus sign is a decimal integer too; from_chars only knows the minus.
    if (rest.starts_with('+') && rest.size() > 1 && rest[1] != '-') rest.remove_prefix(1);
    int value = 0;
    auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (rest.empty() || error != std::errc() || end != rest.data() + rest.size()) return std::nullopt;
    return value;
}

bool isCorvane(std::string_view identifier) {
    return identifier == appBundleIdentifier ||
           (identifier.starts_with(appBundleIdentifier) &&
            identifier.substr(appBundleIdentifier.size()).starts_with('.'));
}

std::optional<int> freeSlot(const std::vector<long long>& takenSlots) {
    for (int n = 1; n <= count; ++n)
        if (std::find(takenSlots.begin(), takenSlots.end(), n) == takenSlots.end()) return n;
    return std::nullopt;
}

std::optional<int> freeSlot(const std::vector<DockWidget>& widgets) {
    std::vector<long long> taken;
    for (const auto& widget : widgets)
        if (widget.slot) taken.push_back(*widget.slot);
    return freeSlot(taken);
}

} // namespace corvane::DockSlot
