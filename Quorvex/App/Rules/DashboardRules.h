#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "AppSettings.h"
#include "Controls.h"
#include "LocalizedDate.h"
#include "RawEnum.h"
#include "SessionCard.h"
#include "SystemPowerState.h"

namespace quorvex {

/// The tabs of the dashboard, in their order. The text is the tab's title.
enum class DashboardTab { live, history };

template <>
struct RawTexts<DashboardTab> {
  static constexpr std::array values{std::pair{DashboardTab::live, std::string_view{"Live"}},
                                     std::pair{DashboardTab::history, std::string_view{"History"}}};
};

/// A choice of one among a few, drawn as a row of segments.
struct SegmentedPicker {
  std::string label;               ///< text before it
  std::string accessibilityLabel;  ///< name of the control itself
  std::vector<std::string> options;
  std::size_t selected = 0;  ///< place in `options`

  bool operator==(const SegmentedPicker&) const = default;
};

/// What stands above both tabs. The launch-at-login control stands there too, see
/// `launchAtLoginToggle`, titled `launchAtLoginTitle` and without its caption.
struct DashboardHeader {
  std::string title;
  std::string timeText;  ///< of the engine's current state
  SegmentedPicker tabs;  ///< its places are those of `DashboardTab`
  /// Celsius, then Fahrenheit: the place is the value of `SettingsKey::useFahrenheit`.
  SegmentedPicker temperatureUnits;
  ToggleControl temperatureHighlights;
  ToggleControl advancedMetrics;
  CommandButton copyReport;  ///< puts the full report on the pasteboard

  bool operator==(const DashboardHeader&) const = default;
};

[[nodiscard]] DashboardHeader dashboardHeader(const SystemPowerState& state, DashboardTab tab,
                                              const AppSettings& settings,
                                              const ShortTimeFormat& times);

/// The sections of the live tab.
enum class LiveSection {
  proTelemetry,         ///< `HelperControls`, in a group of its own title
  measurementSessions,  ///< `SessionSection`, in a group of its own title
  battery,              ///< `BatteryGauge`
  powerBreakdown,       ///< `PowerBreakdown`, with `AdvancedMetrics` when they are wanted
  network,              ///< `NetworkSection`
  thermal,              ///< `ThermalSection`
};

/// The sections that the live tab shows, in their order.
[[nodiscard]] std::vector<LiveSection> liveSections(const SystemPowerState& state,
                                                    const AppSettings& settings);

/// The part of the live tab from which sessions are started and stopped.
struct SessionSection {
  std::string title;
  std::optional<SessionCard> card;  ///< while recording
  std::string caption;              ///< in place of the card; empty while recording
  std::string namePrompt;           ///< of the text field with the name of the next session
  bool isRecording = false;
  CommandButton startStopButton;
  CommandButton historyButton;       ///< lists the sessions anew, then shows the history tab
  std::string note;                  ///< what is measured and what is estimated
  std::optional<ColoredText> error;  ///< the recorder's last failure

  bool operator==(const SessionSection&) const = default;
};

/// `card` is that of the active session, if there is one; `sessionCount` counts all sessions.
[[nodiscard]] SessionSection sessionSection(std::optional<SessionCard> card,
                                            std::size_t sessionCount,
                                            const std::optional<std::string>& lastError);

/// The title of the button that shows the history.
[[nodiscard]] std::string historyButtonTitle(std::size_t sessionCount);

}  // namespace quorvex
