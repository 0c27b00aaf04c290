// How the live records become their stored forms. Each conversion is a few copied fields, so that
// they stand together.

#include "ProcessActivityDTO.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {

namespace {

template <typename To, typename From>
std::vector<To> converted(const std::vector<From>& from) {
  std::vector<To> result;
  result.reserve(from.size());
  for (const From& item : from) {
    result.emplace_back(item);
  }
  return result;
}

template <typename To, typename From>
std::optional<To> converted(const std::optional<From>& from) {
  return from ? std::optional<To>{To{*from}} : std::nullopt;
}

}  // namespace

BatteryInfoDTO::BatteryInfoDTO(const BatteryInfo& info)
    : chargePercent(info.chargePercent),
      currentCapacity(info.currentCapacity),
      maxCapacity(info.maxCapacity),
      designCapacity(info.designCapacity),
      healthPercent(info.healthPercent),
      cycleCount(info.cycleCount),
      voltage(info.voltage),
      amperage(info.amperage),
      wattage(info.wattage),
      temperature(info.temperature),
      isCharging(info.isCharging),
      isFullyCharged(info.isFullyCharged),
      acConnected(info.acConnected),
      adapterWatts(info.adapterWatts),
      timeRemaining(info.timeRemaining),
      health(info.health),
      isPluggedInAndDraining(info.isPluggedInAndDraining()) {
  if (info.timeRemainingKind) {
    timeRemainingKind = rawValue(*info.timeRemainingKind);
  }
}

PowerMetricsDTO::PowerMetricsDTO(const PowerMetrics& metrics)
    : cpuPower(metrics.cpuPower),
      gpuPower(metrics.gpuPower),
      anePower(metrics.anePower),
      ramPower(metrics.ramPower),
      systemPower(metrics.systemPower),
      cpuUsagePercent(metrics.cpuUsagePercent),
      gpuUsagePercent(metrics.gpuUsagePercent),
      siliconChannelsComplete(metrics.siliconChannelsComplete) {}

ThermalInfoDTO::ThermalInfoDTO(const ThermalInfo& info)
    : state(rawValue(info.state)), pressure(info.pressure), isLowPowerMode(info.isLowPowerMode) {}

FanInfoDTO::FanInfoDTO(const FanInfo& info)
    : id(info.id),
      name(info.name),
      currentRPM(info.currentRPM),
      minRPM(info.minRPM),
      maxRPM(info.maxRPM) {}

ProcessActivityDTO::ProcessActivityDTO(const ProcessActivityInfo& info)
    : pid(info.pid),
      name(info.name),
      cpuPercent(info.cpuPercent),
      wakeupsPerSecond(info.wakeupsPerSecond),
      diskBytesPerSecond(info.diskBytesPerSecond),
      energyWattsEstimate(info.energyWattsEstimate),
      impactScore(info.impactScore),
      confidence("estimated") {}

NetworkInterfaceStatsDTO::NetworkInterfaceStatsDTO(const NetworkInterfaceStats& stats)
    : id(stats.id),
      name(stats.name),
      bytesIn(stats.bytesIn),
      bytesOut(stats.bytesOut),
      bytesInPerSec(stats.bytesInPerSec),
      bytesOutPerSec(stats.bytesOutPerSec) {}

NetworkProcessInfoDTO::NetworkProcessInfoDTO(const NetworkProcessInfo& info)
    : pid(info.id),
      name(info.name),
      bytesIn(info.bytesIn),
      bytesOut(info.bytesOut),
      bytesInPerSec(info.bytesInPerSec),
      bytesOutPerSec(info.bytesOutPerSec),
      attributionSource(rawValue(info.attributionSource)) {}

NetworkSnapshotDTO::NetworkSnapshotDTO(const NetworkSnapshot& snapshot)
    : interfaces(converted<NetworkInterfaceStatsDTO>(snapshot.interfaces)),
      processes(converted<NetworkProcessInfoDTO>(snapshot.processes)),
      attributionSource(rawValue(snapshot.attributionSource)),
      attributionUnavailableReason(snapshot.attributionUnavailableReason),
      totalBytesInPerSec(snapshot.totalBytesInPerSec()),
      totalBytesOutPerSec(snapshot.totalBytesOutPerSec()) {}

SystemPowerStateDTO::SystemPowerStateDTO(const SystemPowerState& state)
    : battery(converted<BatteryInfoDTO>(state.battery)),
      power(converted<PowerMetricsDTO>(state.power)),
      thermal(state.thermal),
      fans(converted<FanInfoDTO>(state.fans)),
      sensors(state.sensors),
      timestamp(state.timestamp),
      unattributedPower(state.unattributedPower()),
      displayAndOtherPower(unattributedPower),
      batteryTerminalWatts(state.batteryTerminalWatts()),
      batteryDischargeWatts(state.batteryDischargeWatts()),
      batteryChargeInputWatts(state.batteryChargeInputWatts()),
      batterySupplementWatts(state.batterySupplementWatts()),
      siliconWatts(state.siliconWatts()),
      totalWattsConfidence("unavailable"),
      network(converted<NetworkSnapshotDTO>(state.network)) {
  if (const auto reading = state.primaryPowerReading()) {
    powerSourceKind = rawValue(reading->kind);
    powerSourceLabel = reading->label;
    powerSourceSummary = reading->summary;
    totalWatts = reading->watts;
    totalWattsConfidence = rawValue(reading->confidence);
  }
}

}  // namespace quorvex
