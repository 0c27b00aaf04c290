#pragma once

#include <fmt/format.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Observation.h"
#include "PowerSessionCoders.h"
#include "ProcessActivityDTO.h"
#include "SystemPowerStateDTO.h"

namespace quorvex::benchmarks {

/// One sample of a generated session and the bytes that its blobs lie in.
struct GeneratedSample {
  SampleColumns columns;
  std::string snapshotData;
  std::optional<std::string> processActivityData;

  [[nodiscard]] StoredSample stored() const {
    return {.columns = columns,
            .snapshotData = snapshotData,
            .processActivityData = processActivityData,
            .proTelemetryData = std::nullopt};
  }
};

/// The state of a well equipped laptop at second `second` of a session on battery: 24 temperature
/// sensors, 6 interfaces, 2 fans, battery and silicon, with as many digits as real readings have.
inline SystemPowerState generatedState(std::size_t second, bool withProcesses) {
  const auto wave = [second](double from, double to, double period) {
    return from + (to - from) * (0.5 + 0.5 * std::sin(static_cast<double>(second) / period));
  };
  SystemPowerState state;
  state.timestamp = Date{std::chrono::seconds{1'769'850'000 + static_cast<std::int64_t>(second)}};
  const double voltage = std::round(wave(11.4, 12.6, 900.0) * 1000.0) / 1000.0;
  const double amperage = -std::round(wave(0.4, 2.2, 60.0) * 1000.0) / 1000.0;
  state.battery =
      BatteryInfo{.chargePercent = static_cast<std::int64_t>(90 - second / 300 % 80),
                  .currentCapacity = static_cast<std::int64_t>(5400 - second / 5 % 5000),
                  .maxCapacity = 6012,
                  .designCapacity = 6249,
                  .healthPercent = 96,
                  .cycleCount = 121,
                  .voltage = voltage,
                  .amperage = amperage,
                  .wattage = voltage * amperage,
                  .temperature = 30.41,
                  .timeRemaining = 243,
                  .timeRemainingKind = BatteryTimeRemainingKind::untilEmpty,
                  .health = "Good",
                  .serialNumber = std::nullopt};
  const double cpu = wave(0.3, 4.0, 7.0);
  const double gpu = wave(0.05, 1.5, 11.0);
  const double ane = wave(0.0, 0.2, 13.0);
  const double ram = wave(0.1, 0.6, 17.0);
  state.power = PowerMetrics{.cpuPower = cpu,
                             .gpuPower = gpu,
                             .anePower = ane,
                             .ramPower = ram,
                             .systemPower = cpu + gpu + ane + ram,
                             .siliconChannelsComplete = true};
  for (std::int64_t i = 0; i < 2; ++i) {
    state.fans.push_back({.id = i,
                          .name = i == 0 ? "Left Fan" : "Right Fan",
                          .currentRPM = static_cast<std::int64_t>(wave(1400.0, 4200.0, 90.0)) + i,
                          .minRPM = 1350,
                          .maxRPM = 5950});
  }
  for (int i = 0; i < 24; ++i) {
    state.sensors.push_back({.key = fmt::format("Tp{:02}", i),
                             .name = fmt::format("CPU Performance Core {}", i + 1),
                             .temperature = wave(38.0 + i, 80.0, 30.0 + i)});
  }
  NetworkSnapshot network;
  for (std::int64_t i = 0; i < 6; ++i) {
    const auto bytes = static_cast<std::uint64_t>(second) * 1'234'567 +
                       static_cast<std::uint64_t>(i) * 987'654'321;
    network.interfaces.push_back({.id = i + 4,
                                  .name = i < 4 ? fmt::format("en{}", i) : fmt::format("utun{}", i),
                                  .bytesIn = bytes,
                                  .bytesOut = bytes / 7,
                                  .bytesInPerSec = i < 2 ? wave(10.0, 2e6, 23.0) : 0.0,
                                  .bytesOutPerSec = i < 2 ? wave(5.0, 3e5, 29.0) : 0.0});
  }
  if (withProcesses) {
    network.attributionSource = NetworkAttributionSource::nettop;
    for (std::int32_t i = 0; i < 8; ++i) {
      const auto bytes = static_cast<std::uint64_t>(second) * 54'321;
      network.processes.push_back({.id = 300 + i,
                                   .name = fmt::format("com.example.agent.{}", i),
                                   .bytesIn = bytes,
                                   .bytesOut = bytes / 3,
                                   .bytesInPerSec = wave(0.0, 2e5, 31.0),
                                   .bytesOutPerSec = wave(0.0, 2e4, 37.0),
                                   .attributionSource = NetworkAttributionSource::nettop});
    }
  }
  state.network = network;
  return state;
}

/// `count` samples, one a second; process rows in every fifth.
inline std::vector<GeneratedSample> generatedSession(std::size_t count) {
  const auto encoder = PowerSessionCoders::encoder();
  std::vector<GeneratedSample> samples;
  for (std::size_t second = 0; second < count; ++second) {
    const bool withProcesses = second % 5 == 0;
    const SystemPowerStateDTO dto{generatedState(second, withProcesses)};
    GeneratedSample sample;
    sample.columns = {.timestamp = dto.timestamp,
                      .elapsedSeconds = static_cast<double>(second),
                      .totalWatts = dto.totalWatts,
                      .batteryPercent = dto.battery->chargePercent,
                      .acConnected = dto.battery->acConnected,
                      .thermalPressure = 0,
                      .maxFanRPM = dto.fans.back().currentRPM,
                      .maxTemperature = 80.0};
    sample.snapshotData = *encoder.encode(dto);
    if (withProcesses) {
      std::vector<ProcessActivityDTO> rows(5);
      for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].pid = static_cast<std::int32_t>(500 + i);
        rows[i].name = fmt::format("Application {}", (second / 5 + i) % 40);
        rows[i].cpuPercent = 100.0 / static_cast<double>(3 + i);
        rows[i].wakeupsPerSecond = 1000.0 / static_cast<double>(7 + i);
        rows[i].diskBytesPerSecond = 1e6 / static_cast<double>(3 + i);
        rows[i].impactScore = 100.0 / static_cast<double>(3 + i) + 10.0;
        rows[i].confidence = "estimated";
      }
      sample.processActivityData = *encoder.encode(rows);
    }
    samples.push_back(std::move(sample));
  }
  return samples;
}

}  // namespace quorvex::benchmarks
