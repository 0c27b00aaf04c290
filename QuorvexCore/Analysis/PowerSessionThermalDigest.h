#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "Observation.h"
#include "RawEnum.h"

namespace quorvex {

/// How long a session was how hot. It measures time, and so differs from the thermal summary, which
/// is a statistic of sensor maxima: one minute at 95 degrees is `throttled` here, also without the
/// system reporting pressure. Temperatures are degrees Celsius, times seconds.
struct PowerSessionThermalDigest {
  /// In rising order.
  enum class Verdict {
    cool,
    warm,           ///< some time at 70 degrees or more
    hotControlled,  ///< some time at 80 degrees or more
    throttled,      ///< thermal pressure of 2 or more, or a minute at 95 degrees or more
  };

  std::optional<double> peakTemperatureCelsius;  ///< absent if no sample has a temperature
  // At or above each band. The bands are cumulative: time at 96 degrees counts in four of them.
  double timeAbove70C = 0.0;
  double timeAbove80C = 0.0;
  double timeAbove90C = 0.0;
  double timeAbove95C = 0.0;
  double timeAbove100C = 0.0;
  std::int64_t maxThermalPressure = 0;       ///< at least 0
  bool thermalPressureWasTriggered = false;  ///< `maxThermalPressure` is above 0
  Verdict verdict = Verdict::cool;

  bool operator==(const PowerSessionThermalDigest&) const = default;
};

template <>
struct RawTexts<PowerSessionThermalDigest::Verdict> {
  static constexpr std::array values{
      std::pair{PowerSessionThermalDigest::Verdict::cool, std::string_view{"cool"}},
      std::pair{PowerSessionThermalDigest::Verdict::warm, std::string_view{"warm"}},
      std::pair{PowerSessionThermalDigest::Verdict::hotControlled,
                std::string_view{"hotControlled"}},
      std::pair{PowerSessionThermalDigest::Verdict::throttled, std::string_view{"throttled"}}};
};

/// Condenses temperature histories. Pure functions; any thread.
namespace PowerSessionThermalDigestBuilder {

/// The digest of a session's samples, in any order, from their columns alone. Time between two
/// neighbours counts for a band only if both ends reached it, and not at all across a gap
/// (`maxSampleGap`). No samples at all is a fatal error. `sampleInterval`: seconds, as configured.
[[nodiscard]] PowerSessionThermalDigest digest(std::span<const SampleColumns> samples,
                                               double sampleInterval);
[[nodiscard]] PowerSessionThermalDigest digest(std::span<const Observation> samples,
                                               double sampleInterval);

}  // namespace PowerSessionThermalDigestBuilder

}  // namespace quorvex
