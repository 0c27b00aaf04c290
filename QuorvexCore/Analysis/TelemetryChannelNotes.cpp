#include "PowerSessionTelemetryChannelNote.h"

namespace quorvex::PowerSessionAnalysis {

const std::vector<PowerSessionTelemetryChannelNote>& telemetryChannelNotes() {
  static const std::vector<PowerSessionTelemetryChannelNote> notes{
      {.channel = "Battery terminal draw",
       .trustLevel = "best whole-system truth while unplugged",
       .meaning = "SmartBattery negative watts while AC is disconnected; closest no-sudo "
                  "whole-system draw estimate.",
       .caution = "Only comparable with other battery-discharge windows, not charge-input or "
                  "IOReport silicon watts."},
      {.channel = "Battery charge input",
       .trustLevel = "battery-flow measurement",
       .meaning = "SmartBattery positive watts flowing into the battery while charging.",
       .caution = "This is charge rate, not total system load."},
      {.channel = "IOReport silicon power",
       .trustLevel = "partial component subtotal",
       .meaning = "CPU/GPU/ANE/DRAM energy counters when IOReport exposes the channels.",
       .caution = "May be incomplete or undercounted; do not average with battery-terminal "
                  "whole-system draw."},
      {.channel = "Powermetrics process impact",
       .trustLevel = "relative attribution",
       .meaning = "Observed process energy-impact style scores from powermetrics.",
       .caution = "Treat as relative process ranking, not validated per-process Wh."},
      {.channel = "Unattributed power",
       .trustLevel = "residual estimate",
       .meaning = "Battery draw minus observed silicon subtotal while unplugged.",
       .caution = "Not measured display power; it absorbs missing silicon channels and every "
                  "non-silicon load."},
  };
  return notes;
}

}  // namespace quorvex::PowerSessionAnalysis
