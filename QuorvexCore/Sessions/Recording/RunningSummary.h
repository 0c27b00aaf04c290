#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "Date.h"
#include "Observation.h"
#include "PowerSession.h"
#include "PowerSessionSummary.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "SummaryAccumulator.h"
#include "SystemPowerState.h"

namespace quorvex {

/// The summary of a session that goes on, kept up to date sample by sample, so that live views need
/// not read thousands of rows after each. Its plain figures are those of the summary that is drawn
/// from the stored samples, with one known difference: here two watt samples of one instant are an
/// interval of 0 Wh, there they are none. Samples count in the order in which they come. A value;
/// one thread.
class RunningSummary {
 public:
  /// `maxPowerSampleGap`: seconds across which neither energy nor traffic is integrated; absent
  /// while no session is active.
  explicit RunningSummary(std::optional<double> maxPowerSampleGap = std::nullopt)
      : figures_(maxPowerSampleGap) {}

  /// Adds a sample as it was recorded. An available privileged snapshot stands in place of the
  /// process rows.
  void ingest(const SystemPowerState& state, std::span<const ProcessActivityInfo> processActivities,
              const std::optional<ProTelemetrySnapshot>& proTelemetry);
  /// Adds a sample as it was stored. A privileged snapshot that decodes stands in place of the
  /// process rows; what does not decode is left out.
  void ingestStored(const Observation& sample);

  /// The live summary of the session that the samples belong to; `PowerSessionSummary::empty`
  /// without samples. It lasts until its end, else until the last sample. Analysis is left empty.
  [[nodiscard]] PowerSessionSummary materialize(const PowerSession& session) const;

  [[nodiscard]] std::optional<double> maxPowerSampleGap() const { return figures_.maxSampleGap(); }
  [[nodiscard]] std::int64_t sampleCount() const { return figures_.sampleCount(); }
  [[nodiscard]] std::optional<Date> firstSampleTimestamp() const { return firstSampleTimestamp_; }
  [[nodiscard]] std::optional<Date> lastSampleTimestamp() const { return lastSampleTimestamp_; }
  /// Time of the last privileged snapshot that was ingested.
  [[nodiscard]] std::optional<Date> lastProTelemetrySampledAt() const {
    return lastProTelemetrySampledAt_;
  }

 private:
  void noteTime(Date timestamp);

  SummaryAccumulator figures_;
  std::optional<Date> firstSampleTimestamp_;
  std::optional<Date> lastSampleTimestamp_;
  std::optional<Date> lastProTelemetrySampledAt_;
};

}  // namespace quorvex
