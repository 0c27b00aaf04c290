#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Date.h"
#include "LocalizedDate.h"
#include "PowerSession.h"
#include "PowerSessionMetrics.h"
#include "PowerSessionReport.h"

/// Sessions and their figures, to be changed by a test in what it is about.
namespace quorvex::samples {

/// A day's first moment; times of tests count from here.
inline Date startOfDay() {
  return *parseISO8601("2026-01-31T00:00:00Z");
}
inline Date at(double seconds) {
  return dateByAdding(startOfDay(), seconds);
}

/// A test with the clock of Greenwich and times in the 24-hour form.
class TimedTest : public testing::Test {
 protected:
  void SetUp() override { setenv("TZ", "UTC", 1); }
  void TearDown() override { unsetenv("TZ"); }

  [[nodiscard]] static ShortTimeFormat times() { return ShortTimeFormat{"en_GB"}; }
};

/// A session whose identity is made of `number`.
inline std::shared_ptr<PowerSession> session(
    std::uint8_t number, std::string title,
    PowerSessionStatus status = PowerSessionStatus::completed) {
  UUID::Bytes bytes{};
  bytes.back() = number;
  return std::make_shared<PowerSession>(
      PowerSessionColumns{.id = UUID{bytes},
                          .title = std::move(title),
                          .startedAt = at(0),
                          .endedAt = at(60),
                          .statusRaw = std::string{rawValue(status)},
                          .sourceRaw = "app",
                          .schemaVersion = PowerSession::currentSchemaVersion,
                          .sampleInterval = 2.0});
}

/// A segment of a minute on one source.
inline PowerSessionPowerSegment segment(std::int64_t index, std::string sourceKind,
                                        std::string sourceLabel, std::optional<bool> acConnected) {
  return {.index = index,
          .sourceKind = std::move(sourceKind),
          .sourceLabel = std::move(sourceLabel),
          .acConnected = acConnected,
          .startedAt = at(60.0 * static_cast<double>(index)),
          .endedAt = at(60.0 * static_cast<double>(index + 1)),
          .durationSeconds = 60.0,
          .sampleCount = 30,
          .wattSampleCount = 30};
}

/// A phase on one source.
inline PowerSessionPhaseDigest phase(std::string sourceKind, std::string sourceLabel,
                                     std::optional<bool> acConnected, double durationSeconds) {
  return {.sourceKind = std::move(sourceKind),
          .sourceLabel = std::move(sourceLabel),
          .acConnected = acConnected,
          .startedAt = at(0),
          .endedAt = at(durationSeconds),
          .durationSeconds = durationSeconds,
          .sampleCount = 10,
          .wattSampleCount = 10};
}

/// A minute on the battery at 12 W: 12 W * 60 s / 3600 s/h = 0.2 Wh.
inline PowerSessionSummary steadySummary() {
  PowerSessionSummary summary = PowerSessionSummary::empty();
  summary.durationSeconds = 60.0;
  summary.sampleCount = 31;
  summary.wattSampleCount = 31;
  summary.averageWatts = 12.0;
  summary.minWatts = 11.0;
  summary.maxWatts = 13.0;
  summary.totalWattHours = 12.0 * 60.0 / 3600.0;
  summary.powerSegments = {segment(0, "batteryDischarge", "Battery draw", false)};
  return summary;
}

/// The same with its energy withheld.
inline PowerSessionSummary withheldSummary(std::string_view note) {
  PowerSessionSummary summary = steadySummary();
  summary.averageWatts.reset();
  summary.totalWattHours.reset();
  summary.averageWattsNote = std::string{note};
  summary.totalWattHoursNote = std::string{note};
  return summary;
}

/// Across a gap, on one source.
inline PowerSessionSummary sparseSummary() {
  return withheldSummary(PowerSessionMetrics::sparsePowerCoverageNote);
}

/// On the battery, then on AC.
inline PowerSessionSummary mixedSummary() {
  PowerSessionSummary summary = withheldSummary(PowerSessionMetrics::mixedPowerSourcesNote);
  summary.powerSegments = {segment(0, "batteryDischarge", "Battery draw", false),
                           segment(1, "batteryChargeInput", "Battery charge input", true)};
  return summary;
}

/// A report of a summary, with one phase on the battery.
inline PowerSessionReport report(PowerSessionSummary summary) {
  return {.title = "Idle test",
          .status = "completed",
          .source = "app",
          .startedAt = at(9 * 3600 + 30 * 60),
          .sampleInterval = 2.0,
          .summary = std::move(summary),
          .phases = {phase("batteryDischarge", "Battery draw", false, 60.0)}};
}

/// A report of a session on two sources.
inline PowerSessionReport mixedReport() {
  PowerSessionReport mixed = report(mixedSummary());
  mixed.phases.push_back(phase("batteryChargeInput", "Battery charge input", true, 60.0));
  return mixed;
}

}  // namespace quorvex::samples
