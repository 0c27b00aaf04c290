#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "FakeClock.h"
#include "FakeEnergyLibrary.h"
#include "PowerService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeClock;
using testing::FakeEnergyChannel;
using testing::FakeEnergyLibrary;
using ::testing::IsEmpty;
using Step = FakeEnergyLibrary::Step;

using Channels = std::vector<EnergyChannelDelta>;

/// The four channels that carry a component's whole energy, over 0.1 s.
const Channels exactChannels{{"CPU Energy", 1'000'000'000},
                             {"GPU Energy", 500'000'000},
                             {"ANE0", 0},
                             {"DRAM0", 100'000'000}};

/// Watts of an energy in nanojoules within 0.1 s.
double watts(double nanojoules) {
  return nanojoules / 1e9 / 0.1;
}

PowerMetrics parsed(const Channels& channels, double seconds = 0.1) {
  return PowerService::parseEnergyChannels(channels, seconds).value();
}

std::vector<FakeEnergyChannel> fakeChannels(const Channels& channels) {
  std::vector<FakeEnergyChannel> fakes;
  for (const EnergyChannelDelta& channel : channels) {
    fakes.push_back({.name = channel.name, .value = channel.nanojoules});
  }
  return fakes;
}

// The arithmetic

TEST(PowerServiceTests, FourExactChannelsGiveACompleteReading) {
  const PowerMetrics metrics = parsed(exactChannels);
  EXPECT_DOUBLE_EQ(metrics.cpuPower, 1.0 / 0.1);
  EXPECT_DOUBLE_EQ(metrics.gpuPower, 0.5 / 0.1);
  EXPECT_DOUBLE_EQ(metrics.anePower, 0.0);
  EXPECT_DOUBLE_EQ(metrics.ramPower, 0.1 / 0.1);
  EXPECT_DOUBLE_EQ(metrics.systemPower, 10.0 + 5.0 + 0.0 + 1.0);
  EXPECT_TRUE(metrics.siliconChannelsComplete);
  EXPECT_EQ(metrics.cpuUsagePercent, 0.0);
  EXPECT_EQ(metrics.gpuUsagePercent, std::nullopt);
}

TEST(PowerServiceTests, TheIntervalDividesTheEnergy) {
  EXPECT_DOUBLE_EQ(parsed({{"CPU Energy", 3'000'000'000}}, 2.0).cpuPower, 3.0 / 2.0);
}

TEST(PowerServiceTests, SystemPowerIsTheSumOfTheFourPowers) {
  const PowerMetrics metrics = parsed({{"CPU Energy", 123'456'789},
                                       {"GPU Energy", 98'765'432},
                                       {"ANE0", 5'555'555},
                                       {"DRAM0", 7'777'777}});
  EXPECT_EQ(metrics.systemPower,
            metrics.cpuPower + metrics.gpuPower + metrics.anePower + metrics.ramPower);
}

TEST(PowerServiceTests, AnExactChannelWinsOverPartialOnes) {
  EXPECT_DOUBLE_EQ(parsed({{"ECPU0", 7}, {"CPU Energy", 9}}).cpuPower, watts(9));
  EXPECT_DOUBLE_EQ(parsed({{"CPU Energy", 9}, {"ECPU0", 7}}).cpuPower, watts(9));
}

TEST(PowerServiceTests, AnExactChannelOfZeroStillWinsOverPartialOnes) {
  EXPECT_EQ(parsed({{"CPU Energy", 0}, {"ECPU0", 7}}).cpuPower, 0.0);
}

TEST(PowerServiceTests, PartialChannelsAreSummedAndIncomplete) {
  const PowerMetrics metrics = parsed({{"PCPU0", 300}, {"ECPU0", 40}});
  EXPECT_DOUBLE_EQ(metrics.cpuPower, watts(340));
  EXPECT_FALSE(metrics.siliconChannelsComplete);
}

TEST(PowerServiceTests, ALaterExactChannelOverwritesAnEarlierOne) {
  EXPECT_DOUBLE_EQ(parsed({{"GPU Energy", 5}, {"GPU Energy", 8}}).gpuPower, watts(8));
}

TEST(PowerServiceTests, MemoryChannelsAreFoundByTheirSubstrings) {
  EXPECT_DOUBLE_EQ(parsed({{"DRAM1", 11}}).ramPower, watts(11));
  EXPECT_DOUBLE_EQ(parsed({{"SOC_RAM", 13}}).ramPower, watts(13));
  // A name that holds both words counts once.
  EXPECT_DOUBLE_EQ(parsed({{"DRAM1", 11}, {"SOC_RAM", 13}}).ramPower, watts(24));
}

TEST(PowerServiceTests, SubstringsAreFoundInAnyCase) {
  const PowerMetrics metrics = parsed({{"pCpU", 1}, {"gPu_SRAM", 2}, {"Ane1", 4}, {"dRaM", 8}});
  EXPECT_DOUBLE_EQ(metrics.cpuPower, watts(1));
  EXPECT_DOUBLE_EQ(metrics.gpuPower, watts(2));
  EXPECT_DOUBLE_EQ(metrics.anePower, watts(4));
  EXPECT_DOUBLE_EQ(metrics.ramPower, watts(8));
}

TEST(PowerServiceTests, ExactNamesAreCaseSensitive) {
  const PowerMetrics metrics =
      parsed({{"cpu energy", 1}, {"GPU Energy", 2}, {"ANE0", 3}, {"DRAM0", 4}});
  EXPECT_DOUBLE_EQ(metrics.cpuPower, watts(1));
  EXPECT_FALSE(metrics.siliconChannelsComplete);
}

TEST(PowerServiceTests, ANameWithCpuAndGpuGoesToTheCpuAlone) {
  const PowerMetrics metrics = parsed({{"GPU-CPU fabric", 21}});
  EXPECT_DOUBLE_EQ(metrics.cpuPower, watts(21));
  EXPECT_EQ(metrics.gpuPower, 0.0);
}

TEST(PowerServiceTests, ANegativeValueIsZeroAndAddsNothing) {
  const PowerMetrics metrics =
      parsed({{"CPU Energy", -1'000'000'000}, {"GPU Energy", 200'000'000}});
  EXPECT_EQ(metrics.cpuPower, 0.0);
  EXPECT_EQ(metrics.systemPower, metrics.gpuPower);
  EXPECT_DOUBLE_EQ(metrics.gpuPower, 0.2 / 0.1);
}

TEST(PowerServiceTests, UnknownChannelsAloneGiveNoneAndNotZeros) {
  EXPECT_EQ(PowerService::parseEnergyChannels(Channels{{"DISP", 5}, {"ISP", 6}, {"", 7}}, 0.1),
            std::nullopt);
  EXPECT_EQ(PowerService::parseEnergyChannels({}, 0.1), std::nullopt);
}

TEST(PowerServiceTests, UnknownChannelsBesideKnownOnesAreIgnored) {
  Channels channels = exactChannels;
  channels.push_back({"DISP", 5'000'000'000});
  EXPECT_EQ(parsed(channels), parsed(exactChannels));
}

TEST(PowerServiceTests, AnIntervalNotAboveZeroGivesNone) {
  EXPECT_EQ(PowerService::parseEnergyChannels(exactChannels, 0.0), std::nullopt);
  EXPECT_EQ(PowerService::parseEnergyChannels(exactChannels, -0.1), std::nullopt);
  EXPECT_EQ(
      PowerService::parseEnergyChannels(exactChannels, std::numeric_limits<double>::quiet_NaN()),
      std::nullopt);
}

class PowerServiceMissingChannelTests : public ::testing::TestWithParam<std::size_t> {};

TEST_P(PowerServiceMissingChannelTests, TheComponentIsZeroAndTheReadingIncomplete) {
  Channels channels{{"CPU Energy", 100'000'000},
                    {"GPU Energy", 200'000'000},
                    {"ANE0", 300'000'000},
                    {"DRAM0", 400'000'000}};
  channels.erase(channels.begin() + static_cast<std::ptrdiff_t>(GetParam()));
  std::vector<double> expected{watts(1e8), watts(2e8), watts(3e8), watts(4e8)};
  expected[GetParam()] = 0.0;
  const PowerMetrics metrics = parsed(channels);
  EXPECT_DOUBLE_EQ(metrics.cpuPower, expected[0]);
  EXPECT_DOUBLE_EQ(metrics.gpuPower, expected[1]);
  EXPECT_DOUBLE_EQ(metrics.anePower, expected[2]);
  EXPECT_DOUBLE_EQ(metrics.ramPower, expected[3]);
  EXPECT_FALSE(metrics.siliconChannelsComplete);
}

INSTANTIATE_TEST_SUITE_P(EachOfTheFour, PowerServiceMissingChannelTests,
                         ::testing::Values(0U, 1U, 2U, 3U));

TEST(PowerServiceDeathTests, APartialSumThatOverflowsIsFatal) {
  const Channels channels{{"PCPU0", std::numeric_limits<std::int64_t>::max()}, {"ECPU0", 1}};
  EXPECT_DEATH(static_cast<void>(PowerService::parseEnergyChannels(channels, 0.1)),
               "Fatal error: integer overflow in an addition");
}

// The walk over a delta

class PowerServiceDeltaTests : public ::testing::Test {
 protected:
  std::optional<PowerMetrics> parse(std::vector<FakeEnergyChannel> channels) {
    library.setChannels(std::move(channels));
    const auto subscription = bridge->subscription(bridge->channelsInGroup("Energy Model")).value();
    const auto sample = bridge->sample(subscription);
    return PowerService::parseEnergyDelta(*bridge, bridge->delta(sample, sample), 0.1);
  }

  FakeEnergyLibrary library;
  std::unique_ptr<IOReportBridge> bridge = IOReportBridge::load(library);
};

TEST_F(PowerServiceDeltaTests, GivesTheSameAsTheListOfItsChannels) {
  EXPECT_EQ(parse(fakeChannels(exactChannels)), parsed(exactChannels));
}

TEST_F(PowerServiceDeltaTests, SkipsAnIndexWithoutAnEntry) {
  auto channels = fakeChannels(exactChannels);
  channels.insert(channels.begin() + 1, {.name = "CPU Energy", .value = 5, .hasEntry = false});
  EXPECT_EQ(parse(channels), parsed(exactChannels));
}

TEST_F(PowerServiceDeltaTests, SkipsAChannelWithoutAName) {
  auto channels = fakeChannels(exactChannels);
  channels.insert(channels.begin() + 1, {.name = std::nullopt, .value = 5});
  EXPECT_EQ(parse(channels), parsed(exactChannels));
}

TEST_F(PowerServiceDeltaTests, DoesNotConsultAChannelsGroup) {
  EXPECT_DOUBLE_EQ(parse({{.name = "CPU Energy", .value = 9, .group = "Other"}}).value().cpuPower,
                   watts(9));
}

TEST_F(PowerServiceDeltaTests, ACountOfZeroOrBelowGivesNone) {
  for (const std::int64_t count : {0, -1}) {
    library.setCount(count);
    EXPECT_EQ(parse(fakeChannels(exactChannels)), std::nullopt);
  }
}

// Reading

class PowerServiceReadTests : public ::testing::Test {
 protected:
  PowerServiceReadTests() { library.setChannels(fakeChannels(exactChannels)); }

  [[nodiscard]] std::int64_t count(const std::string& entry) const {
    return std::ranges::count(library.log(), entry);
  }

  FakeEnergyLibrary library;
  FakeClock clock;
};

TEST_F(PowerServiceReadTests, TakesTwoSamplesATenthOfASecondApart) {
  PowerService service{library, clock};
  EXPECT_EQ(service.read(), parsed(exactChannels));
  EXPECT_THAT(library.log(), ElementsAre("open", "copyChannelsInGroup", "createSubscription",
                                         "createSamples", "createSamples", "createSamplesDelta"));
  EXPECT_EQ(library.requestedGroup(), "Energy Model -");
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.1));
}

TEST_F(PowerServiceReadTests, SleepsBetweenTheTwoSamples) {
  PowerService service{library, clock};
  std::int64_t samplesBeforeSleep = 0;
  clock.duringSleep([&] { samplesBeforeSleep = count("createSamples"); });
  static_cast<void>(service.read());
  EXPECT_EQ(samplesBeforeSleep, 1);
  EXPECT_EQ(count("createSamples"), 2);
}

TEST_F(PowerServiceReadTests, SubscribesOnceForTheLifeOfTheService) {
  PowerService service{library, clock};
  EXPECT_EQ(service.read(), parsed(exactChannels));
  EXPECT_EQ(service.read(), parsed(exactChannels));
  EXPECT_EQ(count("createSubscription"), 1);
  EXPECT_EQ(count("createSamples"), 4);
}

TEST_F(PowerServiceReadTests, KeepsOnlyTheSubscriptionAndItsChannelsBetweenReads) {
  PowerService service{library, clock};
  static_cast<void>(service.read());
  EXPECT_EQ(library.liveObjects(), 2);
}

TEST_F(PowerServiceReadTests, ReleasesEverythingBeforeTheLibraryCloses) {
  {
    PowerService service{library, clock};
    static_cast<void>(service.read());
  }
  EXPECT_EQ(library.liveObjects(), 0);
  EXPECT_EQ(library.lateReleases(), 0);
  EXPECT_EQ(library.log().back(), "close");
}

TEST_F(PowerServiceReadTests, WithoutTheLibraryEveryReadIsNoneAtOnce) {
  library.setFails(Step::open);
  PowerService service{library, clock};
  library.setFails(Step::open, false);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_THAT(library.log(), ElementsAre("open"));
  EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(PowerServiceReadTests, AMissingChannelGroupIsNoneAndTriedAgain) {
  PowerService service{library, clock};
  library.setFails(Step::channels);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_THAT(clock.sleeps(), IsEmpty());
  library.setFails(Step::channels, false);
  EXPECT_EQ(service.read(), parsed(exactChannels));
}

TEST_F(PowerServiceReadTests, ARefusedSubscriptionIsNotCached) {
  for (const Step step : {Step::subscription, Step::subscribedChannels}) {
    PowerService service{library, clock};
    library.setFails(step);
    EXPECT_EQ(service.read(), std::nullopt);
    EXPECT_EQ(library.liveObjects(), 0);
    library.setFails(step, false);
    EXPECT_EQ(service.read(), parsed(exactChannels));
  }
}

TEST_F(PowerServiceReadTests, AFailedFirstSampleIsNoneWithoutASleep) {
  PowerService service{library, clock};
  library.failSample(1);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(PowerServiceReadTests, AFailedSecondSampleIsNone) {
  PowerService service{library, clock};
  library.failSample(2);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_EQ(count("createSamplesDelta"), 0);
}

TEST_F(PowerServiceReadTests, AFailedSampleLeavesTheSubscriptionInPlace) {
  PowerService service{library, clock};
  library.failSample(1);
  EXPECT_EQ(service.read(), std::nullopt);
  EXPECT_EQ(library.liveObjects(), 2);
  EXPECT_EQ(service.read(), parsed(exactChannels));
  EXPECT_EQ(count("createSubscription"), 1);
}

TEST_F(PowerServiceReadTests, AFailedDeltaIsNone) {
  PowerService service{library, clock};
  library.setFails(Step::delta);
  EXPECT_EQ(service.read(), std::nullopt);
}

TEST_F(PowerServiceReadTests, AnEmptyDeltaIsNone) {
  PowerService service{library, clock};
  library.setChannels({});
  EXPECT_EQ(service.read(), std::nullopt);
}

TEST_F(PowerServiceReadTests, OverlappingReadsShareOneSubscription) {
  PowerService service{library, clock};
  std::vector<std::optional<PowerMetrics>> results(4);
  {
    std::vector<std::jthread> threads;
    threads.reserve(results.size());
    for (auto& result : results) {
      threads.emplace_back([&service, &result] { result = service.read(); });
    }
  }
  EXPECT_THAT(results, ::testing::Each(std::optional{parsed(exactChannels)}));
  EXPECT_EQ(count("createSubscription"), 1);
  EXPECT_EQ(library.liveObjects(), 2);
}

}  // namespace
}  // namespace quorvex
