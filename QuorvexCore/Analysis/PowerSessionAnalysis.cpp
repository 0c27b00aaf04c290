#include "PowerSessionAnalysis.h"

#include <algorithm>

#include "AttributionAnalysis.h"
#include "BatteryAnalysis.h"
#include "BatteryTrack.h"
#include "ChargeAnalysis.h"
#include "ConsistencyAnalysis.h"
#include "SamplingAnalysis.h"
#include "ThermalAnalysis.h"
#include "WattHours.h"

namespace quorvex::PowerSessionAnalysis {

namespace {

bool isEarlier(const Observation& left, const Observation& right) {
  return left.columns.timestamp < right.columns.timestamp;
}

/// Of a session that goes on, up to its last sample.
double wallClockDuration(const SessionFacts& session, std::span<const Observation> observations) {
  const Date lastSeen =
      observations.empty() ? session.startedAt : observations.back().columns.timestamp;
  return std::max(0.0, secondsBetween(session.startedAt, session.endedAt.value_or(lastSeen)));
}

}  // namespace

void sortByTime(std::vector<Observation>& observations) {
  if (!std::is_sorted(observations.begin(), observations.end(), isEarlier)) {
    std::stable_sort(observations.begin(), observations.end(), isEarlier);
  }
}

Result analyze(const SessionFacts& session, std::span<const Observation> observations) {
  const double maxGap = maxSampleGap(session.sampleInterval);
  const std::vector<BatteryPoint> track = batteryTrack(observations);
  const ProcessScores scores{observations};
  return {.samplingConfidence =
              samplingConfidence(track, wallClockDuration(session, observations), maxGap),
          .batteryInsights = batteryInsights(observations, track, maxGap),
          .chargeBehavior = chargeBehavior(track, maxGap),
          .processFamilies = processFamilySummaries(scores),
          .measurementOverhead = measurementOverheadSummary(scores),
          .networkSummary = std::nullopt,
          .thermalSummary = thermalSummary(observations),
          .telemetryConsistencyChecks = telemetryConsistencyChecks(observations)};
}

}  // namespace quorvex::PowerSessionAnalysis
