#include "PowerDiagnostics.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "JSONFields.h"
#include "PowerSourceDescription.h"

namespace quorvex {

namespace {

/// Differences up to this many watts are noise of one steady value.
constexpr double unchangedTolerance = 0.05;

void writeCharger(JSONWriter& json, const BatteryInfo& battery) {
  const auto minimumLoad = battery.minimumObservedSystemLoadWatts();
  json.beginObject();
  json.field("acConnected", battery.acConnected);
  writeOptional(json, "adapterRatingWatts", battery.adapterWatts);
  if (minimumLoad) {
    json.decimalField("batterySupplementWatts", std::abs(battery.wattage), wattDecimals);
  }
  json.field("chargerOvercomingCurrentLoad", battery.chargerOvercomingCurrentLoad());
  json.field("isPluggedInAndDraining", battery.isPluggedInAndDraining());
  if (minimumLoad) {
    json.field("minimumObservedSystemLoadNote",
               "Adapter watts is the reported adapter rating, not guaranteed delivered power.");
    json.decimalField("minimumObservedSystemLoadWatts", *minimumLoad, wattDecimals);
  }
  json.decimalField("netBatteryWatts", battery.wattage, wattDecimals);
  json.field("note",
             "Negative net battery watts while AC is connected means the system is supplementing "
             "charger input from the battery.");
  json.endObject();
}

void writeIOReport(JSONWriter& json, const std::optional<PowerMetrics>& power) {
  json.beginObject();
  if (power) {
    json.decimalField("anePower", power->anePower, wattDecimals);
    json.field("available", true);
    json.decimalField("cpuPower", power->cpuPower, wattDecimals);
    json.decimalField("gpuPower", power->gpuPower, wattDecimals);
    json.decimalField("ramPower", power->ramPower, wattDecimals);
    json.decimalField("systemPower", power->systemPower, wattDecimals);
  } else {
    json.field("available", false);
    json.field("unavailableReason", "No CPU/GPU/ANE/DRAM energy channels returned for this sample");
  }
  json.endObject();
}

void writeRawBattery(JSONWriter& json, const BatteryInfo& battery) {
  json.beginObject();
  json.decimalField("amperage", battery.amperage, fineDecimals);
  json.field("calculation", "voltage * amperage");
  json.decimalField("voltage", battery.voltage, fineDecimals);
  json.decimalField("wattage", battery.wattage, wattDecimals);
  json.endObject();
}

/// The `powerHistory` part, key included, unless no sample has a total.
void writePowerHistory(JSONWriter& json, std::span<const SystemPowerState> history) {
  bool isStarted = false;
  for (const auto& sample : history) {
    const auto watts = totalWatts(sample);
    if (!watts) {
      continue;
    }
    if (!isStarted) {
      json.key("powerHistory");
      json.beginArray();
      isStarted = true;
    }
    json.beginObject();
    json.field("sourceKind", powerSourceKind(sample));
    json.field("sourceLabel", powerSourceLabel(sample));
    json.field("timestamp", iso8601(sample.timestamp));
    json.decimalField("watts", *watts, wattDecimals);
    json.endObject();
  }
  if (isStarted) {
    json.endArray();
  }
}

}  // namespace

void writePowerDiagnostics(JSONWriter& json, const SystemPowerState& state,
                           const JSONFormatter::ReportContext& context) {
  const PowerSourceInfo source = powerSourceInfo(state);
  const auto unattributed = state.unattributedPower();
  json.beginObject();
  if (state.battery) {
    json.key("charger");
    writeCharger(json, *state.battery);
  }
  json.field("configuredRefreshInterval", context.refreshInterval);
  writeOptional(json, "displayAndOtherPower", unattributed, wattDecimals);
  json.field("historySampleCount", context.history.size());
  json.key("ioReport");
  writeIOReport(json, state.power);
  writePowerHistory(json, context.history);
  if (state.battery) {
    json.key("rawBattery");
    writeRawBattery(json, *state.battery);
  }
  json.decimalField("sampleAgeSeconds",
                    std::max(0.0, secondsBetween(state.timestamp, context.generatedAt)),
                    wattDecimals);
  if (unattributed) {
    json.field("siliconChannelsComplete", state.siliconChannelsComplete());
  }
  json.field("sourceKind", source.kind);
  json.field("sourceLabel", source.label);
  json.field("sourceSummary", source.summary);
  writeOptional(json, "totalWatts", totalWatts(state), wattDecimals);
  writeOptional(json, "unattributedPower", unattributed, wattDecimals);
  writeOptional(json, "valueUnchangedSeconds",
                valueUnchangedSeconds(state, context.history, context.generatedAt), wattDecimals);
  json.endObject();
}

std::optional<double> valueUnchangedSeconds(const SystemPowerState& state,
                                            std::span<const SystemPowerState> history,
                                            Date generatedAt) {
  const auto current = totalWatts(state);
  if (!current) {
    return std::nullopt;
  }
  std::optional<Date> firstTimestamp;
  std::optional<Date> lastChange;
  std::optional<double> previous;
  const auto differs = [&](double watts) {
    return previous && std::abs(*previous - watts) > unchangedTolerance;
  };
  for (const auto& sample : history) {
    const auto watts = totalWatts(sample);
    if (!watts) {
      continue;
    }
    if (!firstTimestamp) {
      firstTimestamp = sample.timestamp;
    }
    if (differs(*watts)) {
      lastChange = sample.timestamp;
    }
    previous = watts;
  }
  if (differs(*current)) {
    lastChange = state.timestamp;
  }
  const Date anchor = lastChange.value_or(firstTimestamp.value_or(state.timestamp));
  return std::max(0.0, secondsBetween(anchor, generatedAt));
}

}  // namespace quorvex
