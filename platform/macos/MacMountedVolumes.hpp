#pragma once

#include "CorvaneCore/platform/MountedVolumes.hpp"

namespace corvane {

/// The mounted volumes through getmntinfo. Written without a macOS compiler at hand: keep it thin.
class MacMountedVolumes final : public MountedVolumes {
  public:
    std::vector<MountedVolume> volumes() const override;
};

} // namespace corvane
