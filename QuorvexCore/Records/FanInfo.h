#pragma once

#include <cstdint>
#include <string>

namespace quorvex {

/// One fan as the SMC reports it. Speeds are revolutions per minute, 0 when the SMC gave none.
struct FanInfo {
  std::int64_t id = 0;          ///< the SMC's fan index, from 0
  std::string name;             ///< display name
  std::int64_t currentRPM = 0;  ///< present speed
  std::int64_t minRPM = 0;      ///< lowest speed
  std::int64_t maxRPM = 0;      ///< highest speed

  bool operator==(const FanInfo&) const = default;
};

}  // namespace quorvex
