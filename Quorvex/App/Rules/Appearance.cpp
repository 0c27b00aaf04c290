#include "Appearance.h"

#include "FatalError.h"

namespace quorvex {

std::string_view rawValue(ColorName color) {
  switch (color) {
    case ColorName::primary:
      return "primary";
    case ColorName::secondary:
      return "secondary";
    case ColorName::green:
      return "green";
    case ColorName::yellow:
      return "yellow";
    case ColorName::orange:
      return "orange";
    case ColorName::red:
      return "red";
    case ColorName::blue:
      return "blue";
    case ColorName::mint:
      return "mint";
  }
  fatalError("Unknown colour");
}

}  // namespace quorvex
