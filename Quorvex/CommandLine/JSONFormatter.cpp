#include "JSONFormatter.h"

#include <algorithm>

#include "CheckedArithmetic.h"
#include "JSONFields.h"
#include "JSONWriter.h"
#include "PowerDiagnostics.h"
#include "Text.h"

namespace quorvex {

namespace {

/// Processes in the network part.
constexpr std::size_t topProcessLimit = 5;

/// The value rounded to an integer, half away from zero.
void writeRounded(JSONWriter& json, std::string_view name, double value) {
  json.field(name, checkedRound(value));
}

void writeBattery(JSONWriter& json, const BatteryInfo& info) {
  json.beginObject();
  json.field("acConnected", info.acConnected);
  writeOptional(json, "adapterWatts", info.adapterWatts);
  json.decimalField("amperage", info.amperage, fineDecimals);
  json.field("chargePercent", info.chargePercent);
  json.field("currentCapacity", info.currentCapacity);
  json.field("cycleCount", info.cycleCount);
  json.field("designCapacity", info.designCapacity);
  json.field("health", info.health);
  json.field("healthPercent", info.healthPercent);
  json.field("isCharging", info.isCharging);
  json.field("isFullyCharged", info.isFullyCharged);
  json.field("isInsufficientCharger", info.isInsufficientCharger());
  json.field("isPluggedInAndDraining", info.isPluggedInAndDraining());
  json.field("maxCapacity", info.maxCapacity);
  json.decimalField("temperature", info.temperature, wattDecimals);
  writeOptional(json, "timeRemaining", info.timeRemaining);
  if (info.timeRemainingKind) {
    json.field("timeRemainingKind", rawValue(*info.timeRemainingKind));
  }
  json.decimalField("voltage", info.voltage, fineDecimals);
  json.decimalField("wattage", info.wattage, wattDecimals);
  json.endObject();
}

void writeFans(JSONWriter& json, const std::vector<FanInfo>& fans) {
  json.beginArray();
  for (const auto& fan : fans) {
    json.beginObject();
    json.field("currentRPM", fan.currentRPM);
    json.field("id", fan.id);
    json.field("maxRPM", fan.maxRPM);
    json.field("minRPM", fan.minRPM);
    json.field("name", fan.name);
    json.endObject();
  }
  json.endArray();
}

void writeInterfaces(JSONWriter& json, const std::vector<NetworkInterfaceStats>& interfaces) {
  json.beginArray();
  for (const auto& interface : interfaces) {
    json.beginObject();
    json.decimalField("bytesInPerSec", interface.bytesInPerSec, rateDecimals);
    json.field("bytesInTotal", interface.bytesIn);
    json.decimalField("bytesOutPerSec", interface.bytesOutPerSec, rateDecimals);
    json.field("bytesOutTotal", interface.bytesOut);
    json.field("name", interface.name);
    json.endObject();
  }
  json.endArray();
}

void writeNetworkProcesses(JSONWriter& json, std::span<const NetworkProcessInfo> processes) {
  json.beginArray();
  for (const auto& process : processes) {
    json.beginObject();
    json.field("attributionSource", rawValue(process.attributionSource));
    json.decimalField("bytesInPerSec", process.bytesInPerSec, rateDecimals);
    json.field("bytesInTotal", process.bytesIn);
    json.decimalField("bytesOutPerSec", process.bytesOutPerSec, rateDecimals);
    json.field("bytesOutTotal", process.bytesOut);
    json.field("name", process.name);
    json.field("pid", process.id);
    json.endObject();
  }
  json.endArray();
}

/// The `network` part, key included, unless no interface has ever moved a byte.
void writeNetwork(JSONWriter& json, const NetworkSnapshot& network) {
  const auto active = network.activeInterfaces();
  if (active.empty()) {
    return;
  }
  json.key("network");
  json.beginObject();
  json.field("attributionSource", rawValue(network.attributionSource));
  writeOptional(json, "attributionUnavailableReason", network.attributionUnavailableReason);
  json.key("interfaces");
  writeInterfaces(json, active);
  if (const auto top = network.topProcesses(); !top.empty()) {
    json.key("topProcesses");
    writeNetworkProcesses(json, std::span{top}.first(std::min(top.size(), topProcessLimit)));
  }
  json.decimalField("totalBytesInPerSec", network.totalBytesInPerSec(), rateDecimals);
  json.decimalField("totalBytesOutPerSec", network.totalBytesOutPerSec(), rateDecimals);
  json.endObject();
}

void writePower(JSONWriter& json, const PowerMetrics& power) {
  json.beginObject();
  json.decimalField("anePower", power.anePower, wattDecimals);
  json.decimalField("cpuPower", power.cpuPower, wattDecimals);
  json.decimalField("cpuUsagePercent", power.cpuUsagePercent, wattDecimals);
  json.decimalField("gpuPower", power.gpuPower, wattDecimals);
  writeOptional(json, "gpuUsagePercent", power.gpuUsagePercent, wattDecimals);
  json.decimalField("ramPower", power.ramPower, wattDecimals);
  json.field("siliconChannelsComplete", power.siliconChannelsComplete);
  json.decimalField("systemPower", power.systemPower, wattDecimals);
  json.endObject();
}

void writePowerReadings(JSONWriter& json, const SystemPowerState& state) {
  json.beginObject();
  writeOptional(json, "batteryChargeInputWatts", state.batteryChargeInputWatts(), wattDecimals);
  writeOptional(json, "batteryDischargeWatts", state.batteryDischargeWatts(), wattDecimals);
  writeOptional(json, "batterySupplementWatts", state.batterySupplementWatts(), wattDecimals);
  writeOptional(json, "batteryTerminalWatts", state.batteryTerminalWatts(), wattDecimals);
  if (const auto reading = state.primaryPowerReading()) {
    json.key("primary");
    json.beginObject();
    json.field("confidence", rawValue(reading->confidence));
    json.field("kind", rawValue(reading->kind));
    json.field("label", reading->label);
    json.field("summary", reading->summary);
    json.decimalField("watts", reading->watts, wattDecimals);
    json.endObject();
  }
  writeOptional(json, "siliconWatts", state.siliconWatts(), wattDecimals);
  json.endObject();
}

void writeSensors(JSONWriter& json, const std::vector<TemperatureSensor>& sensors) {
  json.beginArray();
  for (const auto& sensor : sensors) {
    json.beginObject();
    json.field("key", sensor.key);
    json.field("name", sensor.name);
    json.decimalField("temperature", sensor.temperature, wattDecimals);
    json.endObject();
  }
  json.endArray();
}

void writeThermal(JSONWriter& json, const ThermalInfo& thermal) {
  json.beginObject();
  json.field("isLowPowerMode", thermal.isLowPowerMode);
  json.field("pressure", thermal.pressure);
  json.field("state", rawValue(thermal.state));
  json.endObject();
}

void writeProcessActivity(JSONWriter& json, std::span<const ProcessActivityInfo> activities) {
  json.beginObject();
  json.key("items");
  json.beginArray();
  for (const auto& activity : activities) {
    json.beginObject();
    json.decimalField("cpuPercent", activity.cpuPercent, wattDecimals);
    writeRounded(json, "diskBytesPerSecond", activity.diskBytesPerSecond);
    writeOptional(json, "energyWattsEstimate", activity.energyWattsEstimate, fineDecimals);
    json.decimalField("impactScore", activity.impactScore, wattDecimals);
    json.field("name", activity.name);
    json.field("pid", activity.pid);
    json.decimalField("wakeupsPerSecond", activity.wakeupsPerSecond, wattDecimals);
    json.endObject();
  }
  json.endArray();
  json.field("method", "proc_pid_rusage");
  json.field("note",
             "Best-effort contributor estimate from CPU time, wakeups, disk I/O, and any macOS "
             "energy counter available without sudo. Not exact per-process watts.");
  json.endObject();
}

void writePrivilegedProcess(JSONWriter& json, const ProProcessEnergy& process) {
  json.beginObject();
  writeOptional(json, "cpuTimePercent", process.cpuTimePercent, wattDecimals);
  if (process.diskBytesPerSecond) {
    writeRounded(json, "diskBytesPerSecond", *process.diskBytesPerSecond);
  }
  writeOptional(json, "energyImpact", process.energyImpact, wattDecimals);
  json.field("isAggregate", process.isAggregate);
  json.field("name", process.name);
  json.field("pid", process.pid);
  writeOptional(json, "wakeupsPerSecond", process.wakeupsPerSecond, wattDecimals);
  json.endObject();
}

void writePrivileged(JSONWriter& json, const ProTelemetrySnapshot& snapshot) {
  json.beginObject();
  writeOptional(json, "anePowerWatts", snapshot.anePowerWatts, wattDecimals);
  json.field("available", snapshot.isAvailable);
  writeOptional(json, "cpuPowerWatts", snapshot.cpuPowerWatts, wattDecimals);
  writeOptional(json, "error", snapshot.error);
  writeOptional(json, "gpuPowerWatts", snapshot.gpuPowerWatts, wattDecimals);
  json.key("processes");
  json.beginArray();
  for (const auto& process : snapshot.processes) {
    writePrivilegedProcess(json, process);
  }
  json.endArray();
  writeOptional(json, "rawSampleSummary", snapshot.rawSampleSummary);
  json.field("sampleIntervalMilliseconds", snapshot.sampleIntervalMilliseconds);
  json.field("sampledAt", iso8601(snapshot.sampledAt));
  json.field("source", snapshot.source);
  json.endObject();
}

/// The snapshot's keys, and among them, in their place, those of the report when there is one.
void writeState(JSONWriter& json, const SystemPowerState& state,
                const JSONFormatter::ReportContext* report) {
  json.beginObject();
  if (state.battery) {
    json.key("battery");
    writeBattery(json, *state.battery);
  }
  if (report != nullptr) {
    json.field("configuredRefreshInterval", report->refreshInterval);
  }
  if (!state.fans.empty()) {
    json.key("fans");
    writeFans(json, state.fans);
  }
  if (state.network) {
    writeNetwork(json, *state.network);
  }
  if (state.power) {
    json.key("power");
    writePower(json, *state.power);
  }
  if (report != nullptr) {
    json.key("powerDiagnostics");
    writePowerDiagnostics(json, state, *report);
  }
  json.key("powerReadings");
  writePowerReadings(json, state);
  if (report != nullptr) {
    if (report->proTelemetry) {
      json.key("proTelemetry");
      writePrivileged(json, *report->proTelemetry);
    }
    json.key("processActivity");
    writeProcessActivity(json, report->processActivities);
    json.field("reportGeneratedAt", iso8601(report->generatedAt));
  }
  if (!state.sensors.empty()) {
    json.key("sensors");
    writeSensors(json, state.sensors);
  }
  json.key("thermal");
  writeThermal(json, state.thermal);
  json.field("timestamp", iso8601(state.timestamp));
  json.endObject();
}

/// The document's text, or that of an empty one when it is no JSON.
std::string finish(JSONWriter& json) {
  if (!json.isValid() || !text::isValidUTF8(json.text())) {
    return "{}";
  }
  return json.takeText();
}

}  // namespace

std::string JSONFormatter::systemStateDict(const SystemPowerState& state) {
  JSONWriter json{JSONWriter::Style::pretty};
  writeState(json, state, nullptr);
  return finish(json);
}

std::string JSONFormatter::batteryDict(const BatteryInfo& info) {
  JSONWriter json{JSONWriter::Style::pretty};
  writeBattery(json, info);
  return finish(json);
}

std::string JSONFormatter::formatSystemReport(const SystemPowerState& state,
                                              const ReportContext& context) {
  JSONWriter json{JSONWriter::Style::pretty};
  writeState(json, state, &context);
  return finish(json);
}

}  // namespace quorvex
