#pragma once

#include "CorvaneCore/dock/DockSnapshot.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetStack.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"
#include "CorvaneCore/workspace/Hotkey.hpp"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class ProfileColor { blue, pink, orange, green, purple, graphite };

inline constexpr std::array<ProfileColor, 6> kAllProfileColors = {
    ProfileColor::blue, ProfileColor::pink, ProfileColor::orange,
    ProfileColor::green, ProfileColor::purple, ProfileColor::graphite};

std::string_view rawValue(ProfileColor color);
std::optional<ProfileColor> profileColorFromRaw(std::string_view raw);
std::string_view displayName(ProfileColor color);
std::string_view hex(ProfileColor color);

/// What happens, on switching to a workspace, to running applications that only other
/// workspaces hold.
enum class OtherWorkspaceApps { keep, hide, quit };

std::string_view rawValue(OtherWorkspaceApps rule);
std::optional<OtherWorkspaceApps> otherWorkspaceAppsFromRaw(std::string_view raw);

/// One whole, named Dock layout.
struct Profile {
    Uuid id;
    std::string name;
    ProfileColor color = ProfileColor::blue;
    /// The applications section, in Dock order.
    std::vector<DockItem> items;
    /// The documents section, in Dock order.
    std::vector<DockItem> others;
    std::vector<WidgetStack> stacks;
    std::optional<std::string> focusModeBinding;
    std::optional<Hotkey> hotkey;
    OtherWorkspaceApps otherWorkspaceApps = OtherWorkspaceApps::hide;
    std::vector<std::string> desktopUUIDs;
    std::optional<std::string> indicatorColorHex;

    std::string indicatorHex() const {
        return indicatorColorHex ? *indicatorColorHex : std::string(hex(color));
    }
    Profile withNewID() const {
        Profile copy = *this;
        copy.id = Uuid::generate();
        return copy;
    }
    DockSnapshot snapshot(Date now) const { return DockSnapshot{items, others, now}; }

    bool operator==(const Profile&) const = default;
};

struct ProfilesFile {
    static constexpr int currentVersion = 2;

    int version = currentVersion;
    std::optional<Uuid> activeProfileId;
    /// In the user's order.
    std::vector<Profile> profiles;

    static ProfilesFile empty() { return {}; }

    bool operator==(const ProfilesFile&) const = default;
};

} // namespace corvane
