#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "ContributorScores.h"
#include "Date.h"
#include "NetworkAppUsageAccumulator.h"
#include "NetworkSnapshot.h"
#include "NetworkTotalsAccumulator.h"
#include "Observation.h"
#include "PowerSegmentAccumulator.h"
#include "PowerSessionSummary.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "WattHoursAccumulator.h"

namespace quorvex {

/// The plain figures of a session, sample by sample: all that a summary says apart from its
/// analysis. Summaries of stored samples and of a running session are both made of it, so that they
/// agree. Samples come in ascending order of time; one costs no more for those before it.
class SummaryAccumulator {
 public:
  /// `maxSampleGap`: seconds across which neither energy nor traffic is integrated; absent: there
  /// is no limit.
  explicit SummaryAccumulator(std::optional<double> maxSampleGap = std::nullopt);

  /// A sample's power source and watts, and its columns for everything else but network and
  /// processes.
  void ingest(const PowerSamplePoint& point, const SampleColumns& columns);
  /// A stored sample with all that belongs to it. Network and rows that do not decode are left out.
  void ingest(const Observation& observation);

  /// The network of a live sample, which is ingested itself as well.
  void ingestNetwork(const NetworkSnapshot& network, Date timestamp);
  /// Scores the rows of a live privileged snapshot.
  void ingestContributors(std::span<const ProProcessEnergy> processes);
  /// Scores the rows of a live process activity.
  void ingestActivities(std::span<const ProcessActivityInfo> rows);

  [[nodiscard]] std::optional<double> maxSampleGap() const { return maxSampleGap_; }
  [[nodiscard]] std::int64_t sampleCount() const { return sampleCount_; }
  [[nodiscard]] std::int64_t wattSampleCount() const { return wattSampleCount_; }
  [[nodiscard]] const WattHoursAccumulator& energy() const { return energy_; }

  /// The summary of a session of at least one sample that lasted `durationSeconds`. Analysis is
  /// left empty. Of `totalWattHours` it says what may be said of a total.
  [[nodiscard]] PowerSessionSummary materialize(double durationSeconds,
                                                std::optional<double> totalWattHours) const;

 private:
  std::optional<double> maxSampleGap_;
  std::int64_t sampleCount_ = 0;
  std::int64_t wattSampleCount_ = 0;
  double wattSum_ = 0.0;
  std::optional<double> minWatts_;
  std::optional<double> maxWatts_;
  WattHoursAccumulator energy_;
  PowerSegmentAccumulator segments_;
  std::optional<std::int64_t> batteryPercentStart_;
  std::optional<std::int64_t> batteryPercentEnd_;
  std::int64_t maxThermalPressure_ = 0;
  std::optional<double> maxTemperature_;
  std::optional<std::int64_t> maxFanRPM_;
  NetworkTotalsAccumulator networkTotals_;
  NetworkAppUsageAccumulator networkApps_;
  ContributorScores contributors_;
};

}  // namespace quorvex
