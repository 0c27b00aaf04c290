#pragma once

#include <string>
#include <string_view>

namespace quorvex {

/// The colours that a rule may give, by their meaning to the system's palette. The views map them
/// to the light and dark appearance. `primary` is ordinary text, `secondary` quieter text.
enum class ColorName { primary, secondary, green, yellow, orange, red, blue, mint };

/// The colour's own name, such as "green".
[[nodiscard]] std::string_view rawValue(ColorName color);

/// A text and the colour that it is shown in.
struct ColoredText {
  std::string text;
  ColorName color = ColorName::primary;

  bool operator==(const ColoredText&) const = default;
};

/// One row of a section: what is measured, and the formatted value.
struct LabelledValue {
  std::string label;
  std::string value;
  ColorName color = ColorName::primary;  ///< of the value

  bool operator==(const LabelledValue&) const = default;
};

}  // namespace quorvex
