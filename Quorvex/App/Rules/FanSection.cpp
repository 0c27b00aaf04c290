#include "FanSection.h"

#include <fmt/format.h>

#include <algorithm>

namespace quorvex {

namespace {

std::string rpmText(std::int64_t rpm) {
  return fmt::format("{} RPM", rpm);
}

/// A fan of equal limits stands at the bottom until it exceeds them.
double speedFraction(const FanInfo& fan) {
  if (fan.maxRPM <= fan.minRPM) {
    return fan.currentRPM <= fan.minRPM ? 0.0 : 1.0;
  }
  const auto low = static_cast<double>(fan.minRPM);
  const double range = static_cast<double>(fan.maxRPM) - low;
  return std::clamp((static_cast<double>(fan.currentRPM) - low) / range, 0.0, 1.0);
}

FanRow fanRow(const FanInfo& fan) {
  return {
      .name = fan.name,
      .currentText = rpmText(fan.currentRPM),
      .minText = rpmText(fan.minRPM),
      .maxText = rpmText(fan.maxRPM),
      .fraction = speedFraction(fan),
      .accessibilityText = fmt::format("{}: {}, from {} to {}", fan.name, rpmText(fan.currentRPM),
                                       rpmText(fan.minRPM), rpmText(fan.maxRPM))};
}

}  // namespace

FanSection fanSection(std::span<const FanInfo> fans) {
  FanSection section{.title = "Fans"};
  section.rows.reserve(fans.size());
  for (const FanInfo& fan : fans) {
    section.rows.push_back(fanRow(fan));
  }
  if (section.rows.empty()) {
    section.emptyText = "No Data";
  }
  return section;
}

}  // namespace quorvex
