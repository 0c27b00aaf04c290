#pragma once

#include <tuple>

#include "AnalysisFlagsCard.h"
#include "ContributorsCard.h"
#include "SamplingConfidenceCard.h"
#include "SessionReportRules.h"
#include "SessionTiles.h"
#include "Shown.h"
#include "ShownChart.h"
#include "ShownControls.h"
#include "ShownDashboard.h"
#include "StoryCard.h"
#include "TelemetryNotesCard.h"
#include "ThermalSummaryCard.h"

namespace quorvex {

// The report of a session, as its view sees it.

template <>
struct ShownFields<MetricTile> {
  static constexpr std::tuple values{
      RecordField{"label", &MetricTile::label}, RecordField{"value", &MetricTile::value},
      RecordField{"detail", &MetricTile::detail},
      RecordField{"accessibilityText", &MetricTile::accessibilityText}};
};

template <>
struct ShownFields<TraceCard> {
  static constexpr std::tuple values{
      RecordField{"title", &TraceCard::title}, RecordField{"value", &TraceCard::value},
      RecordField{"sparkline", &TraceCard::sparkline},
      RecordField{"accessibilityText", &TraceCard::accessibilityText}};
};

template <>
struct ShownFields<StoryCard::Episode> {
  static constexpr std::tuple values{
      RecordField{"timeRange", &StoryCard::Episode::timeRange},
      RecordField{"phase", &StoryCard::Episode::phase},
      RecordField{"narrative", &StoryCard::Episode::narrative},
      RecordField{"highlights", &StoryCard::Episode::highlights},
      RecordField{"accessibilityText", &StoryCard::Episode::accessibilityText}};
};

template <>
struct ShownFields<StoryCard> {
  static constexpr std::tuple values{RecordField{"headline", &StoryCard::headline},
                                     RecordField{"episodes", &StoryCard::episodes}};
};

template <>
struct ShownFields<ThermalSummaryCard> {
  static constexpr std::tuple values{
      RecordField{"symbol", &ThermalSummaryCard::symbol},
      RecordField{"verdict", &ThermalSummaryCard::verdict},
      RecordField{"peakTempText", &ThermalSummaryCard::peakTempText},
      RecordField{"timeAboveText", &ThermalSummaryCard::timeAboveText},
      RecordField{"pressureNote", &ThermalSummaryCard::pressureNote},
      RecordField{"accessibilityText", &ThermalSummaryCard::accessibilityText}};
};

template <>
struct ShownFields<SamplingConfidenceCard::Window> {
  static constexpr std::tuple values{
      RecordField{"timeRange", &SamplingConfidenceCard::Window::timeRange},
      RecordField{"samplesText", &SamplingConfidenceCard::Window::samplesText},
      RecordField{"confidence", &SamplingConfidenceCard::Window::confidence},
      RecordField{"accessibilityText", &SamplingConfidenceCard::Window::accessibilityText}};
};

template <>
struct ShownFields<SamplingConfidenceCard> {
  static constexpr std::tuple values{
      RecordField{"heading", &SamplingConfidenceCard::heading},
      RecordField{"badge", &SamplingConfidenceCard::badge},
      RecordField{"rows", &SamplingConfidenceCard::rows},
      RecordField{"gapSentence", &SamplingConfidenceCard::gapSentence},
      RecordField{"windows", &SamplingConfidenceCard::windows}};
};

template <>
struct ShownFields<AnalysisFlagsCard::Overhead> {
  static constexpr std::tuple values{
      RecordField{"text", &AnalysisFlagsCard::Overhead::text},
      RecordField{"fractionText", &AnalysisFlagsCard::Overhead::fractionText},
      RecordField{"note", &AnalysisFlagsCard::Overhead::note}};
};

template <>
struct ShownFields<AnalysisFlagsCard::Check> {
  static constexpr std::tuple values{
      RecordField{"code", &AnalysisFlagsCard::Check::code},
      RecordField{"message", &AnalysisFlagsCard::Check::message},
      RecordField{"samplesText", &AnalysisFlagsCard::Check::samplesText},
      RecordField{"color", &AnalysisFlagsCard::Check::color},
      RecordField{"accessibilityText", &AnalysisFlagsCard::Check::accessibilityText}};
};

template <>
struct ShownFields<AnalysisFlagsCard> {
  static constexpr std::tuple values{RecordField{"heading", &AnalysisFlagsCard::heading},
                                     RecordField{"overhead", &AnalysisFlagsCard::overhead},
                                     RecordField{"checks", &AnalysisFlagsCard::checks}};
};

template <>
struct ShownFields<ContributorsCard> {
  static constexpr std::tuple values{RecordField{"heading", &ContributorsCard::heading},
                                     RecordField{"rows", &ContributorsCard::rows},
                                     RecordField{"aggregateLine", &ContributorsCard::aggregateLine},
                                     RecordField{"emptyText", &ContributorsCard::emptyText}};
};

template <>
struct ShownFields<ProcessFamiliesCard> {
  static constexpr std::tuple values{RecordField{"heading", &ProcessFamiliesCard::heading},
                                     RecordField{"rows", &ProcessFamiliesCard::rows},
                                     RecordField{"caption", &ProcessFamiliesCard::caption}};
};

template <>
struct ShownFields<NetworkAppsCard::Row> {
  static constexpr std::tuple values{
      RecordField{"name", &NetworkAppsCard::Row::name},
      RecordField{"inText", &NetworkAppsCard::Row::inText},
      RecordField{"outText", &NetworkAppsCard::Row::outText},
      RecordField{"peakText", &NetworkAppsCard::Row::peakText},
      RecordField{"accessibilityText", &NetworkAppsCard::Row::accessibilityText}};
};

template <>
struct ShownFields<NetworkAppsCard> {
  static constexpr std::tuple values{RecordField{"heading", &NetworkAppsCard::heading},
                                     RecordField{"inSymbol", &NetworkAppsCard::inSymbol},
                                     RecordField{"outSymbol", &NetworkAppsCard::outSymbol},
                                     RecordField{"rows", &NetworkAppsCard::rows}};
};

template <>
struct ShownFields<TelemetryNotesCard::Note> {
  static constexpr std::tuple values{
      RecordField{"channel", &TelemetryNotesCard::Note::channel},
      RecordField{"trustLevel", &TelemetryNotesCard::Note::trustLevel},
      RecordField{"meaning", &TelemetryNotesCard::Note::meaning},
      RecordField{"caution", &TelemetryNotesCard::Note::caution},
      RecordField{"accessibilityText", &TelemetryNotesCard::Note::accessibilityText}};
};

template <>
struct ShownFields<TelemetryNotesCard> {
  static constexpr std::tuple values{RecordField{"heading", &TelemetryNotesCard::heading},
                                     RecordField{"notes", &TelemetryNotesCard::notes}};
};

template <>
struct ShownFields<SessionReportHeader> {
  static constexpr std::tuple values{
      RecordField{"title", &SessionReportHeader::title},
      RecordField{"startText", &SessionReportHeader::startText},
      RecordField{"detail", &SessionReportHeader::detail},
      RecordField{"strip", &SessionReportHeader::strip},
      RecordField{"exportButton", &SessionReportHeader::exportButton},
      RecordField{"deleteButton", &SessionReportHeader::deleteButton}};
};

template <>
struct ShownFields<PhaseTable::Row> {
  static constexpr std::tuple values{
      RecordField{"dotColor", &PhaseTable::Row::dotColor},
      RecordField{"label", &PhaseTable::Row::label},
      RecordField{"timeRange", &PhaseTable::Row::timeRange},
      RecordField{"duration", &PhaseTable::Row::duration},
      RecordField{"values", &PhaseTable::Row::values},
      RecordField{"accessibilityText", &PhaseTable::Row::accessibilityText}};
};

template <>
struct ShownFields<PhaseTable> {
  static constexpr std::tuple values{RecordField{"heading", &PhaseTable::heading},
                                     RecordField{"rows", &PhaseTable::rows}};
};

template <>
struct ShownFields<SessionReportContent> {
  static constexpr std::tuple values{
      RecordField{"header", &SessionReportContent::header},
      RecordField{"story", &SessionReportContent::story},
      RecordField{"thermal", &SessionReportContent::thermal},
      RecordField{"sampling", &SessionReportContent::sampling},
      RecordField{"flags", &SessionReportContent::flags},
      RecordField{"strip", &SessionReportContent::strip},
      RecordField{"tiles", &SessionReportContent::tiles},
      RecordField{"phases", &SessionReportContent::phases},
      RecordField{"networkApps", &SessionReportContent::networkApps},
      RecordField{"families", &SessionReportContent::families},
      RecordField{"contributors", &SessionReportContent::contributors},
      RecordField{"notes", &SessionReportContent::notes}};
};

}  // namespace quorvex
