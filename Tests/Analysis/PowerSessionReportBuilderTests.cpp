#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ObservationBuilder.h"
#include "PowerSessionMetrics.h"
#include "PowerSessionReportBuilder.h"

namespace quorvex {
namespace {

using observations::at;
using PowerSessionReportBuilder::downsample;
using PowerSessionReportBuilder::phaseDigests;
using PowerSessionReportBuilder::report;
using testing::ElementsAre;
using testing::SizeIs;
using Points = std::vector<PowerSessionTimelinePoint>;

constexpr std::int64_t maxTimelinePoints = 240;

/// `count` points, a second apart, of 1 W each.
Points points(std::int64_t count) {
  Points result;
  for (std::int64_t i = 0; i < count; ++i) {
    result.push_back({.id = i, .elapsedSeconds = static_cast<double>(i), .watts = 1.0});
  }
  return result;
}

std::vector<std::int64_t> ids(const Points& points) {
  std::vector<std::int64_t> result;
  for (const auto& point : points) {
    result.push_back(point.id);
  }
  return result;
}

PowerSessionMetadataDTO session() {
  PowerSessionMetadataDTO metadata;
  metadata.id = UUID{UUID::Bytes{1, 2, 3}};
  metadata.title = "Flight";
  metadata.startedAt = at(0);
  metadata.endedAt = at(100);
  metadata.status = "completed";
  metadata.source = "cli";
  metadata.sampleInterval = 2.0;
  return metadata;
}

PowerSessionReport reportOf(const std::vector<Observation>& samples) {
  return report(session(), PowerSessionSummary::empty(), samples, maxTimelinePoints);
}

PowerSessionPowerSegment segment(std::int64_t index, double seconds, std::int64_t sampleCount) {
  return {.index = index,
          .sourceKind = "batteryDischarge",
          .sourceLabel = "Battery draw",
          .durationSeconds = seconds,
          .sampleCount = sampleCount};
}

TEST(Downsample, LeavesUpToTheMaximumUnchangedInTheCallersOrder) {
  Points given = points(240);
  std::reverse(given.begin(), given.end());
  EXPECT_EQ(downsample(given, 240), given);
  EXPECT_EQ(downsample(points(3), 240), points(3));
  EXPECT_EQ(downsample({}, 240), Points{});
}

TEST(Downsample, OnePointTooManyDropsOneOfTheBucketWithTwo) {
  const auto result = downsample(points(241), 240);
  ASSERT_THAT(result, SizeIs(240));
  EXPECT_EQ(result.front().id, 0);
  EXPECT_EQ(result.back().id, 240);
  // 239 inner points in 238 buckets: bucket b begins at b * 239 / 238, which passes over a whole
  // number only in the last one.
  EXPECT_EQ(result[237].id, 237);
  EXPECT_EQ(result[238].id, 238);
}

TEST(Downsample, ASpikeSurvivesWhereverItIs) {
  for (std::size_t position = 0; position < 1000; ++position) {
    Points given = points(1000);
    given[position].watts = 30.0;
    const auto result = downsample(given, 240);
    ASSERT_THAT(result, SizeIs(240));
    ASSERT_THAT(ids(result), testing::Contains(static_cast<std::int64_t>(position)));
  }
}

TEST(Downsample, TwoRequestedGiveFirstMostSignificantAndLast) {
  Points given = points(10);
  given[4].watts = 2.0;
  EXPECT_THAT(ids(downsample(given, 2)), ElementsAre(0, 4, 9));
  EXPECT_THAT(ids(downsample(given, 3)), ElementsAre(0, 4, 9));
}

TEST(Downsample, OneRequestedGivesTheFirstAsGiven) {
  Points given = points(10);
  std::reverse(given.begin(), given.end());
  EXPECT_THAT(ids(downsample(given, 1)), ElementsAre(9));
}

TEST(Downsample, WithoutAPositiveMaximumAllPointsStay) {
  EXPECT_EQ(downsample(points(10), 0), points(10));
  EXPECT_EQ(downsample(points(10), -5), points(10));
}

TEST(Downsample, OfEquallySignificantPointsTheEarlierStays) {
  Points given = points(10);
  given[3].watts = 5.0;
  given[6].watts = 5.0;
  EXPECT_THAT(ids(downsample(given, 3)), ElementsAre(0, 3, 9));
}

TEST(Downsample, SortsByElapsedTime) {
  Points given = points(10);
  given[4].watts = 5.0;
  std::reverse(given.begin(), given.end());
  EXPECT_THAT(ids(downsample(given, 3)), ElementsAre(0, 4, 9));
}

TEST(Downsample, CutsTheInteriorIntoEqualSlices) {
  // 8 inner points in 4 buckets of two; each bucket's second point shows more.
  Points given = points(10);
  for (const std::size_t i : {2U, 4U, 6U, 8U}) {
    given[i].watts = 3.0;
  }
  EXPECT_THAT(ids(downsample(given, 6)), ElementsAre(0, 2, 4, 6, 8, 9));
}

/// The inner points, of which the second has `weigh` done to it, thinned to one.
std::int64_t winner(double wattsOfFirst, void (*weigh)(PowerSessionTimelinePoint&)) {
  Points given = points(4);
  given[1].watts = wattsOfFirst;
  given[2].watts.reset();
  weigh(given[2]);
  return downsample(given, 3)[1].id;
}

TEST(Downsample, OneWattWeighsAsMuchAsFiveDegrees) {
  const auto warm = [](PowerSessionTimelinePoint& point) { point.maxTemperature = 5.0; };
  EXPECT_EQ(winner(1.0, warm), 1);
  EXPECT_EQ(winner(0.99, warm), 2);
}

TEST(Downsample, OneWattWeighsAsMuchAsAThousandRevolutions) {
  const auto fan = [](PowerSessionTimelinePoint& point) { point.maxFanRPM = 1000; };
  EXPECT_EQ(winner(1.0, fan), 1);
  EXPECT_EQ(winner(0.99, fan), 2);
}

TEST(Downsample, OneWattWeighsAsMuchAsAMegabytePerSecondInAndOut) {
  const auto network = [](PowerSessionTimelinePoint& point) {
    point.bytesInPerSec = 600'000.0;
    point.bytesOutPerSec = 400'000.0;
  };
  EXPECT_EQ(winner(1.0, network), 1);
  EXPECT_EQ(winner(0.99, network), 2);
}

TEST(Downsample, NegativeWattsWeighByTheirSize) {
  EXPECT_EQ(winner(2.0, [](PowerSessionTimelinePoint& point) { point.watts = -3.0; }), 2);
}

TEST(Downsample, KeepsTheEndsAndEachBucketsMostSignificantPoint) {
  EXPECT_TRUE(rc::check([] {
    const auto count = *rc::gen::inRange<std::size_t>(2, 400);
    const auto maxCount = *rc::gen::inRange<std::size_t>(2, 60);
    Points given;
    for (std::size_t i = 0; i < count; ++i) {
      PowerSessionTimelinePoint point;
      point.id = static_cast<std::int64_t>(i);
      point.elapsedSeconds = static_cast<double>(i);
      point.watts = *rc::gen::inRange(0, 50);
      given.push_back(point);
    }
    const Points sorted = given;
    const auto distance = *rc::gen::inRange<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(count));
    std::rotate(given.begin(), given.begin() + distance, given.end());
    const auto result = downsample(given, static_cast<std::int64_t>(maxCount));
    if (count <= maxCount) {
      RC_ASSERT(result == given);
      return;
    }
    const std::size_t buckets = std::max<std::size_t>(maxCount, 3) - 2;
    RC_ASSERT(result.size() <= buckets + 2);
    RC_ASSERT(result.front() == sorted.front());
    RC_ASSERT(result.back() == sorted.back());
    RC_ASSERT(std::is_sorted(result.begin(), result.end(), [](const auto& left, const auto& right) {
      return left.elapsedSeconds < right.elapsedSeconds;
    }));
    std::size_t next = 1;
    for (std::size_t bucket = 0; bucket < buckets; ++bucket) {
      const auto edge = [&](std::size_t b) {
        return static_cast<std::size_t>(
            std::floor(static_cast<double>(b) / static_cast<double>(buckets) *
                       static_cast<double>(count - 2)));
      };
      const PowerSessionTimelinePoint* best = nullptr;
      for (std::size_t i = edge(bucket); i < edge(bucket + 1); ++i) {
        if (best == nullptr || sorted[i + 1].watts > best->watts) {
          best = &sorted[i + 1];
        }
      }
      if (best != nullptr) {
        RC_ASSERT(result[next] == *best);
        ++next;
      }
    }
    RC_ASSERT(next == result.size() - 1);
  }));
}

TEST(PhaseDigests, FractionsAreOfTheSessionWhenItIsLonger) {
  PowerSessionSummary summary;
  summary.durationSeconds = 100.0;
  summary.powerSegments = {segment(0, 60.0, 31), segment(1, 30.0, 16)};
  const auto phases = phaseDigests(summary);
  ASSERT_THAT(phases, SizeIs(2));
  EXPECT_DOUBLE_EQ(phases[0].durationFraction, 0.6);
  EXPECT_DOUBLE_EQ(phases[1].durationFraction, 0.3);
}

TEST(PhaseDigests, FractionsAreOfTheSegmentsWhenTheyAreLonger) {
  PowerSessionSummary summary;
  summary.durationSeconds = 10.0;
  summary.powerSegments = {segment(0, 60.0, 31), segment(1, 20.0, 11)};
  const auto phases = phaseDigests(summary);
  EXPECT_DOUBLE_EQ(phases[0].durationFraction, 0.75);
  EXPECT_DOUBLE_EQ(phases[1].durationFraction, 0.25);
}

TEST(PhaseDigests, TwoSamplesOfNoDurationStayWithFractionZero) {
  PowerSessionSummary summary;
  summary.powerSegments = {segment(0, 0.0, 2)};
  const auto phases = phaseDigests(summary);
  ASSERT_THAT(phases, SizeIs(1));
  EXPECT_EQ(phases[0].durationFraction, 0.0);
  EXPECT_EQ(phases[0].durationSeconds, 0.0);
}

TEST(PhaseDigests, OneSampleOfNoDurationHasNoPhaseAndLeavesAHoleInTheNumbers) {
  PowerSessionSummary summary;
  summary.powerSegments = {segment(0, 10.0, 6), segment(1, 0.0, 1), segment(2, 10.0, 6)};
  const auto phases = phaseDigests(summary);
  ASSERT_THAT(phases, SizeIs(2));
  EXPECT_EQ(phases[0].index, 0);
  EXPECT_EQ(phases[1].index, 2);
}

TEST(PhaseDigests, OneSampleWithDurationStays) {
  PowerSessionSummary summary;
  summary.powerSegments = {segment(0, 5.0, 1)};
  EXPECT_THAT(phaseDigests(summary), SizeIs(1));
}

TEST(PhaseDigests, NegativeDurationsCountAsNone) {
  PowerSessionSummary summary;
  summary.powerSegments = {segment(0, -5.0, 3), segment(1, 10.0, 3), segment(2, -1.0, 1)};
  const auto phases = phaseDigests(summary);
  ASSERT_THAT(phases, SizeIs(2));
  EXPECT_EQ(phases[0].durationSeconds, 0.0);
  EXPECT_EQ(phases[0].durationFraction, 0.0);
  EXPECT_EQ(phases[1].durationFraction, 1.0);
}

TEST(PhaseDigests, FieldsAreThoseOfTheSegment) {
  PowerSessionSummary summary;
  summary.powerSegments = {{.index = 4,
                            .sourceKind = "batteryChargeInput",
                            .sourceLabel = "Battery charge input",
                            .acConnected = true,
                            .startedAt = at(10),
                            .endedAt = at(70),
                            .durationSeconds = 60.0,
                            .sampleCount = 31,
                            .wattSampleCount = 30,
                            .averageWatts = 20.0,
                            .minWatts = 10.0,
                            .maxWatts = 30.0,
                            .totalWattHours = 20.0 * 60.0 / 3600.0,
                            .batteryPercentStart = 50,
                            .batteryPercentEnd = 52,
                            .batteryPercentDelta = 2}};
  const PowerSessionPhaseDigest expected{.index = 4,
                                         .sourceKind = "batteryChargeInput",
                                         .sourceLabel = "Battery charge input",
                                         .acConnected = true,
                                         .startedAt = at(10),
                                         .endedAt = at(70),
                                         .durationSeconds = 60.0,
                                         .durationFraction = 1.0,
                                         .sampleCount = 31,
                                         .wattSampleCount = 30,
                                         .averageWatts = 20.0,
                                         .minWatts = 10.0,
                                         .maxWatts = 30.0,
                                         .totalWattHours = 20.0 * 60.0 / 3600.0,
                                         .batteryPercentDelta = 2};
  EXPECT_THAT(phaseDigests(summary), ElementsAre(expected));
}

TEST(PowerSessionReportBuilder, CopiesTheSessionsIdentityAndItsSummary) {
  PowerSessionSummary summary;
  summary.durationSeconds = 100.0;
  summary.powerSegments = {segment(0, 100.0, 51)};
  const std::vector<Observation> samples{observations::bare(0)};
  const auto result = report(session(), summary, samples, maxTimelinePoints);
  EXPECT_EQ(result.sessionID, session().id);
  EXPECT_EQ(result.title, "Flight");
  EXPECT_EQ(result.status, "completed");
  EXPECT_EQ(result.source, "cli");
  EXPECT_EQ(result.startedAt, at(0));
  EXPECT_EQ(result.endedAt, at(100));
  EXPECT_EQ(result.sampleInterval, 2.0);
  EXPECT_EQ(result.summary, summary);
  EXPECT_EQ(result.phases, phaseDigests(summary));
}

TEST(PowerSessionReportBuilder, AnActiveSessionHasNoEnd) {
  PowerSessionMetadataDTO active = session();
  active.endedAt.reset();
  active.status = "active";
  const std::vector<Observation> samples{observations::bare(0)};
  const auto result = report(active, PowerSessionSummary::empty(), samples, maxTimelinePoints);
  EXPECT_EQ(result.endedAt, std::nullopt);
  EXPECT_EQ(result.status, "active");
}

TEST(PowerSessionReportBuilder, SplitsContributorsInOrderAndDropsNone) {
  const auto row = [](const char* name, bool isAggregate) {
    return PowerSessionContributor{.name = name, .isAggregate = isAggregate};
  };
  PowerSessionSummary summary;
  summary.topContributors = {row("ALL_TASKS", true), row("Safari", false), row("DEAD_TASKS", true),
                             row("Xcode", false), row("Mail", false)};
  const std::vector<Observation> samples{observations::bare(0)};
  const auto result = report(session(), summary, samples, maxTimelinePoints);
  EXPECT_THAT(result.actionableContributors,
              ElementsAre(row("Safari", false), row("Xcode", false), row("Mail", false)));
  EXPECT_THAT(result.aggregateContributors,
              ElementsAre(row("ALL_TASKS", true), row("DEAD_TASKS", true)));
}

TEST(PowerSessionReportBuilder, TakesTheThermalDigestOfTheSamplesAtTheSessionsInterval) {
  std::vector<Observation> samples{observations::bare(0), observations::bare(200)};
  samples[0].columns.maxTemperature = 82.0;
  samples[1].columns.maxTemperature = 84.0;
  EXPECT_EQ(reportOf(samples).thermalDigest.timeAbove80C, 0.0);
  PowerSessionMetadataDTO slow = session();
  // 4 * 50 s = 200 s
  slow.sampleInterval = 50.0;
  const auto result = report(slow, PowerSessionSummary::empty(), samples, maxTimelinePoints);
  EXPECT_EQ(result.thermalDigest.timeAbove80C, 200.0);
}

TEST(PowerSessionReportBuilderDeathTest, ASessionWithoutSamplesEndsTheProcess) {
  EXPECT_DEATH((void)reportOf({}), "Fatal error: a thermal digest needs at least one sample");
}

TEST(Timeline, PointsComeFromTheColumns) {
  std::vector<Observation> samples{observations::discharging(0, 80, 12.0),
                                   observations::discharging(2, 79, 13.0)};
  samples[1].columns.maxTemperature = 61.5;
  samples[1].columns.maxFanRPM = 1800;
  samples[1].snapshot->powerSourceLabel = "Battery draw";
  // The snapshot says otherwise, and the columns hold.
  samples[1].snapshot->totalWatts = 99.0;
  samples[1].snapshot->battery->chargePercent = 11;
  samples[1].snapshot->maxSensorTemperature = 99.0;
  samples[1].snapshot->maxFanRPM = 9999;
  const PowerSessionTimelinePoint expected{.id = 1,
                                           .elapsedSeconds = 2.0,
                                           .timestamp = at(2),
                                           .watts = 13.0,
                                           .batteryPercent = 79,
                                           .maxTemperature = 61.5,
                                           .maxFanRPM = 1800,
                                           .sourceKind = "batteryDischarge",
                                           .sourceLabel = "Battery draw"};
  const auto timeline = reportOf(samples).timeline;
  ASSERT_THAT(timeline, SizeIs(2));
  EXPECT_EQ(timeline[1], expected);
}

TEST(Timeline, SnapshotsStandInForAbsentColumns) {
  Observation sample = observations::discharging(0, 80, 12.0);
  sample.columns.totalWatts.reset();
  sample.columns.batteryPercent.reset();
  sample.snapshot->maxSensorTemperature = 55.0;
  sample.snapshot->maxFanRPM = 2000;
  const auto point = reportOf({sample}).timeline.at(0);
  EXPECT_EQ(point.watts, 12.0);
  EXPECT_EQ(point.batteryPercent, 80);
  EXPECT_EQ(point.maxTemperature, 55.0);
  EXPECT_EQ(point.maxFanRPM, 2000);
}

TEST(Timeline, WhatNeitherKnowsIsAbsent) {
  const auto point = reportOf({observations::desktop(0)}).timeline.at(0);
  EXPECT_EQ(point.watts, std::nullopt);
  EXPECT_EQ(point.batteryPercent, std::nullopt);
  EXPECT_EQ(point.maxTemperature, std::nullopt);
  EXPECT_EQ(point.maxFanRPM, std::nullopt);
  EXPECT_EQ(point.bytesInPerSec, std::nullopt);
  EXPECT_EQ(point.bytesOutPerSec, std::nullopt);
  EXPECT_EQ(point.sourceKind, "unavailable");
}

TEST(Timeline, NetworkRatesAreTheSnapshotsTotals) {
  Observation sample = observations::desktop(0);
  sample.snapshot->network =
      ObservedNetwork{.totalBytesInPerSec = 1000.0, .totalBytesOutPerSec = 0.0};
  const auto point = reportOf({sample}).timeline.at(0);
  EXPECT_EQ(point.bytesInPerSec, 1000.0);
  EXPECT_EQ(point.bytesOutPerSec, 0.0);
}

TEST(Timeline, ASnapshotThatDoesNotDecodeLeavesAPointOfColumns) {
  const auto point =
      reportOf({observations::undecodable(observations::discharging(4, 80, 12.0))}).timeline.at(0);
  EXPECT_EQ(point.elapsedSeconds, 4.0);
  EXPECT_EQ(point.watts, 12.0);
  EXPECT_EQ(point.batteryPercent, 80);
  EXPECT_EQ(point.sourceKind, "batteryDischarge");
  EXPECT_EQ(point.sourceLabel, "Battery draw");
  EXPECT_EQ(point.bytesInPerSec, std::nullopt);
}

TEST(Timeline, IsThinnedByTheFiguresOfTheSnapshotsToo) {
  std::vector<Observation> samples;
  samples.reserve(1000);
  for (int second = 0; second < 1000; ++second) {
    samples.push_back(observations::discharging(second, 80, 10.0));
  }
  samples[500].columns.totalWatts.reset();
  samples[500].snapshot->totalWatts = 30.0;
  const auto timeline = reportOf(samples).timeline;
  ASSERT_THAT(timeline, SizeIs(240));
  EXPECT_THAT(ids(timeline), testing::Contains(500));
  EXPECT_EQ(timeline.front().id, 0);
  EXPECT_EQ(timeline.back().id, 999);
}

TEST(Timeline, IsTheDownsamplingOfAllPoints) {
  EXPECT_TRUE(rc::check([] {
    std::vector<Observation> samples;
    const auto count = *rc::gen::inRange(1, 60);
    samples.reserve(static_cast<std::size_t>(count));
    for (int second = 0; second < count; ++second) {
      samples.push_back(observations::discharging(second, 80, *rc::gen::inRange(0, 40)));
    }
    const auto maxCount = *rc::gen::inRange<std::int64_t>(-1, 30);
    const auto all = report(session(), PowerSessionSummary::empty(), samples, 0).timeline;
    const auto thinned =
        report(session(), PowerSessionSummary::empty(), samples, maxCount).timeline;
    RC_ASSERT(all.size() == samples.size());
    RC_ASSERT(thinned == downsample(all, maxCount));
  }));
}

}  // namespace
}  // namespace quorvex
