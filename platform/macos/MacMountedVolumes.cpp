#include "platform/macos/MacMountedVolumes.hpp"

#include <sys/mount.h>
#include <sys/param.h>
#include <sys/ucred.h>

namespace corvane {

std::vector<MountedVolume> MacMountedVolumes::volumes() const {
    struct statfs* mounts = nullptr;
    // MNT_NOWAIT: cached statistics are enough, and a hung network volume must not block us.
    int count = getmntinfo(&mounts, MNT_NOWAIT);
    std::vector<MountedVolume> volumes;
    for (int i = 0; i < count; ++i) {
        const auto& mount = mounts[i];
        // Volumes the Finder does not show (the system's VM, Preboot and Update volumes) hold no
        // trash of the user's.
        if (mount.f_flags & MNT_DONTBROWSE) continue;
        volumes.push_back(MountedVolume{mount.f_mntonname, (mount.f_flags & MNT_RDONLY) != 0});
    }
    return volumes;
}

} // namespace corvane
