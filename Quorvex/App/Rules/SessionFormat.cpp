#include "SessionFormat.h"

#include <fmt/format.h>

#include <cmath>

#include "DropdownFormat.h"
#include "PowerReading.h"
#include "PowerSessionMetrics.h"

namespace quorvex {

std::string formatSessionDuration(double seconds) {
  return DropdownFormat::formatDuration(std::round(seconds));
}

namespace SessionFormat {

std::string wattsText(std::optional<double> watts) {
  return watts ? DropdownFormat::formatWatts(*watts) : std::string{absentValue};
}

std::string percentDeltaText(std::optional<std::int64_t> delta) {
  return delta ? fmt::format("{:+d}%", *delta) : std::string{absentValue};
}

std::string temperatureText(std::optional<double> celsius, bool useFahrenheit) {
  if (!celsius) {
    return std::string{absentValue};
  }
  return fmt::format("{:.0f} {}", DropdownFormat::displayedTemperature(*celsius, useFahrenheit),
                     useFahrenheit ? 'F' : 'C');
}

std::string timeRangeText(Date startedAt, Date endedAt, const ShortTimeFormat& times) {
  return times.text(startedAt) + " – " + times.text(endedAt);
}

std::string samplesText(std::int64_t count) {
  return fmt::format("{} samples", count);
}

std::string primaryPowerText(const PowerSessionSummary& summary) {
  if (summary.averageWatts) {
    return wattsText(summary.averageWatts);
  }
  if (summary.averageWattsNote == PowerSessionMetrics::sparsePowerCoverageNote) {
    return "Sparse";
  }
  if (summary.powerSegments.size() >= 2) {
    return fmt::format("{} phases", summary.powerSegments.size());
  }
  return std::string{absentValue};
}

bool hasSparsePowerCoverage(const PowerSessionSummary& summary) {
  return summary.averageWattsNote == PowerSessionMetrics::sparsePowerCoverageNote ||
         summary.totalWattHoursNote == PowerSessionMetrics::sparsePowerCoverageNote;
}

ColorName colorForSource(std::string_view sourceKind, std::optional<bool> acConnected) {
  if (const auto kind = fromRawValue<PowerReadingKind>(sourceKind)) {
    switch (*kind) {
      case PowerReadingKind::batteryDischarge:
        return ColorName::orange;
      case PowerReadingKind::batteryChargeInput:
        return ColorName::green;
      case PowerReadingKind::batterySupplement:
        return ColorName::yellow;
      case PowerReadingKind::ioReportSiliconPower:
        return ColorName::blue;
    }
  }
  return acConnected.value_or(false) ? ColorName::mint : ColorName::secondary;
}

}  // namespace SessionFormat

}  // namespace quorvex
