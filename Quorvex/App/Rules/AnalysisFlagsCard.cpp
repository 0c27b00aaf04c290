#include "AnalysisFlagsCard.h"

#include <fmt/format.h>

#include "SessionFormat.h"

namespace quorvex {

namespace {

AnalysisFlagsCard::Overhead overheadLine(const PowerSessionMeasurementOverhead& overhead) {
  AnalysisFlagsCard::Overhead line{.text = {"Measurement overhead observed", ColorName::orange},
                                   .note = overhead.note};
  if (overhead.overheadFraction) {
    line.fractionText = fmt::format("{:.0f}%", *overhead.overheadFraction * 100.0);
  }
  return line;
}

AnalysisFlagsCard::Check checkRow(const PowerSessionTelemetryConsistencyCheck& check) {
  AnalysisFlagsCard::Check row{
      .code = check.code,
      .message = check.message,
      .samplesText = SessionFormat::samplesText(check.sampleCount),
      .color = check.severity == "warning" ? ColorName::orange : ColorName::secondary};
  row.accessibilityText =
      fmt::format("{}: {}: {} {}", check.severity, row.code, row.message, row.samplesText);
  return row;
}

}  // namespace

std::optional<AnalysisFlagsCard> analysisFlagsCard(
    std::span<const PowerSessionTelemetryConsistencyCheck> checks,
    const PowerSessionMeasurementOverhead& overhead) {
  if (checks.empty() && !overhead.observed) {
    return std::nullopt;
  }
  AnalysisFlagsCard card{.heading = "Analysis Flags"};
  if (overhead.observed) {
    card.overhead = overheadLine(overhead);
  }
  for (const PowerSessionTelemetryConsistencyCheck& check : checks) {
    card.checks.push_back(checkRow(check));
  }
  return card;
}

}  // namespace quorvex
