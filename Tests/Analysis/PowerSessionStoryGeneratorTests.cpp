#include <cstdlib>
#include <limits>

#include "PowerSessionStoryGenerator.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string locale = "de_DE";

PowerSessionPhaseDigest phase(const char* kind, const char* label = "Battery draw") {
  return {.sourceKind = kind, .sourceLabel = label};
}

PowerSessionPhaseDigest onBattery() {
  return phase("batteryDischarge");
}

PowerSessionPhaseDigest averaging(double watts) {
  PowerSessionPhaseDigest result = onBattery();
  result.averageWatts = watts;
  return result;
}

PowerSessionReport reportOf(std::vector<PowerSessionPhaseDigest> phases, double seconds) {
  PowerSessionReport report;
  report.phases = std::move(phases);
  report.summary.durationSeconds = seconds;
  return report;
}

std::string headline(const PowerSessionReport& report) {
  return PowerSessionStoryGenerator::story(report, locale).headline;
}

PowerSessionStory::Episode episode(const PowerSessionPhaseDigest& phase) {
  return PowerSessionStoryGenerator::story(reportOf({phase}, 60.0), locale).episodes.at(0);
}

std::string narrative(const PowerSessionPhaseDigest& phase) {
  return episode(phase).narrative;
}

std::vector<std::string> highlights(const PowerSessionPhaseDigest& phase) {
  return episode(phase).highlights;
}

/// The duration as the headline of a session on one source tells it.
std::string duration(double seconds) {
  const std::string text = headline(reportOf({phase("unavailable", "x")}, seconds));
  return text.substr(0, text.find(':'));
}

TEST(StoryDuration, IsRoundedToWholeSecondsFirst) {
  EXPECT_EQ(duration(3599.6), "1h");
  EXPECT_EQ(duration(3599.4), "59m");
}

TEST(StoryDuration, MinutesFollowHoursWhenThereAreAny) {
  EXPECT_EQ(duration(3660.0), "1h 1m");
  EXPECT_EQ(duration(7259.0), "2h");
  EXPECT_EQ(duration(7260.0), "2h 1m");
}

TEST(StoryDuration, UnderAMinuteIsZeroMinutes) {
  EXPECT_EQ(duration(59.0), "0m");
  EXPECT_EQ(duration(60.0), "1m");
  EXPECT_EQ(duration(0.0), "0m");
}

TEST(StoryDuration, IsNeverNegativeAndNeverFails) {
  EXPECT_EQ(duration(-5.0), "0m");
  EXPECT_EQ(duration(std::numeric_limits<double>::quiet_NaN()), "0m");
  EXPECT_NE(duration(std::numeric_limits<double>::infinity()), "0m");
}

/// Two hours on battery at 12.4 W.
PowerSessionReport batterySession(std::optional<std::int64_t> change) {
  PowerSessionReport report = reportOf({onBattery()}, 7200.0);
  report.summary.averageWatts = 12.4;
  report.summary.batteryPercentDelta = change;
  return report;
}

TEST(StoryHeadline, OfOnePhaseTellsSourceAverageAndDrop) {
  EXPECT_EQ(headline(batterySession(-23)), "2h: battery draw · 12W avg, battery dropped 23%");
}

TEST(StoryHeadline, DoesNotMentionSmallChangesOfCharge) {
  for (const std::int64_t change : {-5, 0, 5}) {
    EXPECT_EQ(headline(batterySession(change)), "2h: battery draw · 12W avg");
  }
  EXPECT_EQ(headline(batterySession(std::nullopt)), "2h: battery draw · 12W avg");
  EXPECT_EQ(headline(batterySession(-6)), "2h: battery draw · 12W avg, battery dropped 6%");
}

TEST(StoryHeadline, TellsWhereChargingEnded) {
  PowerSessionReport report = batterySession(6);
  report.summary.batteryPercentEnd = 86;
  EXPECT_EQ(headline(report), "2h: battery draw · 12W avg, charged to 86%");
  report.summary.batteryPercentEnd.reset();
  EXPECT_EQ(headline(report), "2h: battery draw · 12W avg, charged to 0%");
}

TEST(StoryHeadline, TellsTheGreatestDropThatAWholeNumberHolds) {
  EXPECT_EQ(headline(batterySession(std::numeric_limits<std::int64_t>::min())),
            "2h: battery draw · 12W avg, battery dropped 9223372036854775808%");
}

TEST(StoryHeadline, WithoutAverageHasNoBatteryNote) {
  PowerSessionReport report = batterySession(-23);
  report.summary.averageWatts.reset();
  EXPECT_EQ(headline(report), "2h: battery draw");
}

TEST(StoryHeadline, TwoPhasesOfOneKindAreNotMixedAndTheFirstLabelTells) {
  PowerSessionReport report = reportOf(
      {phase("batteryDischarge", "First Label"), phase("batteryDischarge", "Second")}, 2700.0);
  report.summary.averageWatts = 8.0;
  EXPECT_EQ(headline(report), "45m: first label · 8W avg");
}

PowerSessionReport mixedSession(double discharged, double charged) {
  PowerSessionReport report =
      reportOf({onBattery(), phase("batteryChargeInput"), phase("batterySupplement")}, 5400.0);
  report.phases[0].totalWattHours = discharged / 2;
  report.phases[1].totalWattHours = charged;
  report.phases[2].totalWattHours = discharged / 2;
  return report;
}

TEST(StoryHeadline, OfMixedSourcesAddsUpEnergyAndPeak) {
  PowerSessionReport report = mixedSession(4.0, 0.4);
  report.summary.maxWatts = 31.6;
  EXPECT_EQ(headline(report), "1h 30m 3-phase session: 4 Wh discharged, peak 32W");
}

TEST(StoryHeadline, OfMixedSourcesTellsAllItKnows) {
  PowerSessionReport report = mixedSession(4.0, 22.0);
  report.summary.maxWatts = 31.6;
  // Neither the average nor the change of charge is comparable across sources.
  report.summary.averageWatts = 12.0;
  report.summary.batteryPercentDelta = -30;
  EXPECT_EQ(headline(report), "1h 30m 3-phase session: 4 Wh discharged, 22 Wh charged, peak 32W");
}

TEST(StoryHeadline, EnergyCountsOnlyAboveHalfAWattHour) {
  EXPECT_EQ(headline(mixedSession(0.5, 0.5)), "1h 30m 3-phase session");
  EXPECT_EQ(headline(mixedSession(0.75, 0.75)),
            "1h 30m 3-phase session: 1 Wh discharged, 1 Wh charged");
}

TEST(StoryHeadline, OfMixedSourcesWithNothingToTellCountsThePhases) {
  PowerSessionReport report = reportOf({onBattery(), phase("batteryChargeInput")}, 2700.0);
  EXPECT_EQ(headline(report), "45m 2-phase session");
}

TEST(StoryHeadline, EnergyOfOtherSourcesIsNeitherDischargedNorCharged) {
  PowerSessionReport report = reportOf({phase("ioReportSiliconPower"), phase("unavailable")}, 60.0);
  report.phases[0].totalWattHours = 10.0;
  report.phases[1].totalWattHours = 10.0;
  EXPECT_EQ(headline(report), "1m 2-phase session");
}

TEST(StoryHeadline, WithoutPhasesCountsZeroOfThem) {
  PowerSessionReport report = reportOf({}, 120.0);
  EXPECT_EQ(headline(report), "2m 0-phase session");
  report.summary.maxWatts = 9.5;
  report.summary.averageWatts = 9.0;
  EXPECT_EQ(headline(report), "2m 0-phase session: peak 10W");
}

TEST(StoryNarrative, WorkloadsBeginAtTheirAverages) {
  EXPECT_EQ(narrative(averaging(9.99)), "Idle / light usage (10W avg)");
  EXPECT_EQ(narrative(averaging(10.0)), "Moderate workload (10W avg)");
  EXPECT_EQ(narrative(averaging(24.99)), "Moderate workload (25W avg)");
  EXPECT_EQ(narrative(averaging(25.0)), "Heavy workload (25W avg)");
  EXPECT_EQ(narrative(averaging(39.99)), "Heavy workload (40W avg)");
  EXPECT_EQ(narrative(averaging(40.0)), "Power spike (40W avg)");
}

TEST(StoryNarrative, OnBatteryWithoutAverageSaysWhetherItDischarges) {
  PowerSessionPhaseDigest digest = onBattery();
  EXPECT_EQ(narrative(digest), "Battery draw");
  digest.batteryPercentDelta = 0;
  EXPECT_EQ(narrative(digest), "Battery draw");
  digest.batteryPercentDelta = -1;
  EXPECT_EQ(narrative(digest), "Battery discharging");
}

TEST(StoryNarrative, OfSiliconPowerIsOnACWhateverTheAdapterSays) {
  PowerSessionPhaseDigest digest = phase("ioReportSiliconPower");
  EXPECT_EQ(narrative(digest), "On AC");
  digest.averageWatts = 6.0;
  EXPECT_EQ(narrative(digest), "Idle / light usage (6W avg, on AC)");
  digest.acConnected = false;
  EXPECT_EQ(narrative(digest), "Idle / light usage (6W avg, on AC)");
}

TEST(StoryNarrative, OfAnUnknownSourceFollowsTheAdapter) {
  PowerSessionPhaseDigest digest = phase("unavailable");
  digest.acConnected = true;
  EXPECT_EQ(narrative(digest), "On AC");
  digest.acConnected = false;
  EXPECT_EQ(narrative(digest), "Battery draw");
  digest.acConnected.reset();
  EXPECT_EQ(narrative(digest), "Battery draw");
}

TEST(StoryNarrative, OfABatteryKindOnACIsTheBatterys) {
  for (const char* kind : {"batteryDischarge", "batterySupplement"}) {
    PowerSessionPhaseDigest digest = phase(kind);
    digest.acConnected = true;
    digest.averageWatts = 30.0;
    EXPECT_EQ(narrative(digest), "Heavy workload (30W avg)");
  }
}

TEST(StoryNarrative, OfChargingTellsThePercentGained) {
  PowerSessionPhaseDigest digest = phase("batteryChargeInput");
  digest.acConnected = true;
  digest.averageWatts = 45.0;
  EXPECT_EQ(narrative(digest), "Charging");
  digest.batteryPercentDelta = 0;
  EXPECT_EQ(narrative(digest), "Charging");
  digest.batteryPercentDelta = -1;
  EXPECT_EQ(narrative(digest), "Charging");
  digest.batteryPercentDelta = 1;
  EXPECT_EQ(narrative(digest), "Charged 1%");
}

TEST(StoryHighlights, AreAtMostThreeInTheirOrder) {
  PowerSessionPhaseDigest digest = averaging(12.0);
  digest.batteryPercentDelta = -23;
  digest.maxWatts = 31.6;
  digest.totalWattHours = 24.04;
  EXPECT_THAT(highlights(digest), ElementsAre("Battery dropped 23%", "Peak ~32W", "Used 24.0 Wh"));
}

TEST(StoryHighlights, OfNothingNotableAreNone) {
  EXPECT_THAT(highlights(onBattery()), IsEmpty());
}

TEST(StoryHighlights, ChangesOfChargeCountFromSixPercent) {
  PowerSessionPhaseDigest digest = onBattery();
  digest.batteryPercentDelta = -5;
  EXPECT_THAT(highlights(digest), IsEmpty());
  digest.batteryPercentDelta = -6;
  EXPECT_THAT(highlights(digest), ElementsAre("Battery dropped 6%"));
  digest.batteryPercentDelta = 5;
  EXPECT_THAT(highlights(digest), IsEmpty());
  digest.batteryPercentDelta = 6;
  EXPECT_THAT(highlights(digest), ElementsAre("Charged 6%"));
}

TEST(StoryHighlights, APeakIsMoreThanTenWattsAboveTheAverage) {
  PowerSessionPhaseDigest digest = averaging(12.0);
  digest.maxWatts = 22.0;
  EXPECT_THAT(highlights(digest), IsEmpty());
  digest.maxWatts = 22.5;
  EXPECT_THAT(highlights(digest), ElementsAre("Peak ~22W"));
  digest.averageWatts.reset();
  EXPECT_THAT(highlights(digest), IsEmpty());
}

TEST(StoryHighlights, EnergyCountsAboveOneWattHour) {
  PowerSessionPhaseDigest digest = onBattery();
  digest.totalWattHours = 1.0;
  EXPECT_THAT(highlights(digest), IsEmpty());
  digest.totalWattHours = 1.06;
  EXPECT_THAT(highlights(digest), ElementsAre("Used 1.1 Wh"));
}

/// UTC for the duration of a test.
class StoryEpisodes : public testing::Test {
 protected:
  void SetUp() override { setenv("TZ", "UTC", 1); }
  void TearDown() override { unsetenv("TZ"); }
};

TEST_F(StoryEpisodes, TimeRangeIsInTheLocalesShortStyle) {
  PowerSessionPhaseDigest digest = onBattery();
  digest.startedAt = *parseISO8601("2026-03-01T14:05:59Z");
  digest.endedAt = *parseISO8601("2026-03-01T14:40:00Z");
  EXPECT_EQ(episode(digest).timeRange, "14:05 – 14:40");
}

TEST_F(StoryEpisodes, ThereIsOneForEachPhaseUnderItsLabel) {
  const auto story = PowerSessionStoryGenerator::story(
      reportOf({phase("batteryDischarge", "Battery draw"), phase("batteryChargeInput", "Charge")},
               60.0),
      locale);
  ASSERT_THAT(story.episodes, SizeIs(2));
  EXPECT_EQ(story.episodes[0].phase, "Battery draw");
  EXPECT_EQ(story.episodes[1].phase, "Charge");
}

TEST_F(StoryEpisodes, ThereAreNoneWithoutPhases) {
  EXPECT_THAT(PowerSessionStoryGenerator::story(reportOf({}, 60.0), locale).episodes, IsEmpty());
}

}  // namespace
}  // namespace quorvex
