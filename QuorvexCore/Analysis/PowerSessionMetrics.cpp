#include "PowerSessionMetrics.h"

#include <utility>

#include "PowerSessionAnalysis.h"
#include "SummaryAccumulator.h"

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
  SummaryAccumulator figures{maxSampleGap(session.sampleInterval)};
  for (const Observation& observation : observations) {
    figures.ingest(observation);
  }
  const double duration = std::max(0.0, secondsBetween(session.startedAt, end));
  PowerSessionSummary summary = figures.materialize(duration, figures.energy().coveredWattHours());
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

SampleColumns liveColumns(const SystemPowerState& state) {
  SampleColumns columns{.timestamp = state.timestamp, .totalWatts = totalWatts(state)};
  if (state.battery) {
    columns.batteryPercent = state.battery->chargePercent;
    columns.acConnected = state.battery->acConnected;
  }
  columns.thermalPressure = state.thermal.pressure;
  for (const FanInfo& fan : state.fans) {
    columns.maxFanRPM = std::max(fan.currentRPM, columns.maxFanRPM.value_or(fan.currentRPM));
  }
  for (const TemperatureSensor& sensor : state.sensors) {
    columns.maxTemperature =
        std::max(sensor.temperature, columns.maxTemperature.value_or(sensor.temperature));
  }
  return columns;
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
