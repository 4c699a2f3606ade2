#include "platform/posix/ProcNetworkCounters.hpp"
#include "platform/posix/SysPowerSource.hpp"

#include <gtest/gtest.h>

#include <string>

using namespace corvane;

namespace {

std::string fixture(const std::string& name) {
    return std::string(CORVANE_TEST_DATA) + "/" + name;
}

} // namespace

TEST(SysPowerSource, ReadsTheSystemBatteryAndItsTimeLeft) {
    // A peripheral's battery (scope "Device") sorts first and must not be taken for the Mac's.
    auto charging = SysPowerSource(fixture("power/charging")).read();
    ASSERT_TRUE(charging);
    EXPECT_DOUBLE_EQ(charging->level, 0.5);
    EXPECT_TRUE(charging->isCharging);
    EXPECT_TRUE(charging->isOnExternalPower);
    ASSERT_TRUE(charging->minutesRemaining);
    EXPECT_DOUBLE_EQ(*charging->minutesRemaining, 120) << "half of 57 Wh to go at 14.25 W";

    // Without "capacity" the level comes from charge over full charge, time left from current.
    auto discharging = SysPowerSource(fixture("power/discharging")).read();
    ASSERT_TRUE(discharging);
    EXPECT_DOUBLE_EQ(discharging->level, 0.25);
    EXPECT_FALSE(discharging->isCharging);
    EXPECT_FALSE(discharging->isOnExternalPower);
    EXPECT_DOUBLE_EQ(*discharging->minutesRemaining, 120);
}

TEST(SysPowerSource, NoBatteryOrNoFolderReadsNothing) {
    EXPECT_EQ(SysPowerSource(fixture("power/desktop")).read(), std::nullopt);
    EXPECT_EQ(SysPowerSource(fixture("power/missing")).read(), std::nullopt);
}

TEST(ProcNetworkCounters, ReadsEveryInterfaceButLoopback) {
    auto interfaces = ProcNetworkCounters(fixture("")).read();
    ASSERT_EQ(interfaces.size(), 2u);
    EXPECT_EQ(interfaces[0], (InterfaceCounters{"eth0", 123456789, 23456789, true}));
    EXPECT_EQ(interfaces[1].name, "wlan0");
    EXPECT_FALSE(interfaces[1].isActive) << "an interface that never moved a byte is not the one to show";
    EXPECT_TRUE(ProcNetworkCounters(fixture("missing")).read().empty());
}
