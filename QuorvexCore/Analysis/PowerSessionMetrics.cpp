#include "PowerSessionMetrics.h"

#include <cstdint>
#include <utility>

#include "ContributorScores.h"
#include "NetworkAppUsageAccumulator.h"
#include "NetworkTotalsAccumulator.h"
#include "PercentChange.h"
#include "PowerSessionAnalysis.h"
#include "SessionEnergy.h"

namespace quorvex::PowerSessionMetrics {

namespace {

constexpr std::string_view unavailable = "unavailable";
constexpr std::string_view unavailableLabel = "Unavailable";
constexpr std::string_view batteryIdleLabel = "On AC, battery idle";

bool isEarlier(const Observation& left, const Observation& right) {
  return left.columns.timestamp < right.columns.timestamp;
}

/// The kind of a snapshot that was stored without one.
std::optional<PowerReadingKind> inferredKind(const ObservedSnapshot& snapshot) {
  if (snapshot.battery) {
    const ObservedBattery& battery = *snapshot.battery;
    if (battery.wattage < 0.0) {
      return battery.acConnected ? PowerReadingKind::batterySupplement
                                 : PowerReadingKind::batteryDischarge;
    }
    if (battery.isCharging && battery.wattage > 0.0) {
      return PowerReadingKind::batteryChargeInput;
    }
  }
  return snapshot.systemPower ? std::optional{PowerReadingKind::ioReportSiliconPower}
                              : std::nullopt;
}

std::string_view inferredLabel(const ObservedSnapshot& snapshot) {
  if (const auto kind = inferredKind(snapshot)) {
    return readingLabel(*kind);
  }
  return snapshot.battery && snapshot.battery->acConnected ? batteryIdleLabel : unavailableLabel;
}

/// A peak that did not rise above 0 is none.
template <typename Value>
void raisePeak(std::optional<Value>& peak, std::optional<Value> value) {
  if (value && *value > peak.value_or(Value{0})) {
    peak = value;
  }
}

/// What the columns tell, in one pass.
void summariseColumns(std::span<const Observation> observations, PowerSessionSummary& summary) {
  for (const Observation& observation : observations) {
    const SampleColumns& columns = observation.columns;
    if (columns.batteryPercent) {
      summary.batteryPercentStart = summary.batteryPercentStart.value_or(*columns.batteryPercent);
      summary.batteryPercentEnd = columns.batteryPercent;
    }
    summary.maxThermalPressure = std::max(summary.maxThermalPressure, columns.thermalPressure);
    raisePeak(summary.maxTemperature, columns.maxTemperature);
    raisePeak(summary.maxFanRPM, columns.maxFanRPM);
  }
  if (summary.batteryPercentStart) {
    summary.batteryPercentDelta =
        percentChange(*summary.batteryPercentStart, *summary.batteryPercentEnd);
  }
}

void summarisePower(std::span<const Observation> observations, double maxGap,
                    PowerSessionSummary& summary) {
  PowerSegmentAccumulator segments{maxGap};
  std::vector<WattPoint> points;
  points.reserve(observations.size());
  SessionWatts watts{.durationSeconds = summary.durationSeconds};
  for (const Observation& observation : observations) {
    const PowerSamplePoint point = storedPowerPoint(observation);
    segments.ingest(point);
    if (point.watts) {
      points.push_back({point.timestamp, *point.watts});
      watts.sum += *point.watts;
      summary.minWatts = std::min(summary.minWatts.value_or(*point.watts), *point.watts);
      summary.maxWatts = std::max(summary.maxWatts.value_or(*point.watts), *point.watts);
    }
  }
  const CoveredWattHours covered = wattHours(points, maxGap);
  watts.sampleCount = static_cast<std::int64_t>(points.size());
  watts.totalWattHours = covered.wattHours;
  watts.hasGap = covered.hasGap;
  summary.wattSampleCount = watts.sampleCount;
  summary.powerSegments = segments.materialize();
  const SessionEnergy energy = sessionEnergy(watts, summary.powerSegments);
  summary.averageWatts = energy.averageWatts;
  summary.averageWattsNote = energy.note;
  summary.totalWattHours = energy.totalWattHours;
  summary.totalWattHoursNote = energy.note;
}

void summariseNetwork(std::span<const Observation> observations, double maxGap,
                      PowerSessionSummary& summary) {
  NetworkTotalsAccumulator totals{maxGap};
  NetworkAppUsageAccumulator apps{maxGap};
  for (const Observation& observation : observations) {
    if (observation.snapshot && observation.snapshot->network) {
      const ObservedNetwork& network = *observation.snapshot->network;
      const Date timestamp = observation.columns.timestamp;
      totals.ingest(network.totalBytesInPerSec, network.totalBytesOutPerSec, timestamp);
      apps.ingest(network, timestamp);
    }
  }
  summary.totalBytesIn = totals.totalBytesIn();
  summary.totalBytesOut = totals.totalBytesOut();
  summary.peakBytesInPerSec = totals.peakBytesInPerSec();
  summary.peakBytesOutPerSec = totals.peakBytesOutPerSec();
  summary.topNetworkApps = apps.materialize(topCount);
  summary.networkSummary = {.totalBytesIn = summary.totalBytesIn,
                            .totalBytesOut = summary.totalBytesOut,
                            .topMovers = summary.topNetworkApps,
                            .note = std::string{PowerSessionNetworkSummary::observedNote}};
}

void addAnalysis(PowerSessionAnalysis::Result result, PowerSessionSummary& summary) {
  summary.samplingConfidence = std::move(result.samplingConfidence);
  summary.batteryInsights = std::move(result.batteryInsights);
  summary.chargeBehavior = std::move(result.chargeBehavior);
  summary.processFamilies = std::move(result.processFamilies);
  summary.measurementOverhead = std::move(result.measurementOverhead);
  summary.thermalSummary = std::move(result.thermalSummary);
  summary.telemetryConsistencyChecks = std::move(result.telemetryConsistencyChecks);
}

PowerSessionSummary summaryOfSorted(const SessionFacts& session,
                                    std::span<const Observation> observations) {
  const Date lastSample = observations.back().columns.timestamp;
  const Date end = std::max(lastSample, session.endedAt.value_or(lastSample));
  const double maxGap = maxSampleGap(session.sampleInterval);

  PowerSessionSummary summary;
  summary.durationSeconds = std::max(0.0, secondsBetween(session.startedAt, end));
  summary.sampleCount = static_cast<std::int64_t>(observations.size());
  summariseColumns(observations, summary);
  summarisePower(observations, maxGap, summary);
  summariseNetwork(observations, maxGap, summary);
  ContributorScores scores;
  for (const Observation& observation : observations) {
    scores.add(observation);
  }
  summary.topContributors = scores.top(topCount);
  addAnalysis(PowerSessionAnalysis::analyze(session, observations), summary);
  return summary;
}

}  // namespace

std::optional<double> contributorScore(const ProProcessEnergy& process) {
  return process.energyImpact     ? process.energyImpact
         : process.cpuTimePercent ? process.cpuTimePercent
                                  : process.wakeupsPerSecond;
}

PowerSamplePoint livePowerPoint(const SystemPowerState& state) {
  PowerSamplePoint point{.timestamp = state.timestamp,
                         .watts = totalWatts(state),
                         .sourceKind = powerSourceKind(state),
                         .sourceLabel = powerSourceLabel(state)};
  if (state.battery) {
    point.acConnected = state.battery->acConnected;
    point.batteryPercent = state.battery->chargePercent;
  }
  return point;
}

PowerSamplePoint storedPowerPoint(const Observation& observation) {
  const SampleColumns& columns = observation.columns;
  PowerSamplePoint point{.timestamp = columns.timestamp,
                         .watts = columns.totalWatts,
                         .sourceKind = unavailable,
                         .sourceLabel = unavailableLabel,
                         .acConnected = columns.acConnected,
                         .batteryPercent = columns.batteryPercent};
  if (!observation.snapshot) {
    if (columns.acConnected == false) {
      point.sourceKind = rawValue(PowerReadingKind::batteryDischarge);
      point.sourceLabel = readingLabel(PowerReadingKind::batteryDischarge);
    }
    return point;
  }
  const ObservedSnapshot& snapshot = *observation.snapshot;
  if (snapshot.powerSourceKind) {
    point.sourceKind = *snapshot.powerSourceKind;
  } else if (const auto kind = inferredKind(snapshot)) {
    point.sourceKind = rawValue(*kind);
  }
  point.sourceLabel =
      snapshot.powerSourceLabel ? *snapshot.powerSourceLabel : inferredLabel(snapshot);
  if (snapshot.battery) {
    point.acConnected = snapshot.battery->acConnected;
    point.batteryPercent = snapshot.battery->chargePercent;
  }
  return point;
}

std::vector<PowerSessionPowerSegment> powerSegments(std::span<const PowerSamplePoint> points,
                                                    std::optional<double> maxSampleGap) {
  PowerSegmentAccumulator accumulator{maxSampleGap};
  for (const PowerSamplePoint& point : points) {
    accumulator.ingest(point);
  }
  return accumulator.materialize();
}

PowerSessionSummary summary(const SessionFacts& session,
                            std::span<const Observation> observations) {
  if (observations.empty()) {
    return PowerSessionSummary::empty();
  }
  if (std::is_sorted(observations.begin(), observations.end(), isEarlier)) {
    return summaryOfSorted(session, observations);
  }
  std::vector<Observation> sorted{observations.begin(), observations.end()};
  PowerSessionAnalysis::sortByTime(sorted);
  return summaryOfSorted(session, sorted);
}

}  // namespace quorvex::PowerSessionMetrics
