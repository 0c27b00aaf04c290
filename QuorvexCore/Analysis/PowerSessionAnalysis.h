#pragma once

#include <optional>
#include <span>
#include <vector>

#include "Observation.h"
#include "PowerSessionBatteryCycleInsights.h"
#include "PowerSessionChargeBehavior.h"
#include "PowerSessionMeasurementOverhead.h"
#include "PowerSessionNetworkSummary.h"
#include "PowerSessionProcessFamilySummary.h"
#include "PowerSessionSamplingConfidence.h"
#include "PowerSessionTelemetryConsistencyCheck.h"
#include "PowerSessionThermalSummary.h"
#include "SessionFacts.h"

/// Conclusions from the stored samples of one session, drawn only as far as the data bears them:
/// missing data removes runs, rows or values and never fails. Pure functions; any thread.
namespace quorvex::PowerSessionAnalysis {

/// What one pass over a session concludes.
struct Result {
  PowerSessionSamplingConfidence samplingConfidence;
  std::optional<PowerSessionBatteryCycleInsights> batteryInsights;  ///< absent without percentages
  PowerSessionChargeBehavior chargeBehavior;
  std::vector<PowerSessionProcessFamilySummary> processFamilies;
  PowerSessionMeasurementOverhead measurementOverhead;
  std::optional<PowerSessionNetworkSummary> networkSummary;  ///< always absent: the summary's own
  PowerSessionThermalSummary thermalSummary;
  std::vector<PowerSessionTelemetryConsistencyCheck> telemetryConsistencyChecks;

  bool operator==(const Result&) const = default;
};

/// Puts observations into ascending order of time; those of one instant keep their order.
void sortByTime(std::vector<Observation>& observations);

/// Draws every conclusion. The observations must be in ascending order of time (`sortByTime`).
[[nodiscard]] Result analyze(const SessionFacts& session,
                             std::span<const Observation> observations);

}  // namespace quorvex::PowerSessionAnalysis
