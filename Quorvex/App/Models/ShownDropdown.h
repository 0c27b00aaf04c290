#pragma once

#include <tuple>

#include "AppMenu.h"
#include "DropdownControls.h"
#include "DropdownGraph.h"
#include "HeroContext.h"
#include "HeroMetric.h"
#include "SessionControls.h"
#include "Shown.h"
#include "ShownChart.h"
#include "ShownControls.h"
#include "StatsRow.h"

namespace quorvex {

// The dropdown, as its view sees it.

template <>
struct ShownFields<HeroLine> {
  static constexpr std::tuple values{
      RecordField{"symbol", &HeroLine::symbol},
      RecordField{"symbolColor", &HeroLine::symbolColor},
      RecordField{"number", &HeroLine::number},
      RecordField{"unit", &HeroLine::unit},
      RecordField{"color", &HeroLine::color},
      RecordField{"isStatus", &HeroLine::isStatus},
      RecordField{"accessibilityText", &HeroLine::accessibilityText}};
};

template <>
struct ShownFields<HeroMetric> {
  static constexpr std::tuple values{RecordField{"mode", &HeroMetric::mode},
                                     RecordField{"stateLabel", &HeroMetric::stateLabel},
                                     RecordField{"sourceLabel", &HeroMetric::sourceLabel}};
};

template <>
struct ShownFields<AdapterPill> {
  static constexpr std::tuple values{
      RecordField{"label", &AdapterPill::label}, RecordField{"symbol", &AdapterPill::symbol},
      RecordField{"color", &AdapterPill::color}, RecordField{"help", &AdapterPill::help}};
};

template <>
struct ShownFields<HeroContext> {
  static constexpr std::tuple values{RecordField{"adapterPill", &HeroContext::adapterPill},
                                     RecordField{"components", &HeroContext::components},
                                     RecordField{"text", &HeroContext::text}};
};

template <>
struct ShownFields<GraphModeButton> {
  static constexpr std::tuple values{
      RecordField{"mode", &GraphModeButton::mode}, RecordField{"title", &GraphModeButton::title},
      RecordField{"symbol", &GraphModeButton::symbol}, RecordField{"help", &GraphModeButton::help},
      RecordField{"accessibilityLabel", &GraphModeButton::accessibilityLabel}};
};

template <>
struct ShownFields<GraphSelector> {
  static constexpr std::tuple values{
      RecordField{"accessibilityLabel", &GraphSelector::accessibilityLabel},
      RecordField{"buttons", &GraphSelector::buttons}};
};

template <>
struct ShownFields<DropdownGraph> {
  static constexpr std::tuple values{RecordField{"mode", &DropdownGraph::mode},
                                     RecordField{"sparkline", &DropdownGraph::sparkline},
                                     RecordField{"label", &DropdownGraph::label},
                                     RecordField{"caption", &DropdownGraph::caption}};
};

template <>
struct ShownFields<DataUsed> {
  static constexpr std::tuple values{
      RecordField{"symbol", &DataUsed::symbol}, RecordField{"color", &DataUsed::color},
      RecordField{"text", &DataUsed::text},
      RecordField{"accessibilityText", &DataUsed::accessibilityText}};
};

template <>
struct ShownFields<DataUsedRow> {
  static constexpr std::tuple values{RecordField{"in", &DataUsedRow::in},
                                     RecordField{"out", &DataUsedRow::out},
                                     RecordField{"help", &DataUsedRow::help}};
};

template <>
struct ShownFields<StatCell> {
  static constexpr std::tuple values{
      RecordField{"symbol", &StatCell::symbol},
      RecordField{"text", &StatCell::text},
      RecordField{"caption", &StatCell::caption},
      RecordField{"color", &StatCell::color},
      RecordField{"help", &StatCell::help},
      RecordField{"accessibilityText", &StatCell::accessibilityText}};
};

template <>
struct ShownFields<CommandRow> {
  static constexpr std::tuple values{RecordField{"openDashboard", &CommandRow::openDashboard},
                                     RecordField{"copyJSONReport", &CommandRow::copyJSONReport},
                                     RecordField{"settings", &CommandRow::settings},
                                     RecordField{"quit", &CommandRow::quit}};
};

template <>
struct ShownFields<DropdownControls> {
  static constexpr std::tuple values{
      RecordField{"refreshInterval", &DropdownControls::refreshInterval},
      RecordField{"refresh", &DropdownControls::refresh},
      RecordField{"lowImpactMode", &DropdownControls::lowImpactMode},
      RecordField{"lowPowerMode", &DropdownControls::lowPowerMode},
      RecordField{"warning", &DropdownControls::warning}};
};

template <>
struct ShownFields<SessionControls> {
  static constexpr std::tuple values{
      RecordField{"isRecording", &SessionControls::isRecording},
      RecordField{"label", &SessionControls::label},
      RecordField{"labelSymbol", &SessionControls::labelSymbol},
      RecordField{"elapsed", &SessionControls::elapsed},
      RecordField{"figures", &SessionControls::figures},
      RecordField{"button", &SessionControls::button},
      RecordField{"accessibilityText", &SessionControls::accessibilityText}};
};

}  // namespace quorvex
