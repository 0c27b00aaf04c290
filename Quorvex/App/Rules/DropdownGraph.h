#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "AppSettings.h"
#include "Appearance.h"
#include "Sparkline.h"
#include "SystemPowerState.h"

namespace quorvex {

/// One button of the graph selector. Choosing it stores `rawValue(mode)` under
/// `SettingsKey::menuGraphMode`.
struct GraphModeButton {
  GraphMode mode = GraphMode::power;
  std::string title;  ///< empty: the symbol alone
  std::string symbol;
  std::string help;
  std::string accessibilityLabel;
  bool isSelected = false;

  bool operator==(const GraphModeButton&) const = default;
};

struct GraphSelector {
  std::string accessibilityLabel;  ///< of the group
  std::vector<GraphModeButton> buttons;

  bool operator==(const GraphSelector&) const = default;
};

[[nodiscard]] GraphSelector graphSelector(GraphMode selected);

/// The dropdown's graph of the last readings.
struct DropdownGraph {
  GraphMode mode = GraphMode::power;
  SparklineContent sparkline;          ///< says what is collected while there is no data
  std::string label;                   ///< what the line is
  std::optional<std::string> caption;  ///< the peak

  bool operator==(const DropdownGraph&) const = default;
};

/// `state` is the newest reading, `history` holds it and those before, oldest first.
[[nodiscard]] DropdownGraph dropdownGraph(GraphMode mode, const SystemPowerState& state,
                                          std::span<const SystemPowerState> history,
                                          bool useFahrenheit);

/// The representative temperatures of the readings that have one, in degrees Celsius.
[[nodiscard]] std::vector<double> representativeTemperatureHistory(
    std::span<const SystemPowerState> history);

/// What the temperatures are of: the newest reading that knows decides.
[[nodiscard]] std::string temperatureGraphLabel(const SystemPowerState& state,
                                                std::span<const SystemPowerState> history);

/// One direction of the data row.
struct DataUsed {
  std::string symbol;
  ColorName color = ColorName::primary;
  std::string text;
  std::string accessibilityText;

  bool operator==(const DataUsed&) const = default;
};

/// The bytes moved since the engine started.
struct DataUsedRow {
  DataUsed in;
  DataUsed out;
  std::string help;

  bool operator==(const DataUsedRow&) const = default;
};

/// Absent without monitoring data: no network snapshot and nothing counted.
[[nodiscard]] std::optional<DataUsedRow> dataUsedRow(const SystemPowerState& state,
                                                     std::uint64_t totalBytesInSinceStart,
                                                     std::uint64_t totalBytesOutSinceStart);

}  // namespace quorvex
