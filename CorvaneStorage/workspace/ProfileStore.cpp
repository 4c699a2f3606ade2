#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"

#include <algorithm>

namespace corvane {

ProfilesFile ProfilesFileCodec::decode(std::string_view text) {
    auto file = profilesFileFromText(text);
    file.version = ProfilesFile::currentVersion;
    return file;
}

std::string ProfilesFileCodec::encode(const ProfilesFile& file) { return profilesFileText(file); }

Profile ProfileStore::create(Profile profile) {
    if (text::trimmed(profile.name).empty()) profile.name = "Untitled";
    change([&](ProfilesFile& file) { file.profiles.push_back(profile); });
    return profile;
}

void ProfileStore::update(Profile profile) {
    change([&](ProfilesFile& file) {
        auto it = std::find_if(file.profiles.begin(), file.profiles.end(),
                               [&](const Profile& p) { return p.id == profile.id; });
        if (it == file.profiles.end()) throw DockError::profileNotFound(profile.id.string());
        *it = profile;
    });
}

void ProfileStore::remove(Uuid id) {
    change([&](ProfilesFile& file) {
        std::erase_if(file.profiles, [&](const Profile& p) { return p.id == id; });
        if (file.activeProfileId == id) file.activeProfileId.reset();
    });
}

void ProfileStore::setActive(std::optional<Uuid> id) {
    change([&](ProfilesFile& file) { file.activeProfileId = id; });
}

const Profile* ProfileStore::profile(const Uuid& id) const {
    for (const auto& p : file().profiles)
        if (p.id == id) return &p;
    return nullptr;
}

} // namespace corvane
