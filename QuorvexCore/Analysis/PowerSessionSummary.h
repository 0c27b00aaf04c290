#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PowerSessionBatteryCycleInsights.h"
#include "PowerSessionChargeBehavior.h"
#include "PowerSessionContributor.h"
#include "PowerSessionMeasurementOverhead.h"
#include "PowerSessionNetworkAppUsage.h"
#include "PowerSessionNetworkSummary.h"
#include "PowerSessionPowerSegment.h"
#include "PowerSessionProcessFamilySummary.h"
#include "PowerSessionSamplingConfidence.h"
#include "PowerSessionTelemetryChannelNote.h"
#include "PowerSessionTelemetryConsistencyCheck.h"
#include "PowerSessionThermalSummary.h"
#include "RecordFields.h"

namespace quorvex {

/// What a session comes to. Averages and energy of the whole session are withheld, with a note,
/// where they would mix power sources or cross a gap. A new record is the empty one.
///
/// Reading is tolerant, so that a summary that was written before a field existed still loads: all
/// but `durationSeconds`, `sampleCount`, `wattSampleCount` and `maxThermalPressure` may be missing.
struct PowerSessionSummary {
  double durationSeconds = 0.0;  ///< never negative
  std::int64_t sampleCount = 0;
  std::int64_t wattSampleCount = 0;
  std::optional<double> averageWatts;           ///< over the whole duration
  std::optional<std::string> averageWattsNote;  ///< why the average is withheld
  std::optional<double> minWatts;               ///< whatever the source
  std::optional<double> maxWatts;               ///< whatever the source
  std::optional<double> totalWattHours;
  std::optional<std::string> totalWattHoursNote;            ///< always `averageWattsNote`
  std::optional<std::int64_t> batteryPercentStart;          ///< first present one
  std::optional<std::int64_t> batteryPercentEnd;            ///< last present one
  std::optional<std::int64_t> batteryPercentDelta;          ///< end minus start
  std::int64_t maxThermalPressure = 0;                      ///< 0 to 4
  std::optional<double> maxTemperature;                     ///< degrees Celsius, above 0
  std::optional<std::int64_t> maxFanRPM;                    ///< above 0
  std::vector<PowerSessionPowerSegment> powerSegments;      ///< in time order
  std::vector<PowerSessionContributor> topContributors;     ///< at most 5, greatest first
  std::vector<PowerSessionNetworkAppUsage> topNetworkApps;  ///< at most 5, greatest first
  std::uint64_t totalBytesIn = 0;                           ///< bytes, from interface rates
  std::uint64_t totalBytesOut = 0;                          ///< bytes, from interface rates
  std::optional<double> peakBytesInPerSec;                  ///< above 0
  std::optional<double> peakBytesOutPerSec;                 ///< above 0
  std::vector<PowerSessionTelemetryChannelNote> telemetryChannelNotes =
      PowerSessionAnalysis::telemetryChannelNotes();
  PowerSessionSamplingConfidence samplingConfidence;
  std::optional<PowerSessionBatteryCycleInsights> batteryInsights;
  PowerSessionChargeBehavior chargeBehavior;
  std::vector<PowerSessionProcessFamilySummary> processFamilies;
  PowerSessionMeasurementOverhead measurementOverhead;
  PowerSessionNetworkSummary networkSummary;
  PowerSessionThermalSummary thermalSummary;
  std::vector<PowerSessionTelemetryConsistencyCheck> telemetryConsistencyChecks;

  /// The summary of a session without samples. Made once; any thread.
  [[nodiscard]] static const PowerSessionSummary& empty();

  bool operator==(const PowerSessionSummary&) const = default;
};

template <>
struct RecordFields<PowerSessionSummary> {
  static constexpr std::tuple values{
      RecordField{"averageWatts", &PowerSessionSummary::averageWatts},
      RecordField{"averageWattsNote", &PowerSessionSummary::averageWattsNote},
      RecordField{"batteryInsights", &PowerSessionSummary::batteryInsights},
      RecordField{"batteryPercentDelta", &PowerSessionSummary::batteryPercentDelta},
      RecordField{"batteryPercentEnd", &PowerSessionSummary::batteryPercentEnd},
      RecordField{"batteryPercentStart", &PowerSessionSummary::batteryPercentStart},
      RecordField{"chargeBehavior", &PowerSessionSummary::chargeBehavior, MissingKey::keepsDefault},
      RecordField{"durationSeconds", &PowerSessionSummary::durationSeconds},
      RecordField{"maxFanRPM", &PowerSessionSummary::maxFanRPM},
      RecordField{"maxTemperature", &PowerSessionSummary::maxTemperature},
      RecordField{"maxThermalPressure", &PowerSessionSummary::maxThermalPressure},
      RecordField{"maxWatts", &PowerSessionSummary::maxWatts},
      RecordField{"measurementOverhead", &PowerSessionSummary::measurementOverhead,
                  MissingKey::keepsDefault},
      RecordField{"minWatts", &PowerSessionSummary::minWatts},
      RecordField{"networkSummary", &PowerSessionSummary::networkSummary, MissingKey::keepsDefault},
      RecordField{"peakBytesInPerSec", &PowerSessionSummary::peakBytesInPerSec},
      RecordField{"peakBytesOutPerSec", &PowerSessionSummary::peakBytesOutPerSec},
      RecordField{"powerSegments", &PowerSessionSummary::powerSegments, MissingKey::keepsDefault},
      RecordField{"processFamilies", &PowerSessionSummary::processFamilies,
                  MissingKey::keepsDefault},
      RecordField{"sampleCount", &PowerSessionSummary::sampleCount},
      RecordField{"samplingConfidence", &PowerSessionSummary::samplingConfidence,
                  MissingKey::keepsDefault},
      RecordField{"telemetryChannelNotes", &PowerSessionSummary::telemetryChannelNotes,
                  MissingKey::keepsDefault},
      RecordField{"telemetryConsistencyChecks", &PowerSessionSummary::telemetryConsistencyChecks,
                  MissingKey::keepsDefault},
      RecordField{"thermalSummary", &PowerSessionSummary::thermalSummary, MissingKey::keepsDefault},
      RecordField{"topContributors", &PowerSessionSummary::topContributors,
                  MissingKey::keepsDefault},
      RecordField{"topNetworkApps", &PowerSessionSummary::topNetworkApps, MissingKey::keepsDefault},
      RecordField{"totalBytesIn", &PowerSessionSummary::totalBytesIn, MissingKey::keepsDefault},
      RecordField{"totalBytesOut", &PowerSessionSummary::totalBytesOut, MissingKey::keepsDefault},
      RecordField{"totalWattHours", &PowerSessionSummary::totalWattHours},
      RecordField{"totalWattHoursNote", &PowerSessionSummary::totalWattHoursNote},
      RecordField{"wattSampleCount", &PowerSessionSummary::wattSampleCount},
  };

  /// A summary from before the network had a record of its own tells the same in its other fields.
  template <typename IsMissing>
  static void complete(PowerSessionSummary& summary, IsMissing isMissing) {
    if (isMissing("networkSummary")) {
      summary.networkSummary = {.totalBytesIn = summary.totalBytesIn,
                                .totalBytesOut = summary.totalBytesOut,
                                .topMovers = summary.topNetworkApps};
    }
  }
};

}  // namespace quorvex
