#include "SessionControls.h"

#include <fmt/format.h>

#include "DropdownFormat.h"

namespace quorvex {

SessionControls idleSessionControls() {
  return {.label = "Session",
          .labelSymbol = "record.circle",
          .button = {.title = "Start",
                     .symbol = "play.fill",
                     .help = "Quick-start a named benchmark from the dashboard, or start now with "
                             "an automatic title.",
                     .accessibilityLabel = "Start session"},
          .accessibilityText = "Session: not recording"};
}

SessionControls activeSessionControls(Date startedAt, const PowerSessionSummary& summary,
                                      Date now) {
  SessionControls controls{
      .isRecording = true,
      .labelSymbol = "record.circle",
      .elapsed = DropdownFormat::formatDuration(secondsBetween(startedAt, now)),
      .button = {.title = "Stop", .symbol = "stop.fill", .accessibilityLabel = "Stop session"}};
  if (summary.powerSegments.size() < 2) {
    controls.figures = {
        summary.averageWatts ? fmt::format("{:.1f}W avg", *summary.averageWatts) : "avg --",
        summary.totalWattHours ? fmt::format("{:.3f}Wh", *summary.totalWattHours) : "Wh --"};
  } else {
    // One average over mixed sources has no meaning.
    controls.figures = {"segmented"};
  }
  controls.accessibilityText = "Recording: " + controls.elapsed;
  for (const std::string& figure : controls.figures) {
    controls.accessibilityText += ", " + figure;
  }
  return controls;
}

}  // namespace quorvex
