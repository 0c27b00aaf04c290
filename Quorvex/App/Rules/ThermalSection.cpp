#include "ThermalSection.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

#include "DropdownFormat.h"
#include "TemperatureInsights.h"

namespace quorvex {

namespace {

constexpr const char* cpuAverageLabel = "CPU Avg";

std::vector<LabelledValue> readingRows(std::span<const TemperatureDisplayReading> readings,
                                       bool useFahrenheit) {
  std::vector<LabelledValue> rows;
  rows.reserve(readings.size());
  for (const TemperatureDisplayReading& reading : readings) {
    ColoredText text = DropdownFormat::temperatureText(reading.temperature, useFahrenheit);
    rows.push_back({reading.label, std::move(text.text), text.color});
  }
  return rows;
}

void fillSensors(ThermalSection& section, const SystemPowerState& state, bool useFahrenheit) {
  constexpr std::size_t rowLimit = TemperatureInsights::dashboardLimit;
  section.sensors = readingRows(
      TemperatureInsights::dashboardReadings(state.sensors, state.battery), useFahrenheit);
  if (section.sensors.empty()) {
    return;
  }
  section.sensorsTitle = "Sensors";
  const std::size_t sensorCount = state.sensors.size();
  if (section.sensors.size() == rowLimit && sensorCount > rowLimit) {
    section.moreText = fmt::format("... and {} more", sensorCount - rowLimit);
  }
  if (sensorCount > section.sensors.size()) {
    section.curationText = fmt::format("Curated from {} hardware sensors", sensorCount);
  }
}

}  // namespace

std::vector<LabelledValue> temperatureHighlights(const SystemPowerState& state,
                                                 const AppSettings& settings) {
  if (!settings.showTemperatureHighlights) {
    return {};
  }
  return readingRows(TemperatureInsights::menuHighlights(state.sensors, state.battery),
                     settings.useFahrenheit);
}

ThermalSection thermalSection(const SystemPowerState& state, const AppSettings& settings) {
  const ColoredText stateInfo = DropdownFormat::thermalStateInfo(state.thermal.state);
  ThermalSection section{.title = "Thermal",
                         .thermalBadge = {.text = stateInfo.text, .color = stateInfo.color},
                         .rows = {{"State", stateInfo.text, stateInfo.color},
                                  {"Pressure", pressureText(state.thermal.pressure)}}};
  if (state.thermal.isLowPowerMode) {
    section.rows.push_back({"Low Power Mode", "On"});
  }
  if (const auto reading =
          TemperatureInsights::representativeReading(state.sensors, state.battery)) {
    const ColoredText text =
        DropdownFormat::temperatureText(reading->temperature, settings.useFahrenheit);
    section.rows.push_back(
        {"Representative", fmt::format("{} {}", reading->label, text.text), text.color});
    if (reading->label != cpuAverageLabel) {
      section.note = fmt::format(
          "CPU Avg is not available from the active sensor source on this Mac. Using {} instead.",
          reading->label);
    }
  }
  section.highlights = temperatureHighlights(state, settings);
  if (settings.showSensors) {
    fillSensors(section, state, settings.useFahrenheit);
  }
  return section;
}

std::string pressureText(std::int64_t pressure) {
  constexpr std::array words{"Nominal", "Moderate", "Heavy", "Trapping", "Sleeping"};
  const bool hasName = pressure >= 0 && pressure < std::ssize(words);
  return fmt::format("{} ({}/4)",
                     hasName ? words.at(static_cast<std::size_t>(pressure)) : "Unknown", pressure);
}

}  // namespace quorvex
