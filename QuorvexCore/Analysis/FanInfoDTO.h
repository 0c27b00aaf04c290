#pragma once

#include <cstdint>
#include <string>

#include "FanInfo.h"
#include "RecordFields.h"

namespace quorvex {

/// The stored form of one fan; speeds in revolutions per minute.
struct FanInfoDTO {
  FanInfoDTO() = default;
  explicit FanInfoDTO(const FanInfo& info);

  std::int64_t id = 0;
  std::string name;
  std::int64_t currentRPM = 0;
  std::int64_t minRPM = 0;
  std::int64_t maxRPM = 0;

  bool operator==(const FanInfoDTO&) const = default;
};

template <>
struct RecordFields<FanInfoDTO> {
  static constexpr std::tuple values{
      RecordField{"currentRPM", &FanInfoDTO::currentRPM},
      RecordField{"id", &FanInfoDTO::id},
      RecordField{"maxRPM", &FanInfoDTO::maxRPM},
      RecordField{"minRPM", &FanInfoDTO::minRPM},
      RecordField{"name", &FanInfoDTO::name},
  };
};

}  // namespace quorvex
