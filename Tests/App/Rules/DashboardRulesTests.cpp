#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DashboardRules.h"
#include "RulesSamples.h"
#include "SampleRecords.h"
#include "SessionHistory.h"

namespace quorvex {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

using DashboardHeaderTests = samples::TimedTest;

SystemPowerState stateWithNetwork(std::uint64_t bytesIn) {
  SystemPowerState state;
  state.network = NetworkSnapshot{.interfaces = {samples::interface(1, "en0", bytesIn)}};
  return state;
}

TEST_F(DashboardHeaderTests, TellsWhatItIsAndTheTimeOfTheState) {
  SystemPowerState state;
  state.timestamp = samples::at(14 * 3600 + 5 * 60 + 59);
  const DashboardHeader header = dashboardHeader(state, DashboardTab::live, {}, times());
  EXPECT_EQ(header.title, "Quorvex Dashboard");
  EXPECT_EQ(header.timeText, "14:05");
  EXPECT_EQ(header.copyReport.title, "Copy as JSON");
}

TEST_F(DashboardHeaderTests, TheTabsStandInTheirOrder) {
  const DashboardHeader live = dashboardHeader({}, DashboardTab::live, {}, times());
  EXPECT_EQ(live.tabs.label, "Dashboard View");
  EXPECT_THAT(live.tabs.options, ElementsAre("Live", "History"));
  EXPECT_EQ(live.tabs.selected, 0U);
  EXPECT_EQ(dashboardHeader({}, DashboardTab::history, {}, times()).tabs.selected, 1U);
}

TEST_F(DashboardHeaderTests, TheUnitsAreChosenByTheirSetting) {
  AppSettings settings;
  const SegmentedPicker celsius =
      dashboardHeader({}, DashboardTab::live, settings, times()).temperatureUnits;
  EXPECT_EQ(celsius.label, "Temperature");
  EXPECT_EQ(celsius.accessibilityLabel, "Temperature Units");
  EXPECT_THAT(celsius.options, ElementsAre("°C", "°F"));
  EXPECT_EQ(celsius.selected, 0U);
  settings.useFahrenheit = true;
  EXPECT_EQ(dashboardHeader({}, DashboardTab::live, settings, times()).temperatureUnits.selected,
            1U);
}

TEST_F(DashboardHeaderTests, TheSwitchesStandOverTheirSettings) {
  AppSettings settings;
  settings.showTemperatureHighlights = false;
  settings.showAdvancedMetrics = true;
  const DashboardHeader header = dashboardHeader({}, DashboardTab::live, settings, times());
  EXPECT_EQ(header.temperatureHighlights.title, "3 Temps");
  EXPECT_EQ(header.temperatureHighlights.key, "showTemperatureHighlights");
  EXPECT_FALSE(header.temperatureHighlights.isOn);
  EXPECT_EQ(header.advancedMetrics.title, "Show Advanced Metrics");
  EXPECT_EQ(header.advancedMetrics.key, "showAdvancedMetrics");
  EXPECT_TRUE(header.advancedMetrics.isOn);
}

TEST(LiveSections, StandInTheirOrder) {
  SystemPowerState state = stateWithNetwork(100);
  state.battery = samples::battery();
  EXPECT_THAT(
      liveSections(state, {}),
      ElementsAre(LiveSection::proTelemetry, LiveSection::measurementSessions, LiveSection::battery,
                  LiveSection::powerBreakdown, LiveSection::network, LiveSection::thermal));
}

TEST(LiveSections, ADesktopHasNoBattery) {
  EXPECT_THAT(liveSections(stateWithNetwork(100), {}), Not(Contains(LiveSection::battery)));
}

TEST(LiveSections, TheNetworkNeedsItsSettingASnapshotAndTraffic) {
  AppSettings off;
  off.showNetwork = false;
  EXPECT_THAT(liveSections(stateWithNetwork(100), off), Not(Contains(LiveSection::network)));
  EXPECT_THAT(liveSections({}, {}), Not(Contains(LiveSection::network)));
  EXPECT_THAT(liveSections(stateWithNetwork(0), {}), Not(Contains(LiveSection::network)));
}

TEST(SessionSection, WithoutASessionOffersToStartOne) {
  const SessionSection section = sessionSection(std::nullopt, 0, std::nullopt);
  EXPECT_EQ(section.title, "Measurement Sessions");
  EXPECT_FALSE(section.card);
  EXPECT_FALSE(section.isRecording);
  EXPECT_EQ(section.caption,
            "Start a benchmark here or quick-start one from the menu bar. Empty names become "
            "timestamped session titles.");
  EXPECT_EQ(section.namePrompt, "Optional session name");
  EXPECT_EQ(section.startStopButton.title, "Start");
  EXPECT_EQ(section.note,
            "Total discharge/charge watts are measured from the battery controller when available. "
            "Component and process attribution is derived or estimated.");
  EXPECT_FALSE(section.error);
}

TEST(SessionSection, WhileRecordingOffersToStop) {
  const SessionSection section =
      sessionSection(sessionCard("Idle test", samples::steadySummary()), 1, std::nullopt);
  ASSERT_TRUE(section.card);
  EXPECT_EQ(section.card->title, "Idle test");
  EXPECT_TRUE(section.isRecording);
  EXPECT_EQ(section.caption, "");
  EXPECT_EQ(section.startStopButton.title, "Stop");
}

TEST(SessionSection, TheRecordersFailureStandsInOrange) {
  EXPECT_EQ(sessionSection(std::nullopt, 0, "disk full").error,
            (ColoredText{"disk full", ColorName::orange}));
}

TEST(SessionSection, TheHistoryButtonCountsTheSessions) {
  EXPECT_EQ(historyButtonTitle(0), "View History");
  EXPECT_EQ(historyButtonTitle(1), "View History (1)");
  EXPECT_EQ(sessionSection(std::nullopt, 12, std::nullopt).historyButton.title,
            "View History (12)");
}

TEST(RefreshedSessions, DeletingTheSelectedSessionSelectsTheNewestRemainingOne) {
  const SessionList remaining{samples::session(3, "newest"), samples::session(1, "oldest")};
  EXPECT_EQ(selectDefaultSession(remaining, samples::session(2, "deleted")->id()),
            remaining[0]->id());
}

TEST(RefreshedSessions, TheSelectionStaysWhileItIsThere) {
  const SessionList sessions{samples::session(3, "newest"), samples::session(1, "oldest")};
  EXPECT_EQ(selectDefaultSession(sessions, sessions[1]->id()), sessions[1]->id());
}

TEST(RefreshedSessions, WithoutSessionsNothingIsSelected) {
  EXPECT_EQ(selectDefaultSession({}, samples::session(1, "gone")->id()), std::nullopt);
}

}  // namespace
}  // namespace quorvex
