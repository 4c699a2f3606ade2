#include "CorvaneCore/automation/WorkspaceHotkeys.hpp"

#include <algorithm>

namespace corvane {

namespace WorkspaceHotkeys {

std::optional<Hotkey> numbered(int index, HotkeyModifiers modifiers) {
    if (index < 0 || index >= static_cast<int>(digitKeyCodes.size())) return std::nullopt;
    return Hotkey{digitKeyCodes[static_cast<std::size_t>(index)], modifiers};
}

std::map<Uuid, Hotkey> bindings(const std::vector<Profile>& profiles, std::optional<HotkeyModifiers> numberedModifiers) {
    std::map<Uuid, Hotkey> result;
    auto bound = [&](const Hotkey& hotkey) {
        return std::any_of(result.begin(), result.end(), [&](const auto& entry) { return entry.second == hotkey; });
    };
    for (const auto& profile : profiles)
        if (profile.hotkey && !result.contains(profile.id) && !bound(*profile.hotkey))
            result[profile.id] = *profile.hotkey;
    if (!numberedModifiers) return result;
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        if (result.contains(profiles[i].id)) continue;
        auto digit = numbered(static_cast<int>(i), *numberedModifiers);
        if (digit && !bound(*digit)) result[profiles[i].id] = *digit;
    }
    return result;
}

} // namespace WorkspaceHotkeys

HotkeyRegistry HotkeyRegistry::build(const std::vector<Profile>& profiles, const Wanted& wanted) {
    HotkeyRegistry registry;
    auto holder = [&](const Hotkey& hotkey) -> const HotkeyAction* {
        for (const auto& [action, bound] : registry.bindings)
            if (bound == hotkey) return &action;
        return nullptr;
    };
    auto nameOf = [&](const HotkeyAction& action) -> std::string {
        if (auto p = std::get_if<HotkeyAction::Profile>(&action.value))
            for (const auto& profile : profiles)
                if (profile.id == p->id) return "workspace \"" + profile.name + "\"";
        return action.sortKey();
    };
    auto add = [&](HotkeyAction action, const Hotkey& hotkey) {
        if (auto taken = holder(hotkey)) registry.dropped.push_back({action, hotkey, "already used by " + nameOf(*taken)});
        else registry.bindings.emplace_back(std::move(action), hotkey);
    };

    auto workspaces = WorkspaceHotkeys::bindings(profiles, wanted.numbered);
    // Workspaces in list order, so the registry reads like the menu.
    for (const auto& profile : profiles)
        if (auto it = workspaces.find(profile.id); it != workspaces.end())
            registry.bindings.emplace_back(HotkeyAction::profile(profile.id), it->second);
    for (const auto& profile : profiles)
        if (profile.hotkey && (!workspaces.contains(profile.id) || workspaces.at(profile.id) != *profile.hotkey)) {
            auto taken = holder(*profile.hotkey);
            registry.dropped.push_back({HotkeyAction::profile(profile.id), *profile.hotkey,
                                        taken ? "already used by " + nameOf(*taken) : "already used"});
        }
    if (wanted.focusDock) add(HotkeyAction::focusDock(), *wanted.focusDock);
    if (wanted.nextWorkspace) add(HotkeyAction::nextWorkspace(), *wanted.nextWorkspace);
    if (wanted.previousWorkspace) add(HotkeyAction::previousWorkspace(), *wanted.previousWorkspace);
    for (const auto& [widget, hotkey] : wanted.colourPickers) add(HotkeyAction::pickColour(widget), hotkey);
    return registry;
}

} // namespace corvane
