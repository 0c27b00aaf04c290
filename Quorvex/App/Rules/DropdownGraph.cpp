#include "DropdownGraph.h"

#include <fmt/format.h>

#include <limits>
#include <utility>

#include "DropdownFormat.h"
#include "TemperatureInsights.h"

namespace quorvex {

namespace {

std::optional<TemperatureDisplayReading> representative(const SystemPowerState& state) {
  return TemperatureInsights::representativeReading(state.sensors, state.battery);
}

/// The greatest value, NaN left out; absent without any.
std::optional<double> peakOf(const std::vector<double>& values) {
  std::optional<double> peak;
  for (const double value : values) {
    if (value > peak.value_or(-std::numeric_limits<double>::infinity())) {
      peak = value;
    }
  }
  return peak;
}

std::optional<double> peakAboveZero(const std::vector<double>& values) {
  const std::optional<double> peak = peakOf(values);
  return peak && *peak > 0.0 ? peak : std::nullopt;
}

/// A graph of one line; `emptyText` where there is nothing to draw.
DropdownGraph graphOf(GraphMode mode, std::string label, std::vector<double> values,
                      ColorName color, const char* emptyText) {
  DropdownGraph graph{.mode = mode, .label = label};
  Sparkline sparkline{.label = label, .includesZero = mode != GraphMode::temperature};
  const bool isEmpty = values.empty();
  if (!isEmpty) {
    sparkline.series = {sparklineSeries(0, std::move(label), std::move(values), color)};
  }
  graph.sparkline = sparklineContent(sparkline);
  if (isEmpty) {
    graph.sparkline.emptyText = emptyText;
  }
  return graph;
}

void setCaption(DropdownGraph& graph, const std::string& peak) {
  graph.caption = peak + " peak";
  graph.sparkline.accessibilityLabel += ", " + *graph.caption;
}

DropdownGraph powerGraph(std::span<const SystemPowerState> history) {
  std::vector<double> values = totalPowerHistory(history);
  const std::optional<double> peak = peakAboveZero(values);
  DropdownGraph graph =
      graphOf(GraphMode::power, "Total", std::move(values), ColorName::green, "Collecting data…");
  if (peak) {
    setCaption(graph, DropdownFormat::formatWatts(*peak));
  }
  return graph;
}

DropdownGraph temperatureGraph(const SystemPowerState& state,
                               std::span<const SystemPowerState> history, bool useFahrenheit) {
  std::vector<double> values = representativeTemperatureHistory(history);
  const std::optional<double> peak = peakOf(values);
  DropdownGraph graph =
      graphOf(GraphMode::temperature, temperatureGraphLabel(state, history), std::move(values),
              ColorName::orange, "Collecting temperature data…");
  if (peak) {
    setCaption(graph, DropdownFormat::formatTemp(*peak, useFahrenheit));
  }
  return graph;
}

DropdownGraph networkGraph(std::span<const SystemPowerState> history) {
  std::vector<double> values = throughputHistory(history);
  const std::optional<double> peak = peakAboveZero(values);
  DropdownGraph graph = graphOf(GraphMode::network, "Throughput", std::move(values),
                                ColorName::blue, "Collecting network data…");
  if (peak) {
    setCaption(graph, formatBytesPerSec(*peak, appByteStyle));
  }
  return graph;
}

}  // namespace

GraphSelector graphSelector(GraphMode selected) {
  GraphSelector selector{.accessibilityLabel = "Graph mode",
                         .buttons = {{.mode = GraphMode::power,
                                      .title = "Energy",
                                      .symbol = "bolt.fill",
                                      .help = "Show energy graph",
                                      .accessibilityLabel = "Energy"},
                                     {.mode = GraphMode::temperature,
                                      .title = "Temp",
                                      .symbol = "thermometer.medium",
                                      .help = "Show temperature graph",
                                      .accessibilityLabel = "Temp"},
                                     {.mode = GraphMode::network,
                                      .symbol = "network",
                                      .help = "Show network graph",
                                      .accessibilityLabel = "Network"}}};
  for (GraphModeButton& button : selector.buttons) {
    button.isSelected = button.mode == selected;
  }
  return selector;
}

DropdownGraph dropdownGraph(GraphMode mode, const SystemPowerState& state,
                            std::span<const SystemPowerState> history, bool useFahrenheit) {
  switch (mode) {
    case GraphMode::power:
      break;
    case GraphMode::temperature:
      return temperatureGraph(state, history, useFahrenheit);
    case GraphMode::network:
      return networkGraph(history);
  }
  return powerGraph(history);
}

std::vector<double> representativeTemperatureHistory(std::span<const SystemPowerState> history) {
  std::vector<double> values;
  for (const SystemPowerState& state : history) {
    if (const auto reading = representative(state)) {
      values.push_back(reading->temperature);
    }
  }
  return values;
}

std::string temperatureGraphLabel(const SystemPowerState& state,
                                  std::span<const SystemPowerState> history) {
  if (const auto reading = representative(state)) {
    return reading->label;
  }
  for (auto earlier = history.rbegin(); earlier != history.rend(); ++earlier) {
    if (const auto reading = representative(*earlier)) {
      return reading->label;
    }
  }
  return "Thermal";
}

std::optional<DataUsedRow> dataUsedRow(const SystemPowerState& state,
                                       std::uint64_t totalBytesInSinceStart,
                                       std::uint64_t totalBytesOutSinceStart) {
  const bool hasMonitoringNetworkData =
      state.network || totalBytesInSinceStart != 0 || totalBytesOutSinceStart != 0;
  if (!hasMonitoringNetworkData) {
    return std::nullopt;
  }
  const auto direction = [](const char* symbol, ColorName color, const char* name,
                            std::uint64_t bytes) {
    DataUsed used{.symbol = symbol, .color = color, .text = formatBytes(bytes, appByteStyle)};
    used.accessibilityText = fmt::format("{}: {}", name, used.text);
    return used;
  };
  return DataUsedRow{.in = direction("arrow.down.circle.fill", ColorName::green, "Downloaded",
                                     totalBytesInSinceStart),
                     .out = direction("arrow.up.circle.fill", ColorName::blue, "Uploaded",
                                      totalBytesOutSinceStart),
                     .help = "Since monitoring started"};
}

}  // namespace quorvex
