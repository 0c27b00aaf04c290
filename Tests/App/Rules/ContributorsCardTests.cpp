#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ContributorsCard.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

using Contributors = std::vector<PowerSessionContributor>;

PowerSessionContributor contributor(std::string name, double score, bool isAggregate = false) {
  return {.name = std::move(name), .score = score, .isAggregate = isAggregate};
}

TEST(ContributorsCard, ListsProcessesWithWholeScores) {
  const ContributorsCard card =
      contributorsCard(Contributors{contributor("Xcode", 1234.6), contributor("mds", 2.4)}, {});
  EXPECT_EQ(card.heading, "Raw Process Impact");
  EXPECT_THAT(card.rows, ElementsAre(LabelledValue{"Xcode", "1235"}, LabelledValue{"mds", "2"}));
  EXPECT_FALSE(card.aggregateLine);
  EXPECT_EQ(card.emptyText, "");
}

TEST(ContributorsCard, AggregatesAreNamedInOneLine) {
  const ContributorsCard card = contributorsCard(
      {}, Contributors{contributor("ALL_TASKS", 9, true), contributor("DEAD_TASKS", 1, true)});
  EXPECT_EQ(card.aggregateLine, "Aggregate rows: ALL_TASKS, DEAD_TASKS");
  EXPECT_EQ(card.emptyText, "");
}

TEST(ContributorsCard, WithNeitherSaysSo) {
  EXPECT_EQ(contributorsCard({}, {}).emptyText,
            "No process attribution was captured for this session.");
}

TEST(ProcessFamiliesCard, ListsFamiliesAndSaysWhatAScoreIs) {
  const std::vector<PowerSessionProcessFamilySummary> families{
      {.family = "browser/WebKit", .score = 12.5}};
  const auto card = processFamiliesCard(families);
  ASSERT_TRUE(card);
  EXPECT_EQ(card->heading, "Process Families");
  EXPECT_THAT(card->rows, ElementsAre(LabelledValue{"browser/WebKit", "12"}));
  EXPECT_EQ(card->caption, "Scores are relative observed impact, not validated Wh.");
  EXPECT_FALSE(processFamiliesCard({}));
}

TEST(NetworkAppsCard, ListsAppsWithTotalsAndPeaks) {
  const std::vector<PowerSessionNetworkAppUsage> apps{{.name = "Safari",
                                                       .source = "nettop",
                                                       .totalBytesIn = 1'500'000,
                                                       .totalBytesOut = 512,
                                                       .peakBytesInPerSec = 2000.0,
                                                       .peakBytesOutPerSec = 0.0}};
  const auto card = networkAppsCard(apps);
  ASSERT_TRUE(card);
  EXPECT_EQ(card->heading, "Peak Network Activity");
  ASSERT_THAT(card->rows, SizeIs(1));
  EXPECT_EQ(card->rows[0].name, "Safari");
  EXPECT_EQ(card->rows[0].inText, "1.5 MB");
  EXPECT_EQ(card->rows[0].outText, "512 B");
  EXPECT_EQ(card->rows[0].peakText, "Peak 2.0 KB/s / 0 B/s");
  EXPECT_EQ(card->rows[0].accessibilityText,
            "Safari: received 1.5 MB, sent 512 B, Peak 2.0 KB/s / 0 B/s");
  EXPECT_FALSE(networkAppsCard({}));
}

}  // namespace
}  // namespace quorvex
