#pragma once

#include <optional>
#include <string>
#include <vector>

#include "AppSettings.h"
#include "Appearance.h"
#include "SystemPowerState.h"

namespace quorvex {

/// The word on the adapter, in a pill of its own colour.
struct AdapterPill {
  std::string label;
  std::string symbol;  ///< empty for none
  ColorName color = ColorName::green;
  double fillOpacity = 0.0;  ///< of the same colour behind the text
  std::string help;

  bool operator==(const AdapterPill&) const = default;
};

/// What stands beside the hero number.
struct HeroContext {
  GraphMode mode = GraphMode::power;
  std::optional<AdapterPill> adapterPill;  ///< power only
  std::vector<std::string> components;     ///< power only: what the silicon draws; else `text`
  std::optional<ColoredText> text;         ///< one word or figure

  bool operator==(const HeroContext&) const = default;
};

[[nodiscard]] HeroContext heroContext(GraphMode mode, const SystemPowerState& state);

/// Watts that leave the battery beyond what the silicon model explains; absent with a charging
/// battery, without silicon or battery figures, and up to 0.05 W.
[[nodiscard]] std::optional<double> currentUnattributedWatts(const SystemPowerState& state);

/// Absent unless a battery is there and AC is connected.
[[nodiscard]] std::optional<AdapterPill> adapterStatusPill(const SystemPowerState& state);

}  // namespace quorvex
