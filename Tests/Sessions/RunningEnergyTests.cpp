#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ObservationBuilder.h"
#include "PowerSessionMetrics.h"
#include "RunningEnergy.h"

namespace quorvex {
namespace {

namespace obs = observations;

constexpr double interval = 2.0;

/// A session that grows, with its figures kept as it does.
struct GrowingSession {
  void add(const Observation& observation) {
    samples.push_back(observation);
    running.ingest(PowerSessionMetrics::storedPowerPoint(observation));
  }
  [[nodiscard]] PowerSessionSummary summary() const {
    return PowerSessionMetrics::summary(
        {.startedAt = obs::start, .endedAt = std::nullopt, .sampleInterval = interval}, samples);
  }

  std::vector<Observation> samples;
  RunningEnergy running{obs::start, interval};
};

Observation unplugged(double seconds, std::optional<double> watts) {
  Observation observation = obs::discharging(seconds, 80, watts.value_or(0.0));
  observation.columns.totalWatts = watts;
  return observation;
}

TEST(RunningEnergy, NothingIsKnownBeforeTheFirstSample) {
  const RunningEnergy running{obs::start, interval};
  EXPECT_EQ(running.sampleCount(), 0);
  EXPECT_EQ(running.energy(), SessionEnergy{});
}

TEST(RunningEnergy, OneSampleHasItsOwnWattsAsAverageAndNoEnergy) {
  GrowingSession session;
  session.add(unplugged(0.0, 12.0));
  EXPECT_EQ(session.running.energy().averageWatts, 12.0);
  EXPECT_EQ(session.running.energy().totalWattHours, std::nullopt);
}

TEST(RunningEnergy, TwoSamplesSpanATrapezoid) {
  GrowingSession session;
  session.add(unplugged(0.0, 10.0));
  session.add(unplugged(36.0, 20.0));
  // (10 W + 20 W) / 2 for 36 s, which is a hundredth of an hour.
  EXPECT_DOUBLE_EQ(*session.running.energy().totalWattHours, 15.0 * 0.01);
  EXPECT_DOUBLE_EQ(*session.running.energy().averageWatts, 15.0);
}

TEST(RunningEnergy, TheAverageIsOverTheTimeSinceTheSessionsStart) {
  GrowingSession session;
  session.add(unplugged(36.0, 15.0));
  session.add(unplugged(72.0, 15.0));
  // 15 W for 36 s of the 72 s that the session has lasted.
  EXPECT_DOUBLE_EQ(*session.running.energy().averageWatts, 7.5);
}

TEST(RunningEnergy, MixedSourcesWithholdBothWithTheirNote) {
  GrowingSession session;
  session.add(unplugged(0.0, 10.0));
  session.add(obs::charging(2.0, 80, 40.0));
  session.add(unplugged(4.0, 10.0));
  const SessionEnergy energy = session.running.energy();
  EXPECT_EQ(energy.averageWatts, std::nullopt);
  EXPECT_EQ(energy.totalWattHours, std::nullopt);
  EXPECT_EQ(energy.note, PowerSessionMetrics::mixedPowerSourcesNote);
}

TEST(RunningEnergy, AGapWithholdsBothWithItsNote) {
  GrowingSession session;
  session.add(unplugged(0.0, 10.0));
  session.add(unplugged(121.0, 10.0));
  session.add(unplugged(123.0, 10.0));
  EXPECT_EQ(session.running.energy().totalWattHours, std::nullopt);
  EXPECT_EQ(session.running.energy().note, PowerSessionMetrics::sparsePowerCoverageNote);
}

TEST(RunningEnergy, ASampleOfAnEarlierTimeTakesItsPlace) {
  GrowingSession session;
  session.add(unplugged(0.0, 10.0));
  session.add(unplugged(36.0, 10.0));
  session.add(unplugged(18.0, 40.0));
  // Twice (10 W + 40 W) / 2 for 18 s.
  EXPECT_DOUBLE_EQ(*session.running.energy().totalWattHours, 2 * 25.0 * 18.0 / 3600.0);
}

/// Sources, AC states and watts in any order; times that stand still, jump over gaps and go back.
rc::Gen<Observation> anySample() {
  const auto kind = rc::gen::element<std::string_view>("batteryDischarge", "batteryDischarge",
                                                       "ioReportSilicon", "unavailable");
  return rc::gen::map(
      rc::gen::tuple(kind, rc::gen::inRange(0, 6), rc::gen::inRange(0, 8), rc::gen::inRange(0, 4)),
      [](const auto& parts) {
        const auto& [source, ac, watts, decodes] = parts;
        Observation observation = obs::desktop(0.0);
        observation.snapshot->powerSourceKind = source;
        if (ac < 5) {
          observation.columns.acConnected = ac == 0;
        }
        if (watts > 0) {
          observation.columns.totalWatts = watts * 3.7;
        }
        return decodes == 0 ? obs::undecodable(observation) : observation;
      });
}

RC_GTEST_PROP(RunningEnergy, EqualsTheFullSummaryAfterEverySample, ()) {
  const bool goesBack = *rc::gen::arbitrary<bool>();
  const auto step = goesBack ? rc::gen::element(0.0, 0.0, 2.0, 2.1, 2.0, 119.0, -1.0, -130.0)
                             : rc::gen::element(0.0, 0.25, 2.0, 2.0, 2.1, 2.0, 119.0, 120.0, 121.0);
  const bool oneKind = *rc::gen::arbitrary<bool>();
  GrowingSession session;
  double seconds = *rc::gen::element(0.0, 1.5, -4.0);
  for (Observation sample : *rc::gen::container<std::vector<Observation>>(anySample())) {
    if (oneKind && sample.snapshot) {
      sample.snapshot->powerSourceKind = "batteryDischarge";
    }
    sample.columns.timestamp = obs::at(seconds);
    session.add(sample);
    const PowerSessionSummary summary = session.summary();
    const SessionEnergy energy = session.running.energy();
    RC_ASSERT(session.running.sampleCount() == summary.sampleCount);
    RC_ASSERT(energy.averageWatts == summary.averageWatts);
    RC_ASSERT(energy.totalWattHours == summary.totalWattHours);
    RC_ASSERT(energy.note == summary.averageWattsNote);
    seconds += *step;
  }
}

}  // namespace
}  // namespace quorvex
