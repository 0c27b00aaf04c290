#include <string>
#include <vector>

#include "AttributionAnalysis.h"
#include "ObservationBuilder.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::bare;
using observations::withActivityRows;
using observations::withProRows;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Rows = std::vector<ObservedProcess>;

constexpr const char* noShareNote =
    "No large Quorvex/powermetrics/sysmond/Activity Monitor share was observed in process impact.";

std::vector<PowerSessionProcessFamilySummary> familiesOf(const Rows& rows) {
  const std::vector<Observation> samples{withProRows(bare(0), rows)};
  return processFamilySummaries(ProcessScores{samples});
}

PowerSessionMeasurementOverhead overheadOf(const Rows& rows) {
  const std::vector<Observation> samples{withProRows(bare(0), rows)};
  return measurementOverheadSummary(ProcessScores{samples});
}

std::vector<std::string> familyNames(
    const std::vector<PowerSessionProcessFamilySummary>& families) {
  std::vector<std::string> names;
  names.reserve(families.size());
  for (const auto& summary : families) {
    names.push_back(summary.family);
  }
  return names;
}

TEST(ProcessFamilySummaries, AreNoneWithoutProcessRows) {
  EXPECT_THAT(familiesOf({}), IsEmpty());
  EXPECT_THAT(processFamilySummaries(ProcessScores{std::span<const Observation>{}}), IsEmpty());
}

TEST(ProcessFamilySummaries, AddUpScoresAndCountRowsAndNotSamples) {
  const Rows first{{"Safari", 10.0}, {"Google Chrome", 20.0}, {"firefox", 5.0}};
  const Rows second{{"Safari", 1.0}};
  const std::vector<Observation> samples{withProRows(bare(0), first),
                                         withActivityRows(bare(2), second)};
  EXPECT_THAT(processFamilySummaries(ProcessScores{samples}),
              ElementsAre(PowerSessionProcessFamilySummary{
                  .family = "browser/WebKit",
                  .score = 10.0 + 20.0 + 5.0 + 1.0,
                  .sampleCount = 3 + 1,
                  .confidence = "relative-observed-impact",
                  .note = "Grouped powermetrics/proc scores are relative attribution, not "
                          "validated per-process Wh."}));
}

TEST(ProcessFamilySummaries, ComeByDescendingScore) {
  EXPECT_THAT(familyNames(familiesOf({{"redis", 1.0}, {"launchd", 3.0}, {"Dock", 2.0}})),
              ElementsAre("other", "UI/windowing", "database"));
}

TEST(ProcessFamilySummaries, OfOneScoreComeInTheOrderOfTheirNames) {
  EXPECT_THAT(
      familyNames(familiesOf({{"redis", 2.0}, {"launchd", 2.0}, {"Dock", 2.0}, {"claude", 2.0}})),
      ElementsAre("AI/dev assistants", "UI/windowing", "database", "other"));
}

TEST(ProcessFamilySummaries, LeaveOutAggregatesOfAPrivilegedSnapshot) {
  EXPECT_THAT(familiesOf({{"ALL_TASKS", 100.0, true}, {"coalition", 50.0, true}}), IsEmpty());
}

TEST(ProcessFamilySummaries, KeepRowsOfTheProcessActivityWhateverTheirNames) {
  const Rows rows{{"ALL_TASKS", 3.0, true}};
  const std::vector<Observation> samples{withActivityRows(bare(0), rows)};
  EXPECT_THAT(familyNames(processFamilySummaries(ProcessScores{samples})), ElementsAre("other"));
}

TEST(ProcessFamilySummaries, FoldANameWhereverItsTextLies) {
  const std::vector<std::string> copies(3, "quorvex");
  const Rows rows{{copies[0], 1.0}, {copies[1], 2.0}, {copies[2], 4.0}, {copies[0], 8.0}};
  const auto families = familiesOf(rows);
  ASSERT_THAT(families, SizeIs(1));
  EXPECT_EQ(families[0].score, 1.0 + 2.0 + 4.0 + 8.0);
  EXPECT_EQ(families[0].sampleCount, 4);
  EXPECT_THAT(overheadOf(rows).processNames, ElementsAre("quorvex"));
}

TEST(ProcessFamilySummaries, TellNamesApartThatBeginAtOnePlace) {
  const std::string text = "sqlite-browser";
  const Rows rows{{std::string_view{text}.substr(0, 6), 1.0}, {text, 2.0}};
  EXPECT_THAT(familyNames(familiesOf(rows)), ElementsAre("browser/WebKit", "database"));
}

TEST(ProcessFamilySummaries, OfMoreNamesThanAreRememberedAreRight) {
  // Twice over, so that each name comes again after all others.
  std::vector<std::string> names;
  names.reserve(10'000);
  for (int i = 0; i < 10'000; ++i) {
    names.push_back((i % 4 == 0 ? "redis-" : "launchd-") + std::to_string(i));
  }
  Rows rows;
  for (int pass = 0; pass < 2; ++pass) {
    for (const std::string& name : names) {
      rows.push_back({name, 1.0});
    }
  }
  const auto families = familiesOf(rows);
  ASSERT_THAT(families, SizeIs(2));
  EXPECT_EQ(families[0].family, "other");
  EXPECT_EQ(families[0].sampleCount, 2 * 7'500);
  EXPECT_EQ(families[1].family, "database");
  EXPECT_EQ(families[1].sampleCount, 2 * 2'500);
}

TEST(MeasurementOverhead, WithoutProcessRowsHasNoFractionAndNoNames) {
  EXPECT_EQ(overheadOf({}), (PowerSessionMeasurementOverhead{.observed = false,
                                                             .overheadScore = 0.0,
                                                             .totalObservedProcessScore = 0.0,
                                                             .overheadFraction = std::nullopt,
                                                             .processNames = {},
                                                             .note = noShareNote}));
}

TEST(MeasurementOverhead, IsObservedFromExactlyFifteenPercent) {
  const auto overhead = overheadOf({{"powermetrics", 15.0}, {"Safari", 85.0}});
  EXPECT_TRUE(overhead.observed);
  EXPECT_EQ(overhead.overheadScore, 15.0);
  EXPECT_EQ(overhead.totalObservedProcessScore, 15.0 + 85.0);
  EXPECT_DOUBLE_EQ(overhead.overheadFraction.value(), 0.15);
  EXPECT_EQ(overhead.note,
            "Measurement overhead observed in process impact; treat process rankings as affected "
            "by the observer.");
}

TEST(MeasurementOverhead, IsNotObservedJustBelowFifteenPercent) {
  const auto overhead = overheadOf({{"powermetrics", 1499.0}, {"Safari", 8501.0}});
  EXPECT_FALSE(overhead.observed);
  EXPECT_DOUBLE_EQ(overhead.overheadFraction.value(), 0.1499);
  EXPECT_EQ(overhead.note, noShareNote);
}

TEST(MeasurementOverhead, NamesTheMonitorsAsWrittenEachOnceInByteOrder) {
  const Rows first{{"sysmond", 1.0}, {"Quorvex Helper", 1.0}, {"Safari", 1.0}};
  const Rows second{{"powermetrics", 1.0}, {"Quorvex Helper", 1.0}, {"Activity Monitor", 1.0}};
  const std::vector<Observation> samples{withProRows(bare(0), first), withProRows(bare(2), second)};
  EXPECT_THAT(measurementOverheadSummary(ProcessScores{samples}).processNames,
              ElementsAre("Activity Monitor", "Quorvex Helper", "powermetrics", "sysmond"));
}

TEST(MeasurementOverhead, LeavesOutAggregatesOfAPrivilegedSnapshot) {
  const auto overhead =
      overheadOf({{"ALL_TASKS", 900.0, true}, {"Quorvex", 50.0}, {"Safari", 50.0}});
  EXPECT_EQ(overhead.totalObservedProcessScore, 50.0 + 50.0);
  EXPECT_DOUBLE_EQ(overhead.overheadFraction.value(), 0.5);
}

TEST(MeasurementOverhead, OfASummaryWithoutSamplesHasItsOwnNote) {
  EXPECT_EQ(PowerSessionMeasurementOverhead::empty(),
            (PowerSessionMeasurementOverhead{.note = "No process impact samples were captured."}));
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
