#pragma once

#include <cstdint>
#include <string>

#include "RecordFields.h"
#include "ThermalInfo.h"

namespace quorvex {

/// The stored form of the thermal state.
struct ThermalInfoDTO {
  ThermalInfoDTO() = default;
  explicit ThermalInfoDTO(const ThermalInfo& info);

  std::string state;          ///< "nominal", "fair", "serious" or "critical"
  std::int64_t pressure = 0;  ///< 0 to 4
  bool isLowPowerMode = false;

  bool operator==(const ThermalInfoDTO&) const = default;
};

template <>
struct RecordFields<ThermalInfoDTO> {
  static constexpr std::tuple values{
      RecordField{"isLowPowerMode", &ThermalInfoDTO::isLowPowerMode},
      RecordField{"pressure", &ThermalInfoDTO::pressure},
      RecordField{"state", &ThermalInfoDTO::state},
  };
};

}  // namespace quorvex
