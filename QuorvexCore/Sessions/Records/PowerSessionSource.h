#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "RawEnum.h"

namespace quorvex {

/// What started a session. Stored and exported as its text.
enum class PowerSessionSource {
  app,  ///< the menu-bar app
  cli,  ///< the `session` command
};

template <>
struct RawTexts<PowerSessionSource> {
  static constexpr std::array values{std::pair{PowerSessionSource::app, std::string_view{"app"}},
                                     std::pair{PowerSessionSource::cli, std::string_view{"cli"}}};
};

}  // namespace quorvex
