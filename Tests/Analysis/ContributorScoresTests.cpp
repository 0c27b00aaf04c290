#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ContributorScores.h"
#include "ObservationBuilder.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> names(const ContributorScores& scores, std::size_t limit = 5) {
  std::vector<std::string> result;
  for (const PowerSessionContributor& contributor : scores.top(limit)) {
    result.push_back(contributor.source + "/" + contributor.name);
  }
  return result;
}

TEST(ContributorScores, AddsUpByNameAndInstrument) {
  ContributorScores scores;
  scores.addPrivileged("Safari", 3.0);
  scores.addPrivileged("Safari", 4.0);
  scores.addActivity("Safari", 5.0);
  EXPECT_THAT(scores.top(5), ElementsAre(PowerSessionContributor{.name = "Safari",
                                                                 .source = "powermetrics",
                                                                 .score = 7.0,
                                                                 .confidence = "derived"},
                                         PowerSessionContributor{.name = "Safari",
                                                                 .source = "proc_pid_rusage",
                                                                 .score = 5.0,
                                                                 .confidence = "estimated"}));
}

TEST(ContributorScores, OnlyScoresAboveZeroCount) {
  ContributorScores scores;
  scores.addPrivileged("a", 0.0);
  scores.addActivity("b", -1.0);
  EXPECT_THAT(scores.top(5), IsEmpty());
}

TEST(ContributorScores, AtMostTheLimitGreatestFirst) {
  ContributorScores scores;
  double score = 0.0;
  for (const char* name : {"p1", "p2", "p3", "p4", "p5", "p6", "p7"}) {
    scores.addActivity(name, ++score);
  }
  ASSERT_THAT(scores.top(5), SizeIs(5));
  EXPECT_EQ(scores.top(5).front().name, "p7");
  EXPECT_EQ(scores.top(5).back().name, "p3");
}

TEST(ContributorScores, EqualScoresHaveAFixedOrder) {
  ContributorScores scores;
  for (const char* name : {"delta", "Alpha", "charlie", "bravo"}) {
    scores.addActivity(name, 1.0);
  }
  scores.addPrivileged("zulu", 1.0);
  EXPECT_THAT(names(scores),
              ElementsAre("powermetrics/zulu", "proc_pid_rusage/Alpha", "proc_pid_rusage/bravo",
                          "proc_pid_rusage/charlie", "proc_pid_rusage/delta"));
}

TEST(ContributorScores, AGroupRanksAndIsMarkedByItsName) {
  const std::vector<ObservedProcess> rows{
      {.name = "ALL_TASKS", .score = 100.0, .isAggregate = true},
      {.name = "DEAD_TASKS", .score = 50.0, .isAggregate = true},
      {.name = "Marked", .score = 10.0, .isAggregate = true}};
  ContributorScores scores;
  scores.add(observations::withProRows(observations::bare(0), rows));
  const auto top = scores.top(5);
  ASSERT_THAT(top, SizeIs(3));
  EXPECT_EQ(top[0].name, "ALL_TASKS");
  EXPECT_TRUE(top[0].isAggregate);
  EXPECT_TRUE(top[1].isAggregate);
  EXPECT_FALSE(top[2].isAggregate);
}

TEST(ContributorScores, RowsOfASampleCountForTheirInstrument) {
  const std::vector<ObservedProcess> rows{{.name = "a", .score = 1.0}};
  ContributorScores scores;
  scores.add(observations::withActivityRows(observations::bare(0), rows));
  EXPECT_THAT(names(scores), ElementsAre("proc_pid_rusage/a"));
}

}  // namespace
}  // namespace quorvex
