#include "CorvaneCore/automation/AppDesktopBindings.hpp"

#include "CorvaneCore/support/Text.hpp"

namespace corvane {

std::optional<AppDesktopAssignment> AppDesktopBindings::assignment(const std::string& bundleIdentifier) const {
    auto wanted = text::lowercased(bundleIdentifier);
    auto it = values.find(wanted);
    if (it == values.end())
        for (it = values.begin(); it != values.end() && text::lowercased(it->first) != wanted; ++it) {
        }
    if (it == values.end()) return std::nullopt;
    if (it->second == allSpaces) return AppDesktopAssignment{AppDesktopAssignment::AllDesktops{}};
    return AppDesktopAssignment{AppDesktopAssignment::Desktop{it->second}};
}

AppDesktopBindings AppDesktopBindings::setting(const std::optional<AppDesktopAssignment>& assignment,
                                               const std::string& bundleIdentifier) const {
    auto key_ = text::lowercased(bundleIdentifier);
    AppDesktopBindings copy = *this;
    std::erase_if(copy.values, [&](const auto& entry) { return text::lowercased(entry.first) == key_; });
    if (assignment) {
        if (auto desktop = std::get_if<AppDesktopAssignment::Desktop>(&assignment->value)) copy.values[key_] = desktop->uuid;
        else copy.values[key_] = allSpaces;
    }
    return copy;
}

} // namespace corvane
