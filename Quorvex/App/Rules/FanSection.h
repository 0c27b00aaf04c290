#pragma once

#include <span>
#include <string>
#include <vector>

#include "FanInfo.h"

namespace quorvex {

/// One fan between its limits.
struct FanRow {
  std::string name;
  std::string currentText;  ///< "1200 RPM"
  std::string minText;      ///< "1200 RPM", the lowest speed
  std::string maxText;      ///< "6000 RPM", the highest speed
  double fraction = 0.0;    ///< the speed between the limits, 0 to 1
  std::string accessibilityText;

  bool operator==(const FanRow&) const = default;
};

/// The fan section, in the dropdown and in the dashboard.
struct FanSection {
  std::string title;
  std::vector<FanRow> rows;  ///< in the order of `fans`
  std::string emptyText;     ///< in place of the rows; empty when there are some

  bool operator==(const FanSection&) const = default;
};

[[nodiscard]] FanSection fanSection(std::span<const FanInfo> fans);

}  // namespace quorvex
