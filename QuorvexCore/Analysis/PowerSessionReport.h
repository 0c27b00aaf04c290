#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "PowerSessionContributor.h"
#include "PowerSessionStory.h"
#include "PowerSessionSummary.h"
#include "PowerSessionThermalDigest.h"
#include "UUID.h"

namespace quorvex {

/// A power segment that lasted: a stretch of a session on one power source.
struct PowerSessionPhaseDigest {
  std::int64_t index = 0;  ///< identity; the segment's own, so that there may be holes
  std::string sourceKind;
  std::string sourceLabel;
  std::optional<bool> acConnected;  ///< absent without a battery
  Date startedAt{};
  Date endedAt{};
  double durationSeconds = 0.0;   ///< never negative
  double durationFraction = 0.0;  ///< of the session, 0 to 1
  std::int64_t sampleCount = 0;
  std::int64_t wattSampleCount = 0;
  std::optional<double> averageWatts;
  std::optional<double> minWatts;
  std::optional<double> maxWatts;
  std::optional<double> totalWattHours;
  std::optional<std::int64_t> batteryPercentDelta;  ///< end minus start

  bool operator==(const PowerSessionPhaseDigest&) const = default;
};

/// One sample of a timeline.
struct PowerSessionTimelinePoint {
  std::int64_t id = 0;  ///< identity; the sample's place in time order, also after thinning
  double elapsedSeconds = 0.0;
  Date timestamp{};
  std::optional<double> watts;
  std::optional<std::int64_t> batteryPercent;
  std::optional<double> maxTemperature;  ///< degrees Celsius
  std::optional<std::int64_t> maxFanRPM;
  std::optional<double> bytesInPerSec;
  std::optional<double> bytesOutPerSec;
  std::string sourceKind;
  std::string sourceLabel;

  bool operator==(const PowerSessionTimelinePoint&) const = default;
};

/// All that is shown of one session: a value, made by `PowerSessionReportBuilder`.
struct PowerSessionReport {
  UUID sessionID;
  std::string title;
  std::string status;  ///< text of a `PowerSessionStatus`
  std::string source;  ///< text of a `PowerSessionSource`
  Date startedAt{};
  std::optional<Date> endedAt;  ///< absent while the session has none
  double sampleInterval = 0.0;  ///< nominal seconds between samples
  PowerSessionSummary summary;
  std::vector<PowerSessionPhaseDigest> phases;      ///< in time order
  std::vector<PowerSessionTimelinePoint> timeline;  ///< ascending `elapsedSeconds`
  std::vector<PowerSessionContributor>
      actionableContributors;                                  ///< single processes, greatest first
  std::vector<PowerSessionContributor> aggregateContributors;  ///< groups of them, likewise
  PowerSessionThermalDigest thermalDigest;

  /// The session in plain language, with times in the user's form.
  [[nodiscard]] PowerSessionStory story() const;
  /// Whether the phases are on more than one kind of power source.
  [[nodiscard]] bool hasMixedPowerSources() const;
  /// Change of charge in percent per hour; absent without percentages or duration.
  [[nodiscard]] std::optional<double> batteryPercentPerHour() const;

  bool operator==(const PowerSessionReport&) const = default;
};

}  // namespace quorvex
