#pragma once

#include "CorvaneCore/platform/MountedVolumes.hpp"

#include <filesystem>
#include <string_view>

namespace corvane {

/// The volumes of a Linux mount table ("/proc/self/mounts" unless told otherwise). Only file
/// systems on a device count as volumes; the kernel's own (proc, tmpfs, cgroup…) do not.
class MountTableVolumes final : public MountedVolumes {
  public:
    explicit MountTableVolumes(std::filesystem::path table = "/proc/self/mounts")
        : table_(std::move(table)) {}
    std::vector<MountedVolume> volumes() const override;

    /// The volumes of a mount table's text.
    static std::vector<MountedVolume> parse(std::string_view text);

  private:
    std::filesystem::path table_;
};

} // namespace corvane
