#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {

namespace DesktopBinding {

/// The first workspace in list order bound to the desktop.
const Profile* profile(const std::string& forDesktop, const std::vector<Profile>& profiles);
/// The workspace bound to the desktop when there is one, else `active`.
std::optional<Uuid> workspace(const std::optional<std::string>& onDesktop, const std::vector<Profile>& profiles,
                              const std::optional<Uuid>& active);
/// Another workspace already bound to one of `profile`'s desktops.
const Profile* conflictingProfile(const Profile& profile, const std::vector<Profile>& profiles);

} // namespace DesktopBinding

/// Which workspace each display shows, and which desktop each display last had in front.
struct DisplayWorkspaces {
    std::map<std::uint32_t, Uuid> chosen;
    std::map<std::uint32_t, std::string> desktops;

    std::optional<Uuid> workspace(std::uint32_t display, const std::optional<std::string>& desktop,
                                  const std::vector<Profile>& profiles, const std::optional<Uuid>& active) const;
    /// Records the desktop in front of a display; moving to a bound desktop brings its
    /// workspace. A repeated notice for the same desktop keeps the user's choice.
    void display(std::uint32_t display, const std::string& isOn, const std::vector<Profile>& profiles);
    void choose(const Uuid& workspace, std::uint32_t on);
    /// The workspaces the other displays show, in display order, without duplicates and without
    /// the one being switched to.
    std::vector<Profile> shown(std::uint32_t besides, const std::optional<Uuid>& switchingTo,
                               const std::vector<Profile>& profiles, const std::optional<Uuid>& active) const;
    void keep(const std::set<std::uint32_t>& only);

    bool operator==(const DisplayWorkspaces&) const = default;
};

} // namespace corvane
