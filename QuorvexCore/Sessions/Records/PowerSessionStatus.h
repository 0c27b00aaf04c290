#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "RawEnum.h"

namespace quorvex {

/// Where a session stands. Stored and exported as its text.
enum class PowerSessionStatus {
  active,       ///< being recorded, or left so by a process that died
  completed,    ///< stopped in an orderly way
  interrupted,  ///< closed, but not by a user's stop
};

template <>
struct RawTexts<PowerSessionStatus> {
  static constexpr std::array values{
      std::pair{PowerSessionStatus::active, std::string_view{"active"}},
      std::pair{PowerSessionStatus::completed, std::string_view{"completed"}},
      std::pair{PowerSessionStatus::interrupted, std::string_view{"interrupted"}}};
};

}  // namespace quorvex
