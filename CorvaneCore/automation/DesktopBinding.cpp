#include "CorvaneCore/automation/DesktopBinding.hpp"

#include <algorithm>

namespace corvane {

namespace {
const Profile* byId(const std::vector<Profile>& profiles, const Uuid& id) {
    for (const auto& p : profiles)
        if (p.id == id) return &p;
    return nullptr;
}
bool boundTo(const Profile& profile, const std::string& desktop) {
    return std::find(profile.desktopUUIDs.begin(), profile.desktopUUIDs.end(), desktop) != profile.desktopUUIDs.end();
}
} // namespace

const Profile* DesktopBinding::profile(const std::string& forDesktop, const std::vector<Profile>& profiles) {
    for (const auto& p : profiles)
        if (boundTo(p, forDesktop)) return &p;
    return nullptr;
}

std::optional<Uuid> DesktopBinding::workspace(const std::optional<std::string>& onDesktop,
                                              const std::vector<Profile>& profiles, const std::optional<Uuid>& active) {
    if (onDesktop)
        if (auto p = profile(*onDesktop, profiles)) return p->id;
    return active;
}

const Profile* DesktopBinding::conflictingProfile(const Profile& profile, const std::vector<Profile>& profiles) {
    for (const auto& other : profiles) {
        if (other.id == profile.id) continue;
        for (const auto& desktop : profile.desktopUUIDs)
            if (boundTo(other, desktop)) return &other;
    }
    return nullptr;
}

std::optional<Uuid> DisplayWorkspaces::workspace(std::uint32_t display, const std::optional<std::string>& desktop,
                                                 const std::vector<Profile>& profiles,
                                                 const std::optional<Uuid>& active) const {
    if (auto it = chosen.find(display); it != chosen.end() && byId(profiles, it->second)) return it->second;
    return DesktopBinding::workspace(desktop, profiles, active);
}

void DisplayWorkspaces::display(std::uint32_t display, const std::string& isOn, const std::vector<Profile>& profiles) {
    if (auto it = desktops.find(display); it != desktops.end() && it->second == isOn) return;
    desktops[display] = isOn;
    if (auto p = DesktopBinding::profile(isOn, profiles)) chosen[display] = p->id;
}

void DisplayWorkspaces::choose(const Uuid& workspace, std::uint32_t on) { chosen[on] = workspace; }

std::vector<Profile> DisplayWorkspaces::shown(std::uint32_t besides, const std::optional<Uuid>& switchingTo,
                                              const std::vector<Profile>& profiles,
                                              const std::optional<Uuid>& active) const {
    std::vector<Profile> result;
    std::set<std::uint32_t> displays;
    for (const auto& [d, _] : chosen) displays.insert(d);
    for (const auto& [d, _] : desktops) displays.insert(d);
    for (auto d : displays) {
        if (d == besides) continue;
        auto desktop = desktops.contains(d) ? std::optional<std::string>(desktops.at(d)) : std::nullopt;
        auto id = workspace(d, desktop, profiles, active);
        if (!id || id == switchingTo) continue;
        auto p = byId(profiles, *id);
        if (p && std::none_of(result.begin(), result.end(), [&](const Profile& r) { return r.id == p->id; }))
            result.push_back(*p);
    }
    return result;
}

void DisplayWorkspaces::keep(const std::set<std::uint32_t>& only) {
    std::erase_if(chosen, [&](const auto& entry) { return !only.contains(entry.first); });
    std::erase_if(desktops, [&](const auto& entry) { return !only.contains(entry.first); });
}

} // namespace corvane
