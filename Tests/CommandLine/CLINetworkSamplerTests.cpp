#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CLINetworkSampler.h"
#include "FakeMachine.h"

namespace quorvex {
namespace {

using ::testing::IsEmpty;

constexpr Date start{std::chrono::seconds{1'700'000'000}};

class CLINetworkSamplerTest : public ::testing::Test {
 protected:
  CLINetworkSamplerTest() {
    machine.interfaces.names[4] = "en0";
    machine.interfaces.names[5] = "en1";
  }

  void setCounters(std::uint64_t bytesIn, std::uint64_t bytesOut) {
    machine.interfaces.set({{.index = 4, .bytesIn = bytesIn, .bytesOut = bytesOut}});
  }

  /// What one run of nettop prints for a single process.
  void setProcess(std::uint64_t bytesIn, std::uint64_t bytesOut) {
    machine.children.answerAll({.output = ",bytes_in,bytes_out,\nSafari.612," +
                                          std::to_string(bytesIn) + "," + std::to_string(bytesOut) +
                                          ",\n"});
  }

  static Date after(double seconds) { return dateByAdding(start, seconds); }

  testing::FakeMachine machine;
};

TEST_F(CLINetworkSamplerTest, TheFirstReadingHasCountersAndNoRates) {
  setCounters(1000, 500);
  CLINetworkSampler sampler{machine, false};
  const NetworkSnapshot snapshot = sampler.read(start);
  EXPECT_EQ(snapshot.timestamp, start);
  ASSERT_EQ(snapshot.interfaces.size(), 1U);
  EXPECT_EQ(snapshot.interfaces[0].name, "en0");
  EXPECT_EQ(snapshot.interfaces[0].bytesIn, 1000U);
  EXPECT_EQ(snapshot.interfaces[0].bytesOut, 500U);
  EXPECT_EQ(snapshot.interfaces[0].bytesInPerSec, 0.0);
  EXPECT_EQ(snapshot.interfaces[0].bytesOutPerSec, 0.0);
  EXPECT_FALSE(snapshot.attributionUnavailableReason);
}

TEST_F(CLINetworkSamplerTest, TheSecondReadingHasRatesOverTheGivenTimestamps) {
  setCounters(1000, 500);
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  setCounters(9000, 2500);
  const NetworkSnapshot snapshot = sampler.read(after(4.0));
  EXPECT_EQ(snapshot.interfaces[0].bytesInPerSec, (9000 - 1000) / 4.0);
  EXPECT_EQ(snapshot.interfaces[0].bytesOutPerSec, (2500 - 500) / 4.0);
}

TEST_F(CLINetworkSamplerTest, EachReadingIsComparedWithTheOneBefore) {
  setCounters(1000, 0);
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  setCounters(2000, 0);
  static_cast<void>(sampler.read(after(1.0)));
  setCounters(2500, 0);
  EXPECT_EQ(sampler.read(after(2.0)).interfaces[0].bytesInPerSec, 500.0);
}

TEST_F(CLINetworkSamplerTest, WithoutTimeBetweenReadingsThereAreNoRates) {
  setCounters(1000, 0);
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  setCounters(2000, 0);
  EXPECT_EQ(sampler.read(start).interfaces[0].bytesInPerSec, 0.0);
  EXPECT_EQ(sampler.read(after(-1.0)).interfaces[0].bytesInPerSec, 0.0);
}

TEST_F(CLINetworkSamplerTest, AnInterfaceOnlyInTheFirstReadingLeavesTheSecond) {
  machine.interfaces.set({{.index = 4, .bytesIn = 1000}, {.index = 5, .bytesIn = 7000}});
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  setCounters(2000, 0);
  const NetworkSnapshot snapshot = sampler.read(after(1.0));
  ASSERT_EQ(snapshot.interfaces.size(), 1U);
  EXPECT_EQ(snapshot.interfaces[0].bytesInPerSec, 1000.0);
}

TEST_F(CLINetworkSamplerTest, AnInterfaceOnlyInTheSecondReadingHasNoRate) {
  setCounters(1000, 0);
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  machine.interfaces.set({{.index = 4, .bytesIn = 1500}, {.index = 5, .bytesIn = 7000}});
  const NetworkSnapshot snapshot = sampler.read(after(1.0));
  ASSERT_EQ(snapshot.interfaces.size(), 2U);
  EXPECT_EQ(snapshot.interfaces[0].bytesInPerSec, 500.0);
  EXPECT_EQ(snapshot.interfaces[1].bytesInPerSec, 0.0);
}

TEST_F(CLINetworkSamplerTest, AFailedReadIsAnEmptyListAndStoredAsSuch) {
  setCounters(1000, 0);
  CLINetworkSampler sampler{machine, false};
  static_cast<void>(sampler.read(start));
  machine.interfaces.buffer = std::nullopt;
  EXPECT_THAT(sampler.read(after(1.0)).interfaces, IsEmpty());
  setCounters(5000, 0);
  EXPECT_EQ(sampler.read(after(2.0)).interfaces[0].bytesInPerSec, 0.0);
}

TEST_F(CLINetworkSamplerTest, WithoutAttributionNettopIsNeverStarted) {
  setProcess(100, 100);
  CLINetworkSampler sampler{machine, false};
  const NetworkSnapshot snapshot = sampler.read(start);
  EXPECT_THAT(snapshot.processes, IsEmpty());
  EXPECT_EQ(snapshot.attributionSource, NetworkAttributionSource::none);
  EXPECT_THAT(machine.children.launches(), IsEmpty());
}

TEST_F(CLINetworkSamplerTest, WithAttributionNettopRunsOnceAReading) {
  setProcess(100, 50);
  CLINetworkSampler sampler{machine, true};
  const NetworkSnapshot snapshot = sampler.read(start);
  ASSERT_EQ(snapshot.processes.size(), 1U);
  EXPECT_EQ(snapshot.processes[0].id, 612);
  EXPECT_EQ(snapshot.processes[0].bytesIn, 100U);
  EXPECT_EQ(snapshot.processes[0].bytesInPerSec, 0.0);
  EXPECT_EQ(snapshot.attributionSource, NetworkAttributionSource::nettop);
  const auto launches = machine.children.launches();
  ASSERT_EQ(launches.size(), 1U);
  EXPECT_EQ(launches[0].path, "/usr/bin/nettop");
}

TEST_F(CLINetworkSamplerTest, ProcessRatesComeWithTheSecondReading) {
  setProcess(1000, 500);
  CLINetworkSampler sampler{machine, true};
  static_cast<void>(sampler.read(start));
  setProcess(4000, 600);
  const NetworkSnapshot snapshot = sampler.read(after(2.0));
  ASSERT_EQ(snapshot.processes.size(), 1U);
  EXPECT_EQ(snapshot.processes[0].bytesInPerSec, (4000 - 1000) / 2.0);
  EXPECT_EQ(snapshot.processes[0].bytesOutPerSec, (600 - 500) / 2.0);
}

TEST_F(CLINetworkSamplerTest, WithoutProcessRowsTheAttributionIsNone) {
  machine.children.failAll("no such file");
  CLINetworkSampler sampler{machine, true};
  const NetworkSnapshot snapshot = sampler.read(start);
  EXPECT_EQ(snapshot.attributionSource, NetworkAttributionSource::none);
  EXPECT_FALSE(snapshot.attributionUnavailableReason);
}

}  // namespace
}  // namespace quorvex
