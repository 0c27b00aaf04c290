#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace quorvex {

/// Lets a map with text keys be searched by a view, without making a string of it.
struct TransparentHash {
  using is_transparent = void;

  [[nodiscard]] std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>{}(text);
  }
};

}  // namespace quorvex
