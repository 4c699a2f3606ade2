#include "CorvaneCore/workspace/ProfileTransfer.hpp"

#include "CorvaneCore/workspace/ProfileCoding.hpp"

#include <algorithm>

namespace corvane::ProfileTransfer {

std::string exportData(const std::vector<Profile>& profiles) {
    ProfilesFile file;
    file.profiles = profiles;
    return profilesFileText(file);
}

std::vector<Profile> profiles(std::string_view data) { return profilesFileFromText(data).profiles; }

MergeResult merge(const std::vector<Profile>& imported, const std::vector<Profile>& existing,
                  const std::set<std::string>& knownDesktopUUIDs) {
    MergeResult result{existing, {}};
    // Comparing with what is already merged also keeps two imported workspaces from clashing.
    auto taken = [&](auto&& same) {
        return std::any_of(result.profiles.begin(), result.profiles.end(), same);
    };
    for (auto profile : imported) {
        Adjustment adjustment{profile.name};
        if (taken([&](const Profile& p) { return p.id == profile.id; })) {
            profile.id = Uuid::generate();
            adjustment.newID = true;
        }
        if (taken([&](const Profile& p) { return p.name == profile.name; })) {
            profile.name += importedSuffix;
            adjustment.renamed = true;
        }
        if (profile.hotkey && taken([&](const Profile& p) { return p.hotkey == profile.hotkey; })) {
            profile.hotkey.reset();
            adjustment.hotkeyRemoved = true;
        }
        auto before = profile.desktopUUIDs.size();
        std::erase_if(profile.desktopUUIDs, [&](const std::string& d) { return !knownDesktopUUIDs.contains(d); });
        adjustment.desktopsDropped = before - profile.desktopUUIDs.size();
        result.profiles.push_back(std::move(profile));
        result.adjustments.push_back(adjustment);
    }
    return result;
}

} // namespace corvane::ProfileTransfer
