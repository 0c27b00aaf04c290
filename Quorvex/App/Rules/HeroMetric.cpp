#include "HeroMetric.h"

#include <fmt/format.h>

#include <utility>

#include "DropdownFormat.h"
#include "TemperatureInsights.h"

namespace quorvex {

namespace {

HeroLine statusLine(const SystemPowerState& state) {
  std::string status = emptyWattageStatus(state);
  std::string accessibilityText = "Power: " + status;
  return {.symbol = "bolt.fill",
          .symbolColor = ColorName::yellow,
          .number = std::move(status),
          .color = ColorName::secondary,
          .isStatus = true,
          .accessibilityText = std::move(accessibilityText)};
}

HeroLine powerLine(const SystemPowerState& state) {
  const std::optional<PowerReading> reading = state.primaryPowerReading();
  if (!reading) {
    return statusLine(state);
  }
  return {.symbol = "bolt.fill",
          .symbolColor = ColorName::yellow,
          .number = fmt::format("{:.1f}", reading->watts),
          .unit = "W",
          .color = DropdownFormat::colorForReading(*reading),
          .accessibilityText = fmt::format("{}: {:.1f} watts", reading->label, reading->watts)};
}

HeroLine temperatureLine(const RepresentativeThermalInfo& info, bool useFahrenheit) {
  HeroLine line{.symbol = "thermometer.medium",
                .symbolColor = info.stateColor,
                .color = info.temperatureColor};
  if (info.temperature) {
    NumberWithUnit display =
        DropdownFormat::temperatureHeroDisplay(*info.temperature, useFahrenheit);
    line.number = std::move(display.number);
    line.unit = std::move(display.unit);
    line.accessibilityText = fmt::format("{}: {}{}", info.sourceLabel, line.number, line.unit);
  } else {
    line.number = "--";
    line.isStatus = true;
    line.accessibilityText = info.sourceLabel + ": no temperature";
  }
  return line;
}

HeroLine rateLine(const char* symbol, ColorName color, const char* name, double bytesPerSecond) {
  HeroLine line{.symbol = symbol,
                .symbolColor = color,
                .number = formatBytesPerSec(bytesPerSecond, appByteStyle)};
  line.accessibilityText = fmt::format("{}: {}", name, line.number);
  return line;
}

}  // namespace

HeroMetric heroMetric(GraphMode mode, const SystemPowerState& state, bool useFahrenheit) {
  HeroMetric metric{.mode = mode};
  switch (mode) {
    case GraphMode::power:
      metric.lines = {powerLine(state)};
      break;
    case GraphMode::temperature: {
      const RepresentativeThermalInfo info = representativeThermalInfo(state);
      metric.lines = {temperatureLine(info, useFahrenheit)};
      metric.stateLabel = ColoredText{info.stateLabel, info.stateColor};
      metric.sourceLabel = info.sourceLabel;
      break;
    }
    case GraphMode::network: {
      const NetworkSnapshot network = state.network.value_or(NetworkSnapshot{});
      metric.lines = {
          rateLine("arrow.down", ColorName::green, "Download", network.totalBytesInPerSec()),
          rateLine("arrow.up", ColorName::blue, "Upload", network.totalBytesOutPerSec())};
      break;
    }
  }
  return metric;
}

RepresentativeThermalInfo representativeThermalInfo(const SystemPowerState& state) {
  // The large number warns later than the rows of readings do: it stands for the whole machine.
  constexpr double hot = 100.0;
  constexpr double warm = 85.0;
  const ColoredText stateInfo = DropdownFormat::thermalStateInfo(state.thermal.state);
  RepresentativeThermalInfo info{
      .stateLabel = stateInfo.text, .sourceLabel = "Thermal", .stateColor = stateInfo.color};
  if (const auto reading =
          TemperatureInsights::representativeReading(state.sensors, state.battery)) {
    info.sourceLabel = reading->label;
    info.temperature = reading->temperature;
    info.temperatureColor = ColorName::primary;
    if (reading->temperature > hot) {
      info.temperatureColor = ColorName::red;
    } else if (reading->temperature > warm) {
      info.temperatureColor = ColorName::orange;
    }
  }
  return info;
}

std::string emptyWattageStatus(const SystemPowerState& state) {
  if (state.battery && state.battery->isCharging) {
    return "Charging…";
  }
  if (state.battery && state.battery->acConnected) {
    return "On AC";
  }
  return "Collecting…";
}

}  // namespace quorvex
