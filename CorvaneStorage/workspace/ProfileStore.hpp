#pragma once

#include "CorvaneCore/workspace/Profile.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <optional>
#include <string_view>

namespace corvane {

struct ProfilesFileCodec {
    static ProfilesFile empty() { return ProfilesFile::empty(); }
    /// Any version is accepted and becomes the current one, so the next save upgrades the file.
    static ProfilesFile decode(std::string_view text);
    static std::string encode(const ProfilesFile& file);
};

/// The workspaces file, "profiles.json".
class ProfileStore : public JsonFileStore<ProfilesFile, ProfilesFileCodec> {
public:
    explicit ProfileStore(std::filesystem::path url, Notifier* notifier = nullptr)
        : JsonFileStore(std::move(url), notifier) {}
    explicit ProfileStore(Discarding) : JsonFileStore(discarding) {}

    const ProfilesFile& file() const { return value(); }
    ProfilesFile& file() { return value(); }

    /// Appends the workspace (a blank name becomes "Untitled") and saves; the active workspace
    /// stays as it was.
    Profile create(Profile profile);
    /// Replaces the workspace with the same id in place; `DockError::profileNotFound` when there
    /// is none.
    void update(Profile profile);
    /// Removes the workspace; when it was the active one, none is active afterwards.
    void remove(Uuid id);
    void setActive(std::optional<Uuid> id);

    const Profile* profile(const Uuid& id) const;
};

} // namespace corvane
