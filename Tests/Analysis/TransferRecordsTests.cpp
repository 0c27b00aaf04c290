#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PowerSessionCoders.h"
#include "ProcessActivityDTO.h"
#include "SampleRecords.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

std::string written(const SystemPowerStateDTO& dto) {
  return *PowerSessionCoders::encoder().encode(dto);
}

TEST(SystemPowerStateDTOTests, WithoutAPrimaryReadingOnlyTheConfidenceIsWritten) {
  const SystemPowerStateDTO dto{SystemPowerState{}};
  EXPECT_EQ(dto.totalWattsConfidence, "unavailable");
  EXPECT_EQ(dto.powerSourceKind, std::nullopt);
  EXPECT_EQ(dto.powerSourceLabel, std::nullopt);
  EXPECT_EQ(dto.powerSourceSummary, std::nullopt);
  EXPECT_EQ(dto.totalWatts, std::nullopt);
  EXPECT_EQ(written(dto),
            R"({"fans":[],"sensors":[],"thermal":{"isLowPowerMode":false,"pressure":0,)"
            R"("state":"nominal"},"timestamp":"1970-01-01T00:00:00Z",)"
            R"("totalWattsConfidence":"unavailable"})");
}

TEST(SystemPowerStateDTOTests, OnACWithoutBatteryMovementTheTerminalWattsAreZeroAndTheRestAbsent) {
  SystemPowerState state;
  state.battery = samples::batteryAt(0.0);
  state.battery->acConnected = true;
  state.power = samples::silicon(4.0);
  const SystemPowerStateDTO dto{state};
  EXPECT_EQ(dto.batteryTerminalWatts, 0.0);
  EXPECT_EQ(dto.batteryDischargeWatts, std::nullopt);
  EXPECT_EQ(dto.batteryChargeInputWatts, std::nullopt);
  EXPECT_EQ(dto.batterySupplementWatts, std::nullopt);
  EXPECT_EQ(dto.unattributedPower, std::nullopt);
  EXPECT_EQ(dto.displayAndOtherPower, std::nullopt);
  EXPECT_EQ(dto.siliconWatts, 4.0);
  EXPECT_EQ(dto.powerSourceKind, "ioReportSiliconPower");
  EXPECT_EQ(dto.powerSourceLabel, "IOReport silicon power");
  EXPECT_EQ(dto.powerSourceSummary, "CPU/GPU/ANE/DRAM energy model");
  EXPECT_EQ(dto.totalWatts, 4.0);
  EXPECT_EQ(dto.totalWattsConfidence, "ioReport");
  EXPECT_THAT(written(dto), HasSubstr(R"("batteryTerminalWatts":0,)"));
  EXPECT_THAT(written(dto), Not(HasSubstr("displayAndOtherPower")));
}

TEST(SystemPowerStateDTOTests, DisplayAndOtherPowerEqualsUnattributedPower) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-12.5);
  state.power = samples::silicon(4.0);
  const SystemPowerStateDTO dto{state};
  // 12.5 W drawn at the battery less 4 W of silicon.
  EXPECT_EQ(dto.unattributedPower, 8.5);
  EXPECT_EQ(dto.displayAndOtherPower, 8.5);
  EXPECT_EQ(dto.batteryDischargeWatts, 12.5);
  EXPECT_EQ(dto.batteryTerminalWatts, -12.5);
  EXPECT_EQ(dto.powerSourceKind, "batteryDischarge");
  EXPECT_EQ(dto.totalWatts, 12.5);
  EXPECT_EQ(dto.totalWattsConfidence, "batteryTerminal");
}

TEST(SystemPowerStateDTOTests, OneWattExactlyOnACIsASupplementAndNotDraining) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-1.0);
  state.battery->acConnected = true;
  const SystemPowerStateDTO dto{state};
  EXPECT_FALSE(dto.battery->isPluggedInAndDraining);
  EXPECT_EQ(dto.batterySupplementWatts, 1.0);
  EXPECT_EQ(dto.powerSourceKind, "batterySupplement");
}

TEST(SystemPowerStateDTOTests, MoreThanOneWattOnACIsDrainingUnlessFull) {
  BatteryInfo battery = samples::batteryAt(-1.01);
  battery.acConnected = true;
  EXPECT_TRUE(BatteryInfoDTO{battery}.isPluggedInAndDraining);
  battery.isFullyCharged = true;
  EXPECT_FALSE(BatteryInfoDTO{battery}.isPluggedInAndDraining);
}

TEST(SystemPowerStateDTOTests, ChargingIsNamedByItsInput) {
  SystemPowerState state;
  state.battery = samples::batteryAt(20.0);
  state.battery->isCharging = true;
  const SystemPowerStateDTO dto{state};
  EXPECT_EQ(dto.batteryChargeInputWatts, 20.0);
  EXPECT_EQ(dto.powerSourceKind, "batteryChargeInput");
}

TEST(SystemPowerStateDTOTests, TheSerialNumberIsNowhere) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-5.0);
  state.battery->serialNumber = "F5D12345ABCD";
  const std::string json = written(SystemPowerStateDTO{state});
  EXPECT_THAT(json, Not(HasSubstr("F5D12345ABCD")));
  EXPECT_THAT(json, Not(HasSubstr("serialNumber")));
}

TEST(SystemPowerStateDTOTests, ANetworkWithoutRowsGivesTwoEmptyArraysAndTotalsOfZero) {
  SystemPowerState state;
  state.network = NetworkSnapshot{.attributionSource = NetworkAttributionSource::nettop};
  const SystemPowerStateDTO dto{state};
  EXPECT_THAT(dto.network->interfaces, IsEmpty());
  EXPECT_THAT(dto.network->processes, IsEmpty());
  EXPECT_EQ(dto.network->attributionSource, "nettop");
  EXPECT_EQ(dto.network->totalBytesInPerSec, 0.0);
  EXPECT_EQ(dto.network->totalBytesOutPerSec, 0.0);
  EXPECT_THAT(written(dto),
              HasSubstr(R"("network":{"attributionSource":"nettop","interfaces":[],)"
                        R"("processes":[],"totalBytesInPerSec":0,"totalBytesOutPerSec":0})"));
}

TEST(NetworkSnapshotDTOTests, RowsAreCopiedInOrderAndTotalsLeaveOutLoopback) {
  NetworkSnapshot snapshot;
  snapshot.interfaces = {samples::interface(1, "lo0", 9, 9, 900.0, 900.0),
                         samples::interface(4, "en0", 10, 20, 1.5, 2.5),
                         samples::interface(7, "utun3", 30, 40, 0.25, 0.5)};
  snapshot.processes = {{.id = 312,
                         .name = "Safari",
                         .bytesIn = 5,
                         .bytesOut = 6,
                         .bytesInPerSec = 0.5,
                         .bytesOutPerSec = 0.75,
                         .attributionSource = NetworkAttributionSource::nettop},
                        {.id = 1, .name = "launchd"}};
  snapshot.attributionUnavailableReason = "why";
  const NetworkSnapshotDTO dto{snapshot};
  ASSERT_THAT(dto.interfaces, SizeIs(3));
  EXPECT_EQ(dto.interfaces[1].id, 4);
  EXPECT_EQ(dto.interfaces[1].name, "en0");
  EXPECT_EQ(dto.interfaces[1].bytesIn, 10U);
  EXPECT_EQ(dto.interfaces[1].bytesOut, 20U);
  EXPECT_EQ(dto.interfaces[1].bytesInPerSec, 1.5);
  EXPECT_EQ(dto.interfaces[1].bytesOutPerSec, 2.5);
  ASSERT_THAT(dto.processes, SizeIs(2));
  EXPECT_EQ(dto.processes[0].pid, 312);
  EXPECT_EQ(dto.processes[0].name, "Safari");
  EXPECT_EQ(dto.processes[0].attributionSource, "nettop");
  EXPECT_EQ(dto.processes[1].attributionSource, "none");
  EXPECT_EQ(dto.attributionUnavailableReason, "why");
  EXPECT_EQ(dto.totalBytesInPerSec, 1.5 + 0.25);
  EXPECT_EQ(dto.totalBytesOutPerSec, 2.5 + 0.5);
}

TEST(BatteryInfoDTOTests, EveryFieldIsCopied) {
  BatteryInfo info = samples::batteryAt(-9.0);
  info.isCharging = true;
  info.isFullyCharged = true;
  info.acConnected = true;
  info.adapterWatts = 96;
  info.timeRemaining = 45;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  const BatteryInfoDTO dto{info};
  EXPECT_EQ(dto.chargePercent, info.chargePercent);
  EXPECT_EQ(dto.currentCapacity, info.currentCapacity);
  EXPECT_EQ(dto.maxCapacity, info.maxCapacity);
  EXPECT_EQ(dto.designCapacity, info.designCapacity);
  EXPECT_EQ(dto.healthPercent, info.healthPercent);
  EXPECT_EQ(dto.cycleCount, info.cycleCount);
  EXPECT_EQ(dto.voltage, info.voltage);
  EXPECT_EQ(dto.amperage, info.amperage);
  EXPECT_EQ(dto.wattage, -9.0);
  EXPECT_EQ(dto.temperature, info.temperature);
  EXPECT_TRUE(dto.isCharging);
  EXPECT_TRUE(dto.isFullyCharged);
  EXPECT_TRUE(dto.acConnected);
  EXPECT_EQ(dto.adapterWatts, 96);
  EXPECT_EQ(dto.timeRemaining, 45);
  EXPECT_EQ(dto.timeRemainingKind, "untilFull");
  EXPECT_EQ(dto.health, "Good");
}

TEST(BatteryInfoDTOTests, TheKindOfTheTimeIsAbsentWhenTheBatterysIs) {
  EXPECT_EQ(BatteryInfoDTO{samples::battery()}.timeRemainingKind, std::nullopt);
}

TEST(PowerMetricsDTOTests, EveryFieldIsCopied) {
  const PowerMetrics metrics{.cpuPower = 1,
                             .gpuPower = 2,
                             .anePower = 3,
                             .ramPower = 4,
                             .systemPower = 10,
                             .cpuUsagePercent = 55,
                             .gpuUsagePercent = 66,
                             .siliconChannelsComplete = true};
  const PowerMetricsDTO dto{metrics};
  EXPECT_EQ(dto.cpuPower, 1);
  EXPECT_EQ(dto.gpuPower, 2);
  EXPECT_EQ(dto.anePower, 3);
  EXPECT_EQ(dto.ramPower, 4);
  EXPECT_EQ(dto.systemPower, 10);
  EXPECT_EQ(dto.cpuUsagePercent, 55);
  EXPECT_EQ(dto.gpuUsagePercent, 66);
  EXPECT_TRUE(dto.siliconChannelsComplete);
}

TEST(ThermalInfoDTOTests, TheStateIsItsText) {
  const ThermalInfoDTO dto{
      ThermalInfo{.state = ThermalState::serious, .pressure = 3, .isLowPowerMode = true}};
  EXPECT_EQ(dto.state, "serious");
  EXPECT_EQ(dto.pressure, 3);
  EXPECT_TRUE(dto.isLowPowerMode);
}

TEST(FanInfoDTOTests, EveryFieldIsCopied) {
  const FanInfoDTO dto{
      FanInfo{.id = 1, .name = "Right", .currentRPM = 2000, .minRPM = 1200, .maxRPM = 6000}};
  EXPECT_EQ(dto.id, 1);
  EXPECT_EQ(dto.name, "Right");
  EXPECT_EQ(dto.currentRPM, 2000);
  EXPECT_EQ(dto.minRPM, 1200);
  EXPECT_EQ(dto.maxRPM, 6000);
}

TEST(ProcessActivityDTOTests, EveryFieldIsCopiedAndTheConfidenceIsEstimated) {
  const ProcessActivityDTO dto{ProcessActivityInfo{77, "Xcode", 120.5, 30.25, 4096.0, 1.5, 140.0}};
  EXPECT_EQ(dto.pid, 77);
  EXPECT_EQ(dto.name, "Xcode");
  EXPECT_EQ(dto.cpuPercent, 120.5);
  EXPECT_EQ(dto.wakeupsPerSecond, 30.25);
  EXPECT_EQ(dto.diskBytesPerSecond, 4096.0);
  EXPECT_EQ(dto.energyWattsEstimate, 1.5);
  EXPECT_EQ(dto.impactScore, 140.0);
  EXPECT_EQ(dto.confidence, "estimated");
}

}  // namespace
}  // namespace quorvex
