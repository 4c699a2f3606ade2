#pragma once

#include "CorvaneCore/platform/MountedVolumes.hpp"

namespace corvane {

/// The volumes the test mounted.
class FakeMountedVolumes final : public MountedVolumes {
  public:
    std::vector<MountedVolume> volumes() const override { return mounted; }

    std::vector<MountedVolume> mounted;
};

} // namespace corvane
