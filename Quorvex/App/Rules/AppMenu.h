#pragma once

#include "Controls.h"

namespace quorvex {

/// The dropdown's last row.
struct CommandRow {
  CommandButton openDashboard;   ///< opens the window `AppScenes::dashboardID`
  CommandButton copyJSONReport;  ///< puts the full report on the pasteboard
  CommandButton settings;        ///< the gear: opens the settings window
  CommandButton quit;

  bool operator==(const CommandRow&) const = default;
};

[[nodiscard]] CommandRow commandRow();

}  // namespace quorvex
