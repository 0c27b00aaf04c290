#include "PowerSessionTelemetryChannelNote.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using testing::ElementsAre;

TEST(TelemetryChannelNotes, AreTheFiveChannelsInTheirOrder) {
  EXPECT_THAT(
      telemetryChannelNotes(),
      ElementsAre(
          PowerSessionTelemetryChannelNote{
              "Battery terminal draw", "best whole-system truth while unplugged",
              "SmartBattery negative watts while AC is disconnected; closest no-sudo whole-system "
              "draw estimate.",
              "Only comparable with other battery-discharge windows, not charge-input or IOReport "
              "silicon watts."},
          PowerSessionTelemetryChannelNote{
              "Battery charge input", "battery-flow measurement",
              "SmartBattery positive watts flowing into the battery while charging.",
              "This is charge rate, not total system load."},
          PowerSessionTelemetryChannelNote{
              "IOReport silicon power", "partial component subtotal",
              "CPU/GPU/ANE/DRAM energy counters when IOReport exposes the channels.",
              "May be incomplete or undercounted; do not average with battery-terminal "
              "whole-system draw."},
          PowerSessionTelemetryChannelNote{
              "Powermetrics process impact", "relative attribution",
              "Observed process energy-impact style scores from powermetrics.",
              "Treat as relative process ranking, not validated per-process Wh."},
          PowerSessionTelemetryChannelNote{
              "Unattributed power", "residual estimate",
              "Battery draw minus observed silicon subtotal while unplugged.",
              "Not measured display power; it absorbs missing silicon channels and every "
              "non-silicon load."}));
}

TEST(TelemetryChannelNotes, AreMadeOnce) {
  EXPECT_EQ(&telemetryChannelNotes(), &telemetryChannelNotes());
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
