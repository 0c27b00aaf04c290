#include <gtest/gtest.h>

#include "ProcessActivityInfo.h"

namespace quorvex {
namespace {

TEST(ProcessActivityInfo, IdentityIsTheProcessID) {
  const ProcessActivityInfo info{42, "editor", 12.5, 3.0, 4096.0, std::nullopt, 20.0};
  EXPECT_EQ(info.id, 42);
  EXPECT_EQ(info.pid, 42);
  EXPECT_EQ(info.name, "editor");
  EXPECT_EQ(info.cpuPercent, 12.5);
  EXPECT_EQ(info.wakeupsPerSecond, 3.0);
  EXPECT_EQ(info.diskBytesPerSecond, 4096.0);
  EXPECT_EQ(info.energyWattsEstimate, std::nullopt);
  EXPECT_EQ(info.impactScore, 20.0);
}

TEST(ProcessActivityInfo, AbsentEnergyIsNotZeroEnergy) {
  const ProcessActivityInfo absent{1, "a", 0.0, 0.0, 0.0, std::nullopt, 0.0};
  const ProcessActivityInfo zero{1, "a", 0.0, 0.0, 0.0, 0.0, 0.0};
  EXPECT_NE(absent, zero);
}

}  // namespace
}  // namespace quorvex
