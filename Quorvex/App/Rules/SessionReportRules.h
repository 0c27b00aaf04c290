#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "AnalysisFlagsCard.h"
#include "Appearance.h"
#include "ContributorsCard.h"
#include "Controls.h"
#include "LocalizedDate.h"
#include "PhaseStrip.h"
#include "PowerSession.h"
#include "PowerSessionReport.h"
#include "SamplingConfidenceCard.h"
#include "SessionTiles.h"
#include "StoryCard.h"
#include "TelemetryNotesCard.h"
#include "ThermalSummaryCard.h"

namespace quorvex {

struct SessionReportHeader {
  std::string title;
  std::string startText;  ///< date and time of the start
  std::string detail;     ///< on which power sources it ran
  PhaseStrip strip;
  CommandButton exportButton;
  CommandButton deleteButton;

  bool operator==(const SessionReportHeader&) const = default;
};

/// The phases of a session, one row each.
struct PhaseTable {
  struct Row {
    ColorName dotColor = ColorName::secondary;
    std::string label;
    std::string timeRange;
    std::string duration;
    std::vector<LabelledValue> values;  ///< power, energy, battery
    std::string accessibilityText;      ///< the row in one sentence

    bool operator==(const Row&) const = default;
  };

  std::string heading;
  std::vector<Row> rows;

  bool operator==(const PhaseTable&) const = default;
};

/// All that is shown of one session. The parts stand in the order of the fields; an absent one
/// falls away.
struct SessionReportContent {
  SessionReportHeader header;
  StoryCard story;
  ThermalSummaryCard thermal;
  SamplingConfidenceCard sampling;
  std::optional<AnalysisFlagsCard> flags;
  PhaseStrip strip;
  std::vector<MetricTile> tiles;
  std::vector<TraceCard> traces;
  std::optional<PhaseTable> phases;
  std::optional<NetworkAppsCard> networkApps;
  std::optional<ProcessFamiliesCard> families;
  ContributorsCard contributors;
  TelemetryNotesCard notes;

  bool operator==(const SessionReportContent&) const = default;
};

/// `locale` is that of dates, see `userLocaleForDates`.
[[nodiscard]] SessionReportContent sessionReportContent(const PowerSessionReport& report,
                                                        bool useFahrenheit,
                                                        const std::string& locale);

[[nodiscard]] SessionReportHeader sessionReportHeader(const PowerSessionReport& report,
                                                      const std::string& locale);

/// Absent without phases.
[[nodiscard]] std::optional<PhaseTable> phaseTable(std::span<const PowerSessionPhaseDigest> phases,
                                                   const ShortTimeFormat& times);

/// What is shown of a session that has no samples yet. A report proper must not be asked for: it
/// needs a sample.
[[nodiscard]] PowerSessionReport reportWithoutSamples(const PowerSession& session);

}  // namespace quorvex
