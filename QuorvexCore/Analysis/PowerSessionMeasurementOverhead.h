#pragma once

#include <optional>
#include <string>
#include <vector>

#include "RecordFields.h"

namespace quorvex {

/// Whether the monitors themselves dominated the process scores. A new record is the empty one.
struct PowerSessionMeasurementOverhead {
  bool observed = false;  ///< the monitors' share is at least 15 %
  double overheadScore = 0.0;
  double totalObservedProcessScore = 0.0;
  std::optional<double> overheadFraction;  ///< 0 to 1; absent when the total is not above 0
  std::vector<std::string> processNames;   ///< the monitors seen, each once, in byte order
  std::string note = "No process impact samples were captured.";

  /// The value of a session without samples.
  [[nodiscard]] static PowerSessionMeasurementOverhead empty() { return {}; }

  bool operator==(const PowerSessionMeasurementOverhead&) const = default;
};

template <>
struct RecordFields<PowerSessionMeasurementOverhead> {
  static constexpr std::tuple values{
      RecordField{"note", &PowerSessionMeasurementOverhead::note},
      RecordField{"observed", &PowerSessionMeasurementOverhead::observed},
      RecordField{"overheadFraction", &PowerSessionMeasurementOverhead::overheadFraction},
      RecordField{"overheadScore", &PowerSessionMeasurementOverhead::overheadScore},
      RecordField{"processNames", &PowerSessionMeasurementOverhead::processNames},
      RecordField{"totalObservedProcessScore",
                  &PowerSessionMeasurementOverhead::totalObservedProcessScore},
  };
};

}  // namespace quorvex
