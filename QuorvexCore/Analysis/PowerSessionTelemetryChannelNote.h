#pragma once

#include <string>
#include <vector>

#include "RecordFields.h"

namespace quorvex {

/// What one channel of telemetry measures, and how far it may be trusted.
struct PowerSessionTelemetryChannelNote {
  std::string channel;
  std::string trustLevel;
  std::string meaning;
  std::string caution;

  bool operator==(const PowerSessionTelemetryChannelNote&) const = default;
};

template <>
struct RecordFields<PowerSessionTelemetryChannelNote> {
  static constexpr std::tuple values{
      RecordField{"caution", &PowerSessionTelemetryChannelNote::caution},
      RecordField{"channel", &PowerSessionTelemetryChannelNote::channel},
      RecordField{"meaning", &PowerSessionTelemetryChannelNote::meaning},
      RecordField{"trustLevel", &PowerSessionTelemetryChannelNote::trustLevel},
  };
};

namespace PowerSessionAnalysis {

/// The five channels, the same for every session. Made once; any thread.
[[nodiscard]] const std::vector<PowerSessionTelemetryChannelNote>& telemetryChannelNotes();

}  // namespace PowerSessionAnalysis

}  // namespace quorvex
