#include <gtest/gtest.h>

#include "FakeTree.h"
#include "LinuxThermalReadings.h"

namespace quorvex {
namespace {

TEST(LinuxThermalReadingsTests, ThereIsNoPressureAndTheStateIsNominal) {
  const testing::FakeTree tree;
  LinuxThermalReadings readings{tree.root()};
  EXPECT_EQ(readings.thermalPressure(), std::nullopt);
  EXPECT_EQ(readings.thermalState(), 0);
}

TEST(LinuxThermalReadingsTests, LowPowerModeIsTheLowPowerProfileAndNoOther) {
  const testing::FakeTree tree;
  LinuxThermalReadings readings{tree.root()};
  EXPECT_FALSE(readings.isLowPowerModeEnabled());
  tree.file("firmware/acpi/platform_profile", "low-power\n");
  EXPECT_TRUE(readings.isLowPowerModeEnabled());
  for (const char* profile : {"balanced\n", "performance\n", "quiet\n", "low-power-plus\n", ""}) {
    tree.file("firmware/acpi/platform_profile", profile);
    EXPECT_FALSE(readings.isLowPowerModeEnabled()) << profile;
  }
  tree.unreadable("firmware/acpi/platform_profile");
  EXPECT_FALSE(readings.isLowPowerModeEnabled());
}

}  // namespace
}  // namespace quorvex
