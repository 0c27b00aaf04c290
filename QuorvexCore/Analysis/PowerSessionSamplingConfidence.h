#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// A stretch of samples of which no two neighbours lie further apart than the session's gap limit.
struct PowerSessionDenseWindow {
  std::int64_t index = 0;        ///< identity; from 0, in time order
  Date startedAt{};              ///< first sample
  Date endedAt{};                ///< last sample
  double durationSeconds = 0.0;  ///< never negative
  std::int64_t sampleCount = 0;
  std::optional<double> medianIntervalSeconds;      ///< absent with one sample
  std::optional<std::int64_t> batteryPercentStart;  ///< first present one of the window
  std::optional<std::int64_t> batteryPercentEnd;    ///< last present one of the window
  std::optional<std::int64_t> batteryPercentDelta;  ///< end minus start
  /// Plain mean of the discharge watts, not weighted by time; absent without any.
  std::optional<double> averageBatteryDrawWatts;
  std::optional<double> totalWattHours;  ///< of the discharge watts; absent with fewer than two
  std::string confidence;                ///< "low-sample", "dense" or "suspect-flat-battery"

  bool operator==(const PowerSessionDenseWindow&) const = default;
};

/// How far the samples of a session cover its time. A new record is the empty one.
struct PowerSessionSamplingConfidence {
  double wallClockDurationSeconds = 0.0;      ///< session end minus start, never negative
  double activeSampledDurationSeconds = 0.0;  ///< sum of the intervals within the gap limit
  std::int64_t sampleCount = 0;
  std::optional<double> medianIntervalSeconds;  ///< absent with fewer than two samples
  std::int64_t gapsOver60Seconds = 0;           ///< intervals above 60 seconds, active ones too
  double totalGapSeconds = 0.0;                 ///< sum of those intervals
  std::int64_t lowSampleWindowCount = 0;        ///< windows with fewer than 3 samples
  /// Of "long-gaps", "low-sample-window", "flat-battery-high-draw", "low-active-coverage"; in this
  /// order.
  std::vector<std::string> flags;
  std::vector<PowerSessionDenseWindow> denseWindows;  ///< all, those with few samples too

  /// The value of a session without samples.
  [[nodiscard]] static PowerSessionSamplingConfidence empty() { return {}; }

  bool operator==(const PowerSessionSamplingConfidence&) const = default;
};

template <>
struct RecordFields<PowerSessionDenseWindow> {
  static constexpr std::tuple values{
      RecordField{"averageBatteryDrawWatts", &PowerSessionDenseWindow::averageBatteryDrawWatts},
      RecordField{"batteryPercentDelta", &PowerSessionDenseWindow::batteryPercentDelta},
      RecordField{"batteryPercentEnd", &PowerSessionDenseWindow::batteryPercentEnd},
      RecordField{"batteryPercentStart", &PowerSessionDenseWindow::batteryPercentStart},
      RecordField{"confidence", &PowerSessionDenseWindow::confidence},
      RecordField{"durationSeconds", &PowerSessionDenseWindow::durationSeconds},
      RecordField{"endedAt", &PowerSessionDenseWindow::endedAt},
      RecordField{"index", &PowerSessionDenseWindow::index},
      RecordField{"medianIntervalSeconds", &PowerSessionDenseWindow::medianIntervalSeconds},
      RecordField{"sampleCount", &PowerSessionDenseWindow::sampleCount},
      RecordField{"startedAt", &PowerSessionDenseWindow::startedAt},
      RecordField{"totalWattHours", &PowerSessionDenseWindow::totalWattHours},
  };
};

template <>
struct RecordFields<PowerSessionSamplingConfidence> {
  static constexpr std::tuple values{
      RecordField{"activeSampledDurationSeconds",
                  &PowerSessionSamplingConfidence::activeSampledDurationSeconds},
      RecordField{"denseWindows", &PowerSessionSamplingConfidence::denseWindows},
      RecordField{"flags", &PowerSessionSamplingConfidence::flags},
      RecordField{"gapsOver60Seconds", &PowerSessionSamplingConfidence::gapsOver60Seconds},
      RecordField{"lowSampleWindowCount", &PowerSessionSamplingConfidence::lowSampleWindowCount},
      RecordField{"medianIntervalSeconds", &PowerSessionSamplingConfidence::medianIntervalSeconds},
      RecordField{"sampleCount", &PowerSessionSamplingConfidence::sampleCount},
      RecordField{"totalGapSeconds", &PowerSessionSamplingConfidence::totalGapSeconds},
      RecordField{"wallClockDurationSeconds",
                  &PowerSessionSamplingConfidence::wallClockDurationSeconds},
  };
};

}  // namespace quorvex
