#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ObservationBuilder.h"
#include "ObservationLoader.h"
#include "PowerSessionCoders.h"
#include "ProcessActivityDTO.h"
#include "SampleRecords.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {
namespace {

using observations::at;
using Threads = ObservationLoader::Threads;

struct Stored {
  SampleColumns columns;
  std::string snapshot;
  std::string activity;

  [[nodiscard]] StoredSample sample() const {
    return {.columns = columns, .snapshotData = snapshot, .processActivityData = activity};
  }
};

/// Enough samples for many batches; every seventh does not decode.
std::vector<Stored> manySamples() {
  const auto encoder = PowerSessionCoders::encoder();
  std::vector<Stored> samples;
  for (int i = 0; i < 3000; ++i) {
    SystemPowerState state;
    state.battery = samples::batteryAt(-1.0 - i);
    for (int sensor = 0; sensor < 10; ++sensor) {
      state.sensors.push_back({"key", "Some temperature sensor", 30.0 + sensor});
    }
    std::vector<ProcessActivityDTO> rows(1);
    rows[0].name.assign("Process ").append(std::to_string(i % 50));
    rows[0].impactScore = 1.0 + i;
    Stored stored{.columns = {.timestamp = at(i), .elapsedSeconds = static_cast<double>(i)},
                  .snapshot = *encoder.encode(SystemPowerStateDTO{state}),
                  .activity = *encoder.encode(rows)};
    if (i % 7 == 0) {
      stored.snapshot.pop_back();
    }
    samples.push_back(std::move(stored));
  }
  return samples;
}

ObservationSet loaded(const std::vector<Stored>& samples, Threads threads) {
  ObservationLoader loader{samples.size(), threads};
  for (const Stored& stored : samples) {
    loader.add(stored.sample());
  }
  return loader.finish();
}

bool same(const Observation& left, const Observation& right) {
  const auto sameRow = [](const ObservedProcess& one, const ObservedProcess& other) {
    return one.name == other.name && one.score == other.score &&
           one.isAggregate == other.isAggregate;
  };
  return left.columns == right.columns && left.snapshot.has_value() == right.snapshot.has_value() &&
         (!left.snapshot ||
          (left.snapshot->battery == right.snapshot->battery &&
           left.snapshot->thermalState == right.snapshot->thermalState &&
           left.snapshot->maxSensorTemperature == right.snapshot->maxSensorTemperature &&
           left.snapshot->powerSourceKind == right.snapshot->powerSourceKind)) &&
         std::equal(left.processes.begin(), left.processes.end(), right.processes.begin(),
                    right.processes.end(), sameRow);
}

TEST(ObservationLoader, TheResultIsTheSameOnOneThreadAndOnTwo) {
  const auto samples = manySamples();
  const ObservationSet one = loaded(samples, Threads::callerOnly);
  const ObservationSet two = loaded(samples, Threads::callerAndWorker);
  ASSERT_EQ(one.observations().size(), samples.size());
  ASSERT_EQ(two.observations().size(), samples.size());
  for (std::size_t i = 0; i < samples.size(); ++i) {
    ASSERT_TRUE(same(one.observations()[i], two.observations()[i])) << i;
    ASSERT_EQ(one.observations()[i].snapshot.has_value(), i % 7 != 0) << i;
    ASSERT_EQ(one.observations()[i].processes[0].score, 1.0 + static_cast<double>(i));
  }
}

TEST(ObservationLoader, SamplesComeInOrderOfTimeAndThoseOfOneInstantAsTheyWereAdded) {
  std::vector<Stored> samples;
  for (const auto& [seconds, watts] :
       std::vector<std::pair<double, double>>{{30, 1}, {10, 2}, {20, 3}, {10, 4}}) {
    samples.push_back({.columns = {.timestamp = at(seconds), .totalWatts = watts},
                       .snapshot = {},
                       .activity = {}});
  }
  const ObservationSet set = loaded(samples, Threads::callerAndWorker);
  std::vector<double> watts;
  for (const Observation& observation : set.observations()) {
    watts.push_back(observation.columns.totalWatts.value());
  }
  EXPECT_EQ(watts, (std::vector<double>{2, 4, 3, 1}));
}

TEST(ObservationLoader, NoSamplesGiveAnEmptySet) {
  ObservationLoader loader{0};
  EXPECT_TRUE(loader.finish().observations().empty());
  EXPECT_TRUE(ObservationSet{}.observations().empty());
}

TEST(ObservationLoader, FewerSamplesThanAnnouncedAreFine) {
  ObservationLoader loader{10};
  loader.add({.columns = {.timestamp = at(1)}, .snapshotData = ""});
  EXPECT_EQ(loader.finish().observations().size(), 1U);
}

TEST(ObservationLoader, MayBeGivenUpHalfWay) {
  const auto samples = manySamples();
  ObservationLoader loader{samples.size()};
  for (const Stored& stored : samples) {
    loader.add(stored.sample());
  }
}

TEST(ObservationLoaderDeathTest, MoreSamplesThanAnnouncedAreAFatalError) {
  EXPECT_DEATH(
      {
        ObservationLoader loader{0};
        loader.add({.columns = {}, .snapshotData = ""});
      },
      "more samples than were announced");
}

TEST(ObservationSet, KeepsItsObservationsWhenItIsMoved) {
  const auto samples = manySamples();
  ObservationSet first = loaded(samples, Threads::callerOnly);
  const Observation* place = first.observations().data();
  ObservationSet second;
  second = std::move(first);
  EXPECT_EQ(second.observations().data(), place);
  EXPECT_EQ(second.observations()[1].processes[0].name, "Process 1");
  EXPECT_TRUE(first.observations().empty());  // NOLINT(bugprone-use-after-move)
}

}  // namespace
}  // namespace quorvex
