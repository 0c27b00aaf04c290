#pragma once

#include <array>
#include <string>
#include <string_view>

#include "RawEnum.h"

namespace quorvex {

/// What a power reading measures.
enum class PowerReadingKind {
  batteryDischarge,     ///< battery terminal power while unplugged: the whole system's draw
  batteryChargeInput,   ///< power going into the battery: not the system's load
  batterySupplement,    ///< power leaving the battery on AC: the adapter is not keeping up
  ioReportSiliconPower  ///< silicon energy model: CPU, GPU, ANE and DRAM only
};

template <>
struct RawTexts<PowerReadingKind> {
  static constexpr std::array values{
      std::pair{PowerReadingKind::batteryDischarge, std::string_view{"batteryDischarge"}},
      std::pair{PowerReadingKind::batteryChargeInput, std::string_view{"batteryChargeInput"}},
      std::pair{PowerReadingKind::batterySupplement, std::string_view{"batterySupplement"}},
      std::pair{PowerReadingKind::ioReportSiliconPower, std::string_view{"ioReportSiliconPower"}}};
};

/// How the number was measured.
enum class PowerReadingConfidence { batteryTerminal, ioReport };

template <>
struct RawTexts<PowerReadingConfidence> {
  static constexpr std::array values{
      std::pair{PowerReadingConfidence::batteryTerminal, std::string_view{"batteryTerminal"}},
      std::pair{PowerReadingConfidence::ioReport, std::string_view{"ioReport"}}};
};

/// The short display label of a kind; a static text.
[[nodiscard]] std::string_view readingLabel(PowerReadingKind kind);

/// One line on what a number of this kind is and is not; a static text.
[[nodiscard]] std::string_view readingSummary(PowerReadingKind kind);

/// How numbers of a kind are measured.
[[nodiscard]] PowerReadingConfidence readingConfidence(PowerReadingKind kind);

/// The one number that stands as total power, with its honest label.
struct PowerReading {
  double watts = 0.0;  ///< magnitude in watts, never negative
  PowerReadingKind kind = PowerReadingKind::batteryDischarge;
  std::string label;    ///< short display label
  std::string summary;  ///< one line: what the number is and is not
  PowerReadingConfidence confidence = PowerReadingConfidence::batteryTerminal;

  bool operator==(const PowerReading&) const = default;
};

}  // namespace quorvex
