#pragma once

#include <cstdint>
#include <string>

#include "RecordFields.h"

namespace quorvex {

/// One way in which the instruments contradicted each other during a session.
struct PowerSessionTelemetryConsistencyCheck {
  std::string code;      ///< identity
  std::string severity;  ///< "warning" or "info"
  std::string message;
  std::int64_t sampleCount = 0;  ///< samples in which it was seen, at least 1

  bool operator==(const PowerSessionTelemetryConsistencyCheck&) const = default;
};

template <>
struct RecordFields<PowerSessionTelemetryConsistencyCheck> {
  static constexpr std::tuple values{
      RecordField{"code", &PowerSessionTelemetryConsistencyCheck::code},
      RecordField{"message", &PowerSessionTelemetryConsistencyCheck::message},
      RecordField{"sampleCount", &PowerSessionTelemetryConsistencyCheck::sampleCount},
      RecordField{"severity", &PowerSessionTelemetryConsistencyCheck::severity},
  };
};

}  // namespace quorvex
