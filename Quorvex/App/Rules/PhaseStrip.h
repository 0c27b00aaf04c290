#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Appearance.h"
#include "PowerSessionReport.h"

namespace quorvex {

/// The phases of a session on one power source, put together.
struct PhaseGroup {
  std::string id;  ///< source kind, "-", and "true", "false" or "nil"
  std::string sourceKind;
  std::string label;  ///< of the first phase
  std::optional<bool> acConnected;
  double durationSeconds = 0.0;
  std::optional<std::int64_t> batteryPercentDelta;  ///< sum of those present

  bool operator==(const PhaseGroup&) const = default;
};

/// The groups of phases, longest first.
[[nodiscard]] std::vector<PhaseGroup> phaseGroups(std::span<const PowerSessionPhaseDigest> phases);

/// Sum of the groups' durations in seconds.
[[nodiscard]] double totalDuration(std::span<const PhaseGroup> groups);

/// A strip that shows for how long a session ran on which power source.
struct PhaseStrip {
  struct Bar {
    std::string id;
    ColorName color = ColorName::secondary;
    double fraction = 0.0;     ///< of the width, 0 to 1
    std::string label;         ///< for the legend: the source
    std::string durationText;  ///< for the legend
    std::string accessibilityText;

    bool operator==(const Bar&) const = default;
  };

  std::vector<Bar> bars;
  bool showsLegend = false;
  std::string accessibilityText;  ///< the strip in words; empty without bars

  bool operator==(const PhaseStrip&) const = default;
};

[[nodiscard]] PhaseStrip phaseStrip(std::span<const PowerSessionPhaseDigest> phases,
                                    bool showsLegend);

}  // namespace quorvex
