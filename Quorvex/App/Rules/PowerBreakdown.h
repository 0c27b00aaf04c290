#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Appearance.h"
#include "Date.h"
#include "ProTelemetrySnapshot.h"
#include "Sparkline.h"
#include "SystemPowerState.h"

namespace quorvex {

/// The one wattage that the power breakdown shows, and what it is.
struct DisplayPowerReading {
  double watts = 0.0;
  std::string kind;  ///< text of a `PowerReadingKind`, or "proTelemetrySiliconPower"
  std::string label;
  std::string summary;
  std::string barLabel;
  bool isChargeInput = false;

  bool operator==(const DisplayPowerReading&) const = default;
};

/// One measured component against the largest.
struct PowerBar {
  std::string label;
  std::string value;      ///< "3.0W"
  double fraction = 0.0;  ///< filled part of the width, 0 to 1
  ColorName tint = ColorName::green;
  std::string accessibilityText;

  bool operator==(const PowerBar&) const = default;
};

/// The power panel of the dashboard's live tab.
struct PowerBreakdown {
  ColoredText total;                        ///< "12.3W"; "--" without a reading
  std::string title;                        ///< `powerSourceTitle`
  std::string summary;                      ///< `powerSourceSummary`
  std::optional<PowerBar> bar;              ///< of the total; absent without a reading
  std::optional<SparklineContent> history;  ///< of the total; absent without readings
  std::vector<PowerBar> components;
  /// In place of the components: a symbol and why there are none. Empty texts otherwise.
  std::string unavailableSymbol;
  std::string unavailableText;
  std::string accessibilityText;  ///< the total and what it is, in one sentence

  bool operator==(const PowerBreakdown&) const = default;
};

/// `state` is the newest reading, `history` holds it and those before, oldest first;
/// `proTelemetry` is the latest privileged snapshot.
[[nodiscard]] PowerBreakdown powerBreakdown(const SystemPowerState& state,
                                            std::span<const SystemPowerState> history,
                                            const std::optional<ProTelemetrySnapshot>& proTelemetry,
                                            Date now);

/// The primary reading; else the total of a privileged sample of the last 15 seconds; else none.
[[nodiscard]] std::optional<DisplayPowerReading> currentPowerReading(
    const SystemPowerState& state, const std::optional<ProTelemetrySnapshot>& proTelemetry,
    Date now);
[[nodiscard]] DisplayPowerReading displayPowerReading(const PowerReading& reading);

/// What the total is, or why there is none.
[[nodiscard]] std::string powerSourceTitle(const SystemPowerState& state,
                                           const std::optional<ProTelemetrySnapshot>& proTelemetry,
                                           Date now);
[[nodiscard]] std::string powerSourceSummary(
    const SystemPowerState& state, const std::optional<ProTelemetrySnapshot>& proTelemetry,
    Date now);

/// Watts of the full width of a bar: the largest figure shown, and at least 1.
[[nodiscard]] double maxComponentWatts(const SystemPowerState& state,
                                       const std::optional<ProTelemetrySnapshot>& proTelemetry,
                                       Date now);

/// A bar that is filled by `watts` of `maxWatts`; not at all when `maxWatts` is not above 0.
[[nodiscard]] PowerBar powerBar(std::string label, double watts, double maxWatts, ColorName tint);

/// The tint of a component's bar, by its own watts.
[[nodiscard]] ColorName componentTint(double watts);

}  // namespace quorvex
