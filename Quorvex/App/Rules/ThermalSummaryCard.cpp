#include "ThermalSummaryCard.h"

#include <fmt/format.h>

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "DropdownFormat.h"
#include "SessionFormat.h"

namespace quorvex {

namespace {

std::string peakTempText(const PowerSessionThermalDigest& digest, bool useFahrenheit) {
  if (!digest.peakTemperatureCelsius) {
    return "Thermal: --";
  }
  return "Peak " + DropdownFormat::formatTemp(*digest.peakTemperatureCelsius, useFahrenheit);
}

/// Without the band of 95 degrees, which only decides the verdict.
std::string timeAboveText(const PowerSessionThermalDigest& digest) {
  const std::array<std::pair<double, std::string_view>, 4> bands{
      std::pair{digest.timeAbove70C, std::string_view{" above 70°C"}},
      std::pair{digest.timeAbove80C, std::string_view{" above 80°C"}},
      std::pair{digest.timeAbove90C, std::string_view{" above 90°C"}},
      std::pair{digest.timeAbove100C, std::string_view{" above 100°C"}}};
  std::vector<std::string> pieces;
  for (const auto& [seconds, text] : bands) {
    if (seconds > 0.0) {
      pieces.push_back(fmt::format("{}{}", formatSessionDuration(seconds), text));
    }
  }
  return fmt::format("{}", fmt::join(pieces, " · "));
}

std::string pressureNote(const PowerSessionThermalDigest& digest) {
  if (!digest.thermalPressureWasTriggered) {
    return "macOS reported no thermal pressure";
  }
  return fmt::format("macOS reported thermal pressure (level {})", digest.maxThermalPressure);
}

}  // namespace

ColoredText verdictText(PowerSessionThermalDigest::Verdict verdict) {
  using Verdict = PowerSessionThermalDigest::Verdict;
  switch (verdict) {
    case Verdict::cool:
      break;
    case Verdict::warm:
      return {"Warm", ColorName::yellow};
    case Verdict::hotControlled:
      return {"Hot, controlled", ColorName::orange};
    case Verdict::throttled:
      return {"Throttling detected", ColorName::red};
  }
  return {"Cool", ColorName::green};
}

ThermalSummaryCard thermalSummaryCard(const PowerSessionThermalDigest& digest, bool useFahrenheit) {
  ThermalSummaryCard card{.symbol = "thermometer.medium",
                          .verdict = verdictText(digest.verdict),
                          .peakTempText = peakTempText(digest, useFahrenheit),
                          .timeAboveText = timeAboveText(digest),
                          .pressureNote = pressureNote(digest)};
  card.accessibilityText =
      fmt::format("{}. {}. {}{}{}", card.verdict.text, card.peakTempText, card.timeAboveText,
                  card.timeAboveText.empty() ? "" : ". ", card.pressureNote);
  return card;
}

}  // namespace quorvex
