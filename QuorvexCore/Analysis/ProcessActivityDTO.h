#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ProcessActivityInfo.h"
#include "RecordFields.h"

namespace quorvex {

/// The stored form of one process row of a sample.
struct ProcessActivityDTO {
  ProcessActivityDTO() = default;
  explicit ProcessActivityDTO(const ProcessActivityInfo& info);

  std::int32_t pid = 0;
  std::string name;
  double cpuPercent = 0.0;          ///< percent of one core
  double wakeupsPerSecond = 0.0;    ///< wakeups per second
  double diskBytesPerSecond = 0.0;  ///< bytes per second
  std::optional<double> energyWattsEstimate;
  double impactScore = 0.0;  ///< relative, no unit
  std::string confidence;    ///< always "estimated" in what is written

  bool operator==(const ProcessActivityDTO&) const = default;
};

template <>
struct RecordFields<ProcessActivityDTO> {
  static constexpr std::tuple values{
      RecordField{"confidence", &ProcessActivityDTO::confidence},
      RecordField{"cpuPercent", &ProcessActivityDTO::cpuPercent},
      RecordField{"diskBytesPerSecond", &ProcessActivityDTO::diskBytesPerSecond},
      RecordField{"energyWattsEstimate", &ProcessActivityDTO::energyWattsEstimate},
      RecordField{"impactScore", &ProcessActivityDTO::impactScore},
      RecordField{"name", &ProcessActivityDTO::name},
      RecordField{"pid", &ProcessActivityDTO::pid},
      RecordField{"wakeupsPerSecond", &ProcessActivityDTO::wakeupsPerSecond},
  };
};

}  // namespace quorvex
