#pragma once

#include <filesystem>
#include <vector>

namespace corvane {

/// A mounted file system as the user sees it.
struct MountedVolume {
    std::filesystem::path path;
    bool isReadOnly = false;

    bool operator==(const MountedVolume&) const = default;
};

/// The volumes mounted now. Any thread.
class MountedVolumes {
  public:
    virtual ~MountedVolumes() = default;
    /// The browsable volumes, the root first when it is one; empty when they cannot be listed.
    virtual std::vector<MountedVolume> volumes() const = 0;
};

} // namespace corvane
