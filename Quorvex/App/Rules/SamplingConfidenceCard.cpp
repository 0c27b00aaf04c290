#include "SamplingConfidenceCard.h"

#include <fmt/format.h>

#include "SessionFormat.h"

namespace quorvex {

namespace {

Badge badge(const std::vector<std::string>& flags) {
  if (flags.empty()) {
    return {.text = "Dense", .color = ColorName::green};
  }
  return {.text = fmt::format("{}", fmt::join(flags, ", ")), .color = ColorName::orange};
}

SamplingConfidenceCard::Window window(const PowerSessionDenseWindow& dense,
                                      const ShortTimeFormat& times) {
  SamplingConfidenceCard::Window window{
      .timeRange = SessionFormat::timeRangeText(dense.startedAt, dense.endedAt, times),
      .samplesText = SessionFormat::samplesText(dense.sampleCount),
      .confidence = {dense.confidence,
                     dense.confidence == "dense" ? ColorName::green : ColorName::orange}};
  window.accessibilityText =
      fmt::format("{}, {}, {}", window.timeRange, window.samplesText, window.confidence.text);
  return window;
}

}  // namespace

SamplingConfidenceCard samplingConfidenceCard(const PowerSessionSamplingConfidence& confidence,
                                              const ShortTimeFormat& times) {
  SamplingConfidenceCard card{
      .heading = "Sampling Confidence",
      .badge = badge(confidence.flags),
      .rows = {{"Wall clock", formatSessionDuration(confidence.wallClockDurationSeconds)},
               {"Active sampled", formatSessionDuration(confidence.activeSampledDurationSeconds)},
               {"Samples", fmt::format("{}", confidence.sampleCount)},
               {"Median gap", confidence.medianIntervalSeconds
                                  ? fmt::format("{:.1f}s", *confidence.medianIntervalSeconds)
                                  : std::string{absentValue}}}};
  if (confidence.gapsOver60Seconds >= 1) {
    card.gapSentence = fmt::format("{} gaps over 60s, {} unsampled.", confidence.gapsOver60Seconds,
                                   formatSessionDuration(confidence.totalGapSeconds));
  }
  for (const PowerSessionDenseWindow& dense : confidence.denseWindows) {
    card.windows.push_back(window(dense, times));
  }
  return card;
}

}  // namespace quorvex
