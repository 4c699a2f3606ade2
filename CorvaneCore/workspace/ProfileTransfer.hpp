#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Moving workspaces between installations. The transfer file has the workspaces file's form,
/// so a "profiles.json" copied from a data folder imports as well.
namespace ProfileTransfer {

inline constexpr std::string_view suggestedFileName = "Corvane Workspaces.json";
inline constexpr std::string_view importedSuffix = " (Imported)";

/// Version 2, no active workspace.
std::string exportData(const std::vector<Profile>& profiles);
/// The workspaces in file order, with every legacy rule; throws `DecodingError`.
std::vector<Profile> profiles(std::string_view data);

/// What `merge` did to one imported workspace, for telling the user.
struct Adjustment {
    std::string name;
    bool newID = false;
    bool renamed = false;
    bool hotkeyRemoved = false;
    std::size_t desktopsDropped = 0;
};

struct MergeResult {
    std::vector<Profile> profiles;
    std::vector<Adjustment> adjustments;
};

/// The existing list unchanged, then each imported workspace made to fit beside it: a taken id
/// gets a new one, a taken name gets " (Imported)", a taken hotkey is dropped, and only desktops
/// known here are kept. Imported workspaces are also checked against those imported before them.
MergeResult merge(const std::vector<Profile>& imported, const std::vector<Profile>& existing,
                  const std::set<std::string>& knownDesktopUUIDs);

} // namespace ProfileTransfer

} // namespace corvane
