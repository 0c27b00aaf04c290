#pragma once

#include <tuple>

#include "DashboardRules.h"
#include "HelperControls.h"
#include "PhaseStrip.h"
#include "SessionCard.h"
#include "Shown.h"
#include "ShownControls.h"

namespace quorvex {

// The dashboard around its sections, as its view sees it.

template <>
struct ShownFields<PhaseStrip::Bar> {
  static constexpr std::tuple values{
      RecordField{"color", &PhaseStrip::Bar::color},
      RecordField{"fraction", &PhaseStrip::Bar::fraction},
      RecordField{"label", &PhaseStrip::Bar::label},
      RecordField{"durationText", &PhaseStrip::Bar::durationText},
      RecordField{"accessibilityText", &PhaseStrip::Bar::accessibilityText}};
};

template <>
struct ShownFields<PhaseStrip> {
  static constexpr std::tuple values{
      RecordField{"bars", &PhaseStrip::bars}, RecordField{"showsLegend", &PhaseStrip::showsLegend},
      RecordField{"accessibilityText", &PhaseStrip::accessibilityText}};
};

template <>
struct ShownFields<SessionCard> {
  static constexpr std::tuple values{
      RecordField{"title", &SessionCard::title},
      RecordField{"status", &SessionCard::status},
      RecordField{"statusColor", &SessionCard::statusColor},
      RecordField{"metrics", &SessionCard::metrics},
      RecordField{"strip", &SessionCard::strip},
      RecordField{"accessibilityText", &SessionCard::accessibilityText}};
};

template <>
struct ShownFields<HelperControls> {
  static constexpr std::tuple values{RecordField{"groupTitle", &HelperControls::groupTitle},
                                     RecordField{"title", &HelperControls::title},
                                     RecordField{"detail", &HelperControls::detail},
                                     RecordField{"enabledSwitch", &HelperControls::enabledSwitch},
                                     RecordField{"canSwitch", &HelperControls::canSwitch},
                                     RecordField{"installButton", &HelperControls::installButton},
                                     RecordField{"canInstall", &HelperControls::canInstall},
                                     RecordField{"refreshButton", &HelperControls::refreshButton},
                                     RecordField{"canRefresh", &HelperControls::canRefresh},
                                     RecordField{"lastSample", &HelperControls::lastSample},
                                     RecordField{"message", &HelperControls::message}};
};

template <>
struct ShownFields<SegmentedPicker> {
  static constexpr std::tuple values{
      RecordField{"label", &SegmentedPicker::label},
      RecordField{"accessibilityLabel", &SegmentedPicker::accessibilityLabel},
      RecordField{"options", &SegmentedPicker::options},
      RecordField{"selected", &SegmentedPicker::selected}};
};

template <>
struct ShownFields<DashboardHeader> {
  static constexpr std::tuple values{
      RecordField{"title", &DashboardHeader::title},
      RecordField{"timeText", &DashboardHeader::timeText},
      RecordField{"tabs", &DashboardHeader::tabs},
      RecordField{"temperatureUnits", &DashboardHeader::temperatureUnits},
      RecordField{"temperatureHighlights", &DashboardHeader::temperatureHighlights},
      RecordField{"advancedMetrics", &DashboardHeader::advancedMetrics},
      RecordField{"copyReport", &DashboardHeader::copyReport}};
};

template <>
struct ShownFields<SessionSection> {
  static constexpr std::tuple values{
      RecordField{"title", &SessionSection::title},
      RecordField{"card", &SessionSection::card},
      RecordField{"caption", &SessionSection::caption},
      RecordField{"namePrompt", &SessionSection::namePrompt},
      RecordField{"isRecording", &SessionSection::isRecording},
      RecordField{"startStopButton", &SessionSection::startStopButton},
      RecordField{"historyButton", &SessionSection::historyButton},
      RecordField{"note", &SessionSection::note},
      RecordField{"error", &SessionSection::error}};
};

}  // namespace quorvex
