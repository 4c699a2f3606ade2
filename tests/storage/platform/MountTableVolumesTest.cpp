#include "platform/posix/MountTableVolumes.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(MountTableVolumes, DeviceMountsWithTheirReadOnlyFlag) {
    auto volumes = MountTableVolumes::parse("proc /proc proc rw,nosuid 0 0\n"
                                            "/dev/sda1 / ext4 rw,relatime 0 0\n"
                                            "tmpfs /run tmpfs rw,nosuid 0 0\n"
                                            "/dev/sr0 /media/My\\040Disc iso9660 ro,nosuid 0 0\n"
                                            "/dev/sdb1 /mnt/rocket ext4 rw,errors=remount-ro 0 0\n"
                                            "broken-line\n");
    EXPECT_EQ(volumes,
              (std::vector<MountedVolume>{{"/", false}, {"/media/My Disc", true}, {"/mnt/rocket", false}}));
    EXPECT_TRUE(MountTableVolumes("/nonexistent/mounts").volumes().empty());
}
