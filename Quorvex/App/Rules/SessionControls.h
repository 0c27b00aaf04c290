#pragma once

#include <string>
#include <vector>

#include "Controls.h"
#include "Date.h"
#include "PowerSessionSummary.h"

namespace quorvex {

/// The dropdown's controls of measurement sessions.
struct SessionControls {
  bool isRecording = false;
  std::string label;  ///< before the button while nothing is recorded
  std::string labelSymbol;
  std::string elapsed;               ///< while recording
  std::vector<std::string> figures;  ///< while recording: average and energy, or one word
  CommandButton button;              ///< starts or stops
  std::string accessibilityText;     ///< of all but the button

  bool operator==(const SessionControls&) const = default;
};

/// The controls without a recording.
[[nodiscard]] SessionControls idleSessionControls();

/// The controls of a recording that began at `startedAt`; `summary` is the running one. Call again
/// each second.
[[nodiscard]] SessionControls activeSessionControls(Date startedAt,
                                                    const PowerSessionSummary& summary, Date now);

}  // namespace quorvex
