#include "RunningSummary.h"

#include <algorithm>

#include "PowerSessionMetrics.h"

namespace quorvex {

void RunningSummary::ingest(const SystemPowerState& state,
                            std::span<const ProcessActivityInfo> processActivities,
                            const std::optional<ProTelemetrySnapshot>& proTelemetry) {
  noteTime(state.timestamp);
  figures_.ingest(PowerSessionMetrics::livePowerPoint(state),
                  PowerSessionMetrics::liveColumns(state));
  if (state.network) {
    figures_.ingestNetwork(*state.network, state.timestamp);
  }
  if (proTelemetry && proTelemetry->isAvailable) {
    figures_.ingestContributors(proTelemetry->processes);
    lastProTelemetrySampledAt_ = proTelemetry->sampledAt;
  } else {
    figures_.ingestActivities(processActivities);
  }
}

void RunningSummary::ingestStored(const Observation& sample) {
  noteTime(sample.columns.timestamp);
  figures_.ingest(sample);
  if (sample.hasProTelemetry) {
    lastProTelemetrySampledAt_ = sample.proTelemetrySampledAt;
  }
}

void RunningSummary::noteTime(Date timestamp) {
  firstSampleTimestamp_ = firstSampleTimestamp_.value_or(timestamp);
  lastSampleTimestamp_ = timestamp;
}

PowerSessionSummary RunningSummary::materialize(const PowerSession& session) const {
  if (sampleCount() < 1) {
    return PowerSessionSummary::empty();
  }
  const Date end = session.endedAt().value_or(lastSampleTimestamp_.value_or(session.startedAt()));
  const bool hasInterval = figures_.wattSampleCount() >= 2;
  return figures_.materialize(
      std::max(0.0, secondsBetween(session.startedAt(), end)),
      hasInterval ? std::optional{figures_.energy().wattHours()} : std::nullopt);
}

}  // namespace quorvex
