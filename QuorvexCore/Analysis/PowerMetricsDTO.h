#pragma once

#include <optional>

#include "PowerMetrics.h"
#include "RecordFields.h"

namespace quorvex {

/// The stored form of a silicon reading: the fields of `PowerMetrics`, powers in watts.
struct PowerMetricsDTO {
  PowerMetricsDTO() = default;
  explicit PowerMetricsDTO(const PowerMetrics& metrics);

  double cpuPower = 0.0;
  double gpuPower = 0.0;
  double anePower = 0.0;
  double ramPower = 0.0;
  double systemPower = 0.0;
  double cpuUsagePercent = 0.0;
  std::optional<double> gpuUsagePercent;
  bool siliconChannelsComplete = false;

  bool operator==(const PowerMetricsDTO&) const = default;
};

template <>
struct RecordFields<PowerMetricsDTO> {
  static constexpr std::tuple values{
      RecordField{"anePower", &PowerMetricsDTO::anePower},
      RecordField{"cpuPower", &PowerMetricsDTO::cpuPower},
      RecordField{"cpuUsagePercent", &PowerMetricsDTO::cpuUsagePercent},
      RecordField{"gpuPower", &PowerMetricsDTO::gpuPower},
      RecordField{"gpuUsagePercent", &PowerMetricsDTO::gpuUsagePercent},
      RecordField{"ramPower", &PowerMetricsDTO::ramPower},
      RecordField{"siliconChannelsComplete", &PowerMetricsDTO::siliconChannelsComplete},
      RecordField{"systemPower", &PowerMetricsDTO::systemPower},
  };
};

}  // namespace quorvex
