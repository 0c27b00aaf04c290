#include "PowerSessionStoryGenerator.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

#include "PowerReading.h"
#include "RawEnum.h"
#include "Text.h"

namespace quorvex::PowerSessionStoryGenerator {

namespace {

/// Changes of charge of fewer percent are not worth a word.
constexpr std::int64_t notablePercent = 6;

bool isOn(const PowerSessionPhaseDigest& phase, PowerReadingKind kind) {
  return phase.sourceKind == rawValue(kind);
}

bool isDischarging(const PowerSessionPhaseDigest& phase) {
  return isOn(phase, PowerReadingKind::batteryDischarge) ||
         isOn(phase, PowerReadingKind::batterySupplement);
}

/// The size of a change, also of the least whole number.
std::uint64_t sizeOf(std::int64_t change) {
  const auto bits = static_cast<std::uint64_t>(change);
  return change < 0 ? std::uint64_t{0} - bits : bits;
}

std::string formatDuration(double seconds) {
  // Far above every session and well within the range of whole numbers.
  constexpr double longest = 1e15;
  const double rounded = std::round(seconds);
  const std::int64_t whole =
      rounded > 0.0 ? static_cast<std::int64_t>(std::min(rounded, longest)) : 0;
  const std::int64_t hours = whole / 3600;
  const std::int64_t minutes = whole % 3600 / 60;
  if (hours == 0) {
    return fmt::format("{}m", minutes);
  }
  return minutes == 0 ? fmt::format("{}h", hours) : fmt::format("{}h {}m", hours, minutes);
}

std::string batteryNote(const PowerSessionReport& report) {
  const std::int64_t change = report.summary.batteryPercentDelta.value_or(0);
  if (change <= -notablePercent) {
    return fmt::format("battery dropped {}%", sizeOf(change));
  }
  if (change >= notablePercent) {
    return fmt::format("charged to {}%", report.summary.batteryPercentEnd.value_or(0));
  }
  return {};
}

/// The energy of those phases for which `counts` holds and that know theirs.
template <typename Counts>
double wattHours(const PowerSessionReport& report, Counts counts) {
  double sum = 0.0;
  for (const PowerSessionPhaseDigest& phase : report.phases) {
    if (counts(phase)) {
      sum += phase.totalWattHours.value_or(0.0);
    }
  }
  return sum;
}

std::string uniformHeadline(const PowerSessionReport& report) {
  std::string base = fmt::format("{}: {}", formatDuration(report.summary.durationSeconds),
                                 text::lowercased(report.phases.front().sourceLabel));
  if (!report.summary.averageWatts) {
    return base;
  }
  const std::string note = batteryNote(report);
  return fmt::format("{} · {:.0f}W avg{}{}", base, *report.summary.averageWatts,
                     note.empty() ? "" : ", ", note);
}

std::string mixedHeadline(const PowerSessionReport& report) {
  constexpr double notableWattHours = 0.5;
  std::vector<std::string> parts;
  const double discharged = wattHours(report, isDischarging);
  if (discharged > notableWattHours) {
    parts.push_back(fmt::format("{:.0f} Wh discharged", discharged));
  }
  const double charged = wattHours(report, [](const PowerSessionPhaseDigest& phase) {
    return isOn(phase, PowerReadingKind::batteryChargeInput);
  });
  if (charged > notableWattHours) {
    parts.push_back(fmt::format("{:.0f} Wh charged", charged));
  }
  if (report.summary.maxWatts) {
    parts.push_back(fmt::format("peak {:.0f}W", *report.summary.maxWatts));
  }
  const std::string base =
      report.phases.size() == 1 ? "session" : fmt::format("{}-phase session", report.phases.size());
  return fmt::format("{} {}{}{}", formatDuration(report.summary.durationSeconds), base,
                     parts.empty() ? "" : ": ", fmt::join(parts, ", "));
}

std::string makeHeadline(const PowerSessionReport& report) {
  return report.phases.empty() || report.hasMixedPowerSources() ? mixedHeadline(report)
                                                                : uniformHeadline(report);
}

std::string_view workload(double averageWatts) {
  if (averageWatts < 10.0) {
    return "Idle / light usage";
  }
  if (averageWatts < 25.0) {
    return "Moderate workload";
  }
  return averageWatts < 40.0 ? "Heavy workload" : "Power spike";
}

std::string makeNarrative(const PowerSessionPhaseDigest& phase) {
  const std::int64_t change = phase.batteryPercentDelta.value_or(0);
  if (isOn(phase, PowerReadingKind::batteryChargeInput)) {
    return change >= 1 ? fmt::format("Charged {}%", change) : "Charging";
  }
  if (isOn(phase, PowerReadingKind::ioReportSiliconPower) ||
      (phase.acConnected == true && !isDischarging(phase))) {
    return phase.averageWatts ? fmt::format("{} ({:.0f}W avg, on AC)",
                                            workload(*phase.averageWatts), *phase.averageWatts)
                              : "On AC";
  }
  if (phase.averageWatts) {
    return fmt::format("{} ({:.0f}W avg)", workload(*phase.averageWatts), *phase.averageWatts);
  }
  return change < 0 ? "Battery discharging" : "Battery draw";
}

std::vector<std::string> makeHighlights(const PowerSessionPhaseDigest& phase) {
  constexpr double notablePeakWatts = 10.0;
  constexpr double notableWattHours = 1.0;
  std::vector<std::string> highlights;
  const std::int64_t change = phase.batteryPercentDelta.value_or(0);
  if (change <= -notablePercent) {
    highlights.push_back(fmt::format("Battery dropped {}%", sizeOf(change)));
  } else if (change >= notablePercent) {
    highlights.push_back(fmt::format("Charged {}%", change));
  }
  if (phase.averageWatts && phase.maxWatts &&
      *phase.maxWatts - *phase.averageWatts > notablePeakWatts) {
    highlights.push_back(fmt::format("Peak ~{:.0f}W", *phase.maxWatts));
  }
  if (phase.totalWattHours && *phase.totalWattHours > notableWattHours) {
    highlights.push_back(fmt::format("Used {:.1f} Wh", *phase.totalWattHours));
  }
  return highlights;
}

}  // namespace

PowerSessionStory story(const PowerSessionReport& report, const std::string& locale) {
  PowerSessionStory story{.headline = makeHeadline(report), .episodes = {}};
  const ShortTimeFormat time{locale};
  for (const PowerSessionPhaseDigest& phase : report.phases) {
    story.episodes.push_back(
        {.timeRange = fmt::format("{} – {}", time.text(phase.startedAt), time.text(phase.endedAt)),
         .phase = phase.sourceLabel,
         .narrative = makeNarrative(phase),
         .highlights = makeHighlights(phase)});
  }
  return story;
}

}  // namespace quorvex::PowerSessionStoryGenerator
