#pragma once

#include <optional>
#include <string>
#include <vector>

#include "AppSettings.h"
#include "Appearance.h"
#include "SystemPowerState.h"

namespace quorvex {

/// One line of the dropdown's hero number.
struct HeroLine {
  std::string symbol;
  ColorName symbolColor = ColorName::primary;
  std::string number;  ///< or a word of state, see `isStatus`
  std::string unit;    ///< drawn smaller; empty where the number carries its unit
  ColorName color = ColorName::primary;
  bool isStatus = false;  ///< `number` is a word that stands where no number is to be had
  std::string accessibilityText;

  bool operator==(const HeroLine&) const = default;
};

/// The large number at the top of the dropdown.
struct HeroMetric {
  GraphMode mode = GraphMode::power;
  std::vector<HeroLine> lines;            ///< two for the network, else one
  std::optional<ColoredText> stateLabel;  ///< temperature only: the thermal state
  std::string sourceLabel;                ///< temperature only: what was measured

  bool operator==(const HeroMetric&) const = default;
};

[[nodiscard]] HeroMetric heroMetric(GraphMode mode, const SystemPowerState& state,
                                    bool useFahrenheit);

/// The temperature that stands for the machine, and the state that the system gives it.
struct RepresentativeThermalInfo {
  std::string stateLabel;
  std::string sourceLabel;                            ///< "Thermal" without a reading
  ColorName stateColor = ColorName::primary;          ///< of the thermal state
  ColorName temperatureColor = ColorName::secondary;  ///< of the number
  std::optional<double> temperature;                  ///< degrees Celsius

  bool operator==(const RepresentativeThermalInfo&) const = default;
};

[[nodiscard]] RepresentativeThermalInfo representativeThermalInfo(const SystemPowerState& state);

/// The word in place of a missing wattage.
[[nodiscard]] std::string emptyWattageStatus(const SystemPowerState& state);

}  // namespace quorvex
