#include "SessionReportRules.h"

#include <fmt/format.h>

#include "SessionFormat.h"

namespace quorvex {

namespace {

std::string headerDetail(const PowerSessionReport& report) {
  if (report.hasMixedPowerSources()) {
    return fmt::format("{} power phases", report.phases.size());
  }
  return report.phases.empty() ? "No power samples" : report.phases.front().sourceLabel;
}

PhaseTable::Row phaseRow(const PowerSessionPhaseDigest& phase, const ShortTimeFormat& times) {
  PhaseTable::Row row{
      .dotColor = SessionFormat::colorForSource(phase.sourceKind, phase.acConnected),
      .label = phase.sourceLabel,
      .timeRange = SessionFormat::timeRangeText(phase.startedAt, phase.endedAt, times),
      .duration = formatSessionDuration(phase.durationSeconds),
      .values = {{"Power", SessionFormat::wattsText(phase.averageWatts)},
                 {"Energy", phase.totalWattHours ? fmt::format("{:.2f}Wh", *phase.totalWattHours)
                                                 : std::string{absentValue}},
                 {"Battery", SessionFormat::percentDeltaText(phase.batteryPercentDelta)}}};
  row.accessibilityText = fmt::format("{}, {}, {}", row.label, row.timeRange, row.duration);
  for (const LabelledValue& value : row.values) {
    row.accessibilityText += fmt::format(", {} {}", value.label, value.value);
  }
  return row;
}

}  // namespace

SessionReportHeader sessionReportHeader(const PowerSessionReport& report,
                                        const std::string& locale) {
  return {.title = report.title,
          .startText = mediumDateShortTime(report.startedAt, locale),
          .detail = headerDetail(report),
          .strip = phaseStrip(report.phases, false),
          .exportButton = {.title = "Export",
                           .symbol = "square.and.arrow.up",
                           .accessibilityLabel = "Export session"},
          .deleteButton = {
              .title = "Delete", .symbol = "trash", .accessibilityLabel = "Delete session"}};
}

std::optional<PhaseTable> phaseTable(std::span<const PowerSessionPhaseDigest> phases,
                                     const ShortTimeFormat& times) {
  if (phases.empty()) {
    return std::nullopt;
  }
  PhaseTable table{.heading = "Power Phases"};
  for (const PowerSessionPhaseDigest& phase : phases) {
    table.rows.push_back(phaseRow(phase, times));
  }
  return table;
}

SessionReportContent sessionReportContent(const PowerSessionReport& report, bool useFahrenheit,
                                          const std::string& locale) {
  const ShortTimeFormat times{locale};
  const PowerSessionSummary& summary = report.summary;
  return {
      .header = sessionReportHeader(report, locale),
      .story = storyCard(report.story()),
      .thermal = thermalSummaryCard(report.thermalDigest, useFahrenheit),
      .sampling = samplingConfidenceCard(summary.samplingConfidence, times),
      .flags = analysisFlagsCard(summary.telemetryConsistencyChecks, summary.measurementOverhead),
      .strip = phaseStrip(report.phases, true),
      .tiles = metricTiles(report, useFahrenheit),
      .traces = traceGrid(report, useFahrenheit),
      .phases = phaseTable(report.phases, times),
      .networkApps = networkAppsCard(summary.topNetworkApps),
      .families = processFamiliesCard(summary.processFamilies),
      .contributors = contributorsCard(report.actionableContributors, report.aggregateContributors),
      .notes = telemetryNotesCard(summary.telemetryChannelNotes)};
}

PowerSessionReport reportWithoutSamples(const PowerSession& session) {
  return {.sessionID = session.id(),
          .title = session.title(),
          .status = std::string{rawValue(session.status())},
          .source = std::string{rawValue(session.source())},
          .startedAt = session.startedAt(),
          .endedAt = session.endedAt(),
          .sampleInterval = session.sampleInterval(),
          .summary = PowerSessionSummary::empty()};
}

}  // namespace quorvex
