#include "RecordedTesting.h"

namespace quorvex {
namespace {

TEST(RecordedHIDTemperatures, NullIsMissingEntryPoints) {
  EXPECT_EQ(machineWithFrame(R"("hid": null)")->hidTemperatures().open(), nullptr);
}

TEST(RecordedHIDTemperatures, ServicesComeInTheirOrder) {
  const auto machine = machineWithFrame(
      R"("hid": [{"product": "PMU tdie1", "value": 41.5}, {"product": "NAND", "value": null}])");
  const auto services = machine->hidTemperatures().open()->copyServices();
  ASSERT_TRUE(services);
  ASSERT_EQ(services->size(), 2U);
  EXPECT_EQ((*services)[0].product, "PMU tdie1");
  EXPECT_EQ((*services)[0].value, 41.5);
  EXPECT_EQ((*services)[1].product, "NAND");
  EXPECT_EQ((*services)[1].value, std::nullopt) << "the service has no event";
}

TEST(RecordedHIDTemperatures, NoServicesAreAnEmptyList) {
  const auto services = machineWithFrame(R"("hid": [])")->hidTemperatures().open()->copyServices();
  ASSERT_TRUE(services);
  EXPECT_TRUE(services->empty());
}

TEST(RecordedHIDTemperatures, ClientFollowsTheClock) {
  const auto machine = machineOf(
      R"({"pace": "instant", "frames": [{"at": 0, "hid": [{"product": "A", "value": 40}]},
          {"at": 5, "hid": [{"product": "A", "value": 50}]}, {"at": 10, "hid": null}]})");
  const auto client = machine->hidTemperatures().open();
  EXPECT_EQ(client->copyServices()->front().value, 40.0);
  machine->clock().sleep(5);
  EXPECT_EQ(client->copyServices()->front().value, 50.0);
  machine->clock().sleep(5);
  EXPECT_FALSE(client->copyServices().has_value());
}

TEST(RecordedThermalReadings, ReadingsAreTheFrames) {
  const auto machine =
      machineWithFrame(R"("thermal": {"state": 9, "pressure": 2, "lowPowerMode": true})");
  EXPECT_EQ(machine->thermalReadings().thermalState(), 9);
  EXPECT_EQ(machine->thermalReadings().thermalPressure(), 2U);
  EXPECT_TRUE(machine->thermalReadings().isLowPowerModeEnabled());
}

TEST(RecordedThermalReadings, NullPressureIsAFailedNotification) {
  const auto machine = machineWithFrame(R"("thermal": {"state": 1, "pressure": null})");
  EXPECT_EQ(machine->thermalReadings().thermalState(), 1);
  EXPECT_EQ(machine->thermalReadings().thermalPressure(), std::nullopt);
  EXPECT_FALSE(machine->thermalReadings().isLowPowerModeEnabled());
}

TEST(RecordedThermalReadings, NullIsNominalWithoutPressureAndOff) {
  const auto machine = machineWithFrame(R"("thermal": null)");
  EXPECT_EQ(machine->thermalReadings().thermalState(), 0);
  EXPECT_EQ(machine->thermalReadings().thermalPressure(), 0U);
  EXPECT_FALSE(machine->thermalReadings().isLowPowerModeEnabled());
}

}  // namespace
}  // namespace quorvex
