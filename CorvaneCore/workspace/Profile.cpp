#include "CorvaneCore/workspace/Profile.hpp"

#include "CorvaneCore/support/RawValue.hpp"

namespace corvane {

std::string_view rawValue(ProfileColor color) {
    switch (color) {
    case ProfileColor::blue: return "blue";
    case ProfileColor::pink: return "pink";
    case ProfileColor::orange: return "orange";
    case ProfileColor::green: return "green";
    case ProfileColor::purple: return "purple";
    case ProfileColor::graphite: return "graphite";
    }
    return "blue";
}

std::optional<ProfileColor> profileColorFromRaw(std::string_view raw) {
    return caseWithRawValue(kAllProfileColors, raw);
}

std::string_view displayName(ProfileColor color) {
    switch (color) {
    case ProfileColor::blue: return "Blue";
    case ProfileColor::pink: return "Pink";
    case ProfileColor::orange: return "Orange";
    case ProfileColor::green: return "Green";
    case ProfileColor::purple: return "Purple";
    case ProfileColor::graphite: return "Graphite";
    }
    return "Blue";
}

std::string_view hex(ProfileColor color) {
    switch (color) {
    case ProfileColor::blue: return "#6670F5";
    case ProfileColor::pink: return "#E86A9F";
    case ProfileColor::orange: return "#F59E0B";
    case ProfileColor::green: return "#22C55E";
    case ProfileColor::purple: return "#A855F7";
    case ProfileColor::graphite: return "#6B7280";
    }
    return "#6670F5";
}

std::string_view rawValue(OtherWorkspaceApps rule) {
    switch (rule) {
    case OtherWorkspaceApps::keep: return "keep";
    case OtherWorkspaceApps::hide: return "hide";
    case OtherWorkspaceApps::quit: return "quit";
    }
    return "hide";
}

std::optional<OtherWorkspaceApps> otherWorkspaceAppsFromRaw(std::string_view raw) {
    return caseWithRawValue({OtherWorkspaceApps::keep, OtherWorkspaceApps::hide, OtherWorkspaceApps::quit},
                            raw);
}

} // namespace corvane
