#pragma once

#include <tuple>

#include "AdvancedMetrics.h"
#include "BatteryGauge.h"
#include "FanSection.h"
#include "NetworkSection.h"
#include "PowerBreakdown.h"
#include "Shown.h"
#include "ShownChart.h"
#include "ShownControls.h"
#include "ThermalSection.h"

namespace quorvex {

// The sections that the dashboard is made of, as their views see them.

template <>
struct ShownFields<BatteryGaugeRow> {
  static constexpr std::tuple values{RecordField{"label", &BatteryGaugeRow::label},
                                     RecordField{"value", &BatteryGaugeRow::value},
                                     RecordField{"symbol", &BatteryGaugeRow::symbol},
                                     RecordField{"color", &BatteryGaugeRow::color},
                                     RecordField{"isBadge", &BatteryGaugeRow::isBadge},
                                     RecordField{"help", &BatteryGaugeRow::help}};
};

template <>
struct ShownFields<BatteryGauge> {
  static constexpr std::tuple values{
      RecordField{"title", &BatteryGauge::title},
      RecordField{"symbol", &BatteryGauge::symbol},
      RecordField{"percentText", &BatteryGauge::percentText},
      RecordField{"fraction", &BatteryGauge::fraction},
      RecordField{"color", &BatteryGauge::color},
      RecordField{"accessibilityText", &BatteryGauge::accessibilityText}};
};

template <>
struct ShownFields<ThermalSection> {
  static constexpr std::tuple values{RecordField{"title", &ThermalSection::title},
                                     RecordField{"thermalBadge", &ThermalSection::thermalBadge},
                                     RecordField{"note", &ThermalSection::note},
                                     RecordField{"sensorsTitle", &ThermalSection::sensorsTitle},
                                     RecordField{"moreText", &ThermalSection::moreText},
                                     RecordField{"curationText", &ThermalSection::curationText}};
};

template <>
struct ShownFields<FanRow> {
  static constexpr std::tuple values{RecordField{"name", &FanRow::name},
                                     RecordField{"currentText", &FanRow::currentText},
                                     RecordField{"minText", &FanRow::minText},
                                     RecordField{"maxText", &FanRow::maxText},
                                     RecordField{"fraction", &FanRow::fraction},
                                     RecordField{"accessibilityText", &FanRow::accessibilityText}};
};

template <>
struct ShownFields<FanSection> {
  static constexpr std::tuple values{RecordField{"title", &FanSection::title},
                                     RecordField{"emptyText", &FanSection::emptyText}};
};

template <>
struct ShownFields<NetworkRate> {
  static constexpr std::tuple values{RecordField{"label", &NetworkRate::label},
                                     RecordField{"symbol", &NetworkRate::symbol},
                                     RecordField{"text", &NetworkRate::text}};
};

template <>
struct ShownFields<NetworkRow> {
  static constexpr std::tuple values{
      RecordField{"name", &NetworkRow::name}, RecordField{"inText", &NetworkRow::inText},
      RecordField{"outText", &NetworkRow::outText},
      RecordField{"accessibilityText", &NetworkRow::accessibilityText}};
};

template <>
struct ShownFields<NetworkSection> {
  static constexpr std::tuple values{
      RecordField{"title", &NetworkSection::title},
      RecordField{"download", &NetworkSection::download},
      RecordField{"upload", &NetworkSection::upload},
      RecordField{"throughput", &NetworkSection::throughput},
      RecordField{"totalLabel", &NetworkSection::totalLabel},
      RecordField{"totalIn", &NetworkSection::totalIn},
      RecordField{"totalOut", &NetworkSection::totalOut},
      RecordField{"totalNote", &NetworkSection::totalNote},
      RecordField{"topProcessesTitle", &NetworkSection::topProcessesTitle},
      RecordField{"interfacesTitle", &NetworkSection::interfacesTitle}};
};

template <>
struct ShownFields<PowerBar> {
  static constexpr std::tuple values{
      RecordField{"label", &PowerBar::label}, RecordField{"value", &PowerBar::value},
      RecordField{"fraction", &PowerBar::fraction}, RecordField{"tint", &PowerBar::tint},
      RecordField{"accessibilityText", &PowerBar::accessibilityText}};
};

template <>
struct ShownFields<PowerBreakdown> {
  static constexpr std::tuple values{
      RecordField{"total", &PowerBreakdown::total},
      RecordField{"title", &PowerBreakdown::title},
      RecordField{"summary", &PowerBreakdown::summary},
      RecordField{"bar", &PowerBreakdown::bar},
      RecordField{"history", &PowerBreakdown::history},
      RecordField{"unavailableSymbol", &PowerBreakdown::unavailableSymbol},
      RecordField{"unavailableText", &PowerBreakdown::unavailableText},
      RecordField{"accessibilityText", &PowerBreakdown::accessibilityText}};
};

template <>
struct ShownFields<ProcessFiguresRow> {
  static constexpr std::tuple values{
      RecordField{"name", &ProcessFiguresRow::name},
      RecordField{"figures", &ProcessFiguresRow::figures},
      RecordField{"accessibilityText", &ProcessFiguresRow::accessibilityText}};
};

template <>
struct ShownFields<ProTelemetrySection> {
  static constexpr std::tuple values{RecordField{"heading", &ProTelemetrySection::heading},
                                     RecordField{"error", &ProTelemetrySection::error},
                                     RecordField{"emptyText", &ProTelemetrySection::emptyText}};
};

template <>
struct ShownFields<AdvancedMetrics> {
  static constexpr std::tuple values{
      RecordField{"heading", &AdvancedMetrics::heading},
      RecordField{"activityHeading", &AdvancedMetrics::activityHeading},
      RecordField{"activityCaption", &AdvancedMetrics::activityCaption},
      RecordField{"activityEmptyText", &AdvancedMetrics::activityEmptyText},
      RecordField{"proTelemetry", &AdvancedMetrics::proTelemetry}};
};

}  // namespace quorvex
