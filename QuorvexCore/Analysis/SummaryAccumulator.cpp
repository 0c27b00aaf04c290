#include "SummaryAccumulator.h"

#include <algorithm>
#include <string>

#include "PercentChange.h"
#include "PowerSessionMetrics.h"
#include "SessionEnergy.h"

namespace quorvex {

namespace {

/// A peak that did not rise above 0 is none.
template <typename Value>
void raisePeak(std::optional<Value>& peak, std::optional<Value> value) {
  if (value && *value > peak.value_or(Value{0})) {
    peak = value;
  }
}

}  // namespace

SummaryAccumulator::SummaryAccumulator(std::optional<double> maxSampleGap)
    : maxSampleGap_(maxSampleGap),
      energy_(maxSampleGap),
      segments_(maxSampleGap),
      networkTotals_(maxSampleGap),
      networkApps_(maxSampleGap) {}

void SummaryAccumulator::ingest(const PowerSamplePoint& point, const SampleColumns& columns) {
  ++sampleCount_;
  segments_.ingest(point);
  if (point.watts) {
    const double watts = *point.watts;
    ++wattSampleCount_;
    wattSum_ += watts;
    minWatts_ = std::min(minWatts_.value_or(watts), watts);
    maxWatts_ = std::max(maxWatts_.value_or(watts), watts);
    energy_.ingest({point.timestamp, watts});
  }
  if (columns.batteryPercent) {
    batteryPercentStart_ = batteryPercentStart_.value_or(*columns.batteryPercent);
    batteryPercentEnd_ = columns.batteryPercent;
  }
  maxThermalPressure_ = std::max(maxThermalPressure_, columns.thermalPressure);
  raisePeak(maxTemperature_, columns.maxTemperature);
  raisePeak(maxFanRPM_, columns.maxFanRPM);
}

void SummaryAccumulator::ingest(const Observation& observation) {
  ingest(PowerSessionMetrics::storedPowerPoint(observation), observation.columns);
  if (observation.snapshot && observation.snapshot->network) {
    const ObservedNetwork& network = *observation.snapshot->network;
    const Date timestamp = observation.columns.timestamp;
    networkTotals_.ingest(network.totalBytesInPerSec, network.totalBytesOutPerSec, timestamp);
    networkApps_.ingest(network, timestamp);
  }
  contributors_.add(observation);
}

void SummaryAccumulator::ingestNetwork(const NetworkSnapshot& network, Date timestamp) {
  networkTotals_.ingest(network.totalBytesInPerSec(), network.totalBytesOutPerSec(), timestamp);
  networkApps_.ingest(network.processes, rawValue(network.attributionSource), timestamp);
}

void SummaryAccumulator::ingestContributors(std::span<const ProProcessEnergy> processes) {
  for (const ProProcessEnergy& process : processes) {
    contributors_.addPrivileged(process.name,
                                PowerSessionMetrics::contributorScore(process).value_or(0.0));
  }
}

void SummaryAccumulator::ingestActivities(std::span<const ProcessActivityInfo> rows) {
  for (const ProcessActivityInfo& row : rows) {
    contributors_.addActivity(row.name, row.impactScore);
  }
}

PowerSessionSummary SummaryAccumulator::materialize(double durationSeconds,
                                                    std::optional<double> totalWattHours) const {
  PowerSessionSummary summary;
  summary.durationSeconds = durationSeconds;
  summary.sampleCount = sampleCount_;
  summary.wattSampleCount = wattSampleCount_;
  summary.minWatts = minWatts_;
  summary.maxWatts = maxWatts_;
  summary.powerSegments = segments_.materialize();
  const SessionEnergy energy = sessionEnergy({.sampleCount = wattSampleCount_,
                                              .sum = wattSum_,
                                              .totalWattHours = totalWattHours,
                                              .hasGap = energy_.hasGap(),
                                              .durationSeconds = durationSeconds},
                                             summary.powerSegments);
  summary.averageWatts = energy.averageWatts;
  summary.averageWattsNote = energy.note;
  summary.totalWattHours = energy.totalWattHours;
  summary.totalWattHoursNote = energy.note;
  summary.batteryPercentStart = batteryPercentStart_;
  summary.batteryPercentEnd = batteryPercentEnd_;
  if (batteryPercentStart_) {
    summary.batteryPercentDelta = percentChange(*batteryPercentStart_, *batteryPercentEnd_);
  }
  summary.maxThermalPressure = maxThermalPressure_;
  summary.maxTemperature = maxTemperature_;
  summary.maxFanRPM = maxFanRPM_;
  summary.topContributors = contributors_.top(PowerSessionMetrics::topCount);
  summary.topNetworkApps = networkApps_.materialize(PowerSessionMetrics::topCount);
  summary.totalBytesIn = networkTotals_.totalBytesIn();
  summary.totalBytesOut = networkTotals_.totalBytesOut();
  summary.peakBytesInPerSec = networkTotals_.peakBytesInPerSec();
  summary.peakBytesOutPerSec = networkTotals_.peakBytesOutPerSec();
  summary.networkSummary = {.totalBytesIn = summary.totalBytesIn,
                            .totalBytesOut = summary.totalBytesOut,
                            .topMovers = summary.topNetworkApps,
                            .note = std::string{PowerSessionNetworkSummary::observedNote}};
  return summary;
}

}  // namespace quorvex
