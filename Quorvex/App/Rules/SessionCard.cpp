#include "SessionCard.h"

#include <fmt/format.h>

#include "ByteFormat.h"
#include "DropdownFormat.h"
#include "PowerSessionReportBuilder.h"
#include "SessionFormat.h"

namespace quorvex {

std::string segmentedSummaryLabel(const PowerSessionSummary& summary) {
  if (SessionFormat::hasSparsePowerCoverage(summary)) {
    return "Sparse";
  }
  if (summary.powerSegments.size() >= 2) {
    return fmt::format("{} phases", summary.powerSegments.size());
  }
  return std::string{absentValue};
}

SessionCard sessionCard(std::string_view title, const PowerSessionSummary& summary) {
  const std::optional<double>& average = summary.averageWatts;
  const std::optional<double>& energy = summary.totalWattHours;
  SessionCard card{
      .title = std::string{title},
      .status = "Recording",
      .statusColor = ColorName::red,
      .metrics = {
          {"Duration", formatSessionDuration(summary.durationSeconds)},
          {"Average",
           average ? DropdownFormat::formatWatts(*average) : segmentedSummaryLabel(summary)},
          {"Energy", energy ? fmt::format("{:.3f}Wh", *energy) : segmentedSummaryLabel(summary)},
          {"Battery", summary.batteryPercentDelta ? fmt::format("{}%", *summary.batteryPercentDelta)
                                                  : std::string{absentValue}},
          {"Down", formatBytes(summary.totalBytesIn, appByteStyle)},
          {"Up", formatBytes(summary.totalBytesOut, appByteStyle)}}};
  if (summary.powerSegments.size() >= 2) {
    card.strip = phaseStrip(PowerSessionReportBuilder::phaseDigests(summary), true);
  }
  card.accessibilityText = fmt::format("{}: {}", card.status, card.title);
  for (const LabelledValue& metric : card.metrics) {
    card.accessibilityText += fmt::format(", {} {}", metric.label, metric.value);
  }
  return card;
}

}  // namespace quorvex
