#include "PhaseStrip.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "SessionFormat.h"

namespace quorvex {

namespace {

std::string groupID(const PowerSessionPhaseDigest& phase) {
  std::string_view connected = "nil";
  if (phase.acConnected) {
    connected = *phase.acConnected ? "true" : "false";
  }
  return fmt::format("{}-{}", phase.sourceKind, connected);
}

/// Stored percentages can be any whole numbers: the sum stays at the ends of its type.
std::int64_t saturatingSum(std::int64_t left, std::int64_t right) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(left, right, &sum)) {
    return right < 0 ? std::numeric_limits<std::int64_t>::min()
                     : std::numeric_limits<std::int64_t>::max();
  }
  return sum;
}

PhaseStrip::Bar bar(const PhaseGroup& group, double total) {
  const double fraction = total > 0.0 ? group.durationSeconds / total : 0.0;
  PhaseStrip::Bar bar{.id = group.id,
                      .color = SessionFormat::colorForSource(group.sourceKind, group.acConnected),
                      .fraction = fraction >= 0.0 ? std::min(fraction, 1.0) : 0.0,
                      .label = group.label,
                      .durationText = formatSessionDuration(group.durationSeconds)};
  bar.accessibilityText =
      fmt::format("{}: {}, {:.0f}% of the time", bar.label, bar.durationText, bar.fraction * 100.0);
  if (group.batteryPercentDelta) {
    bar.accessibilityText += fmt::format(", battery {:+d}%", *group.batteryPercentDelta);
  }
  return bar;
}

}  // namespace

std::vector<PhaseGroup> phaseGroups(std::span<const PowerSessionPhaseDigest> phases) {
  std::vector<PhaseGroup> groups;
  for (const PowerSessionPhaseDigest& phase : phases) {
    const std::string id = groupID(phase);
    auto group = std::ranges::find(groups, id, &PhaseGroup::id);
    if (group == groups.end()) {
      group = groups.insert(groups.end(), {.id = id,
                                           .sourceKind = phase.sourceKind,
                                           .label = phase.sourceLabel,
                                           .acConnected = phase.acConnected});
    }
    group->durationSeconds += phase.durationSeconds;
    if (phase.batteryPercentDelta) {
      group->batteryPercentDelta =
          saturatingSum(group->batteryPercentDelta.value_or(0), *phase.batteryPercentDelta);
    }
  }
  std::ranges::stable_sort(groups, std::ranges::greater{}, &PhaseGroup::durationSeconds);
  return groups;
}

double totalDuration(std::span<const PhaseGroup> groups) {
  double total = 0.0;
  for (const PhaseGroup& group : groups) {
    total += group.durationSeconds;
  }
  return total;
}

PhaseStrip phaseStrip(std::span<const PowerSessionPhaseDigest> phases, bool showsLegend) {
  const std::vector<PhaseGroup> groups = phaseGroups(phases);
  const double total = totalDuration(groups);
  PhaseStrip strip{.showsLegend = showsLegend};
  for (const PhaseGroup& group : groups) {
    strip.bars.push_back(bar(group, total));
    strip.accessibilityText += strip.accessibilityText.empty() ? "Power sources: " : "; ";
    strip.accessibilityText += strip.bars.back().accessibilityText;
  }
  return strip;
}

}  // namespace quorvex
