#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "NetworkSnapshot.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using samples::interface;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

NetworkProcessInfo process(std::int32_t id, double inPerSec, double outPerSec) {
  return NetworkProcessInfo{
      .id = id, .name = "p", .bytesInPerSec = inPerSec, .bytesOutPerSec = outPerSec};
}

TEST(NetworkInterfaceStats, AnyRateMakesItActive) {
  EXPECT_FALSE(interface(1, "en0", 10, 10).isActive());
  EXPECT_TRUE(interface(1, "en0", 0, 0, 0.5, 0.0).isActive());
  EXPECT_TRUE(interface(1, "en0", 0, 0, 0.0, 0.5).isActive());
}

TEST(NetworkInterfaceStats, LoopbackIsExactlyItsName) {
  EXPECT_TRUE(interface(1, "lo0").isLoopback());
  EXPECT_FALSE(interface(1, "lo").isLoopback());
  EXPECT_FALSE(interface(1, "lo01").isLoopback());
}

TEST(NetworkInterfaceStats, TunnelsAreKnownByTheirPrefix) {
  EXPECT_TRUE(interface(1, "utun3").isTunnel());
  EXPECT_TRUE(interface(1, "ipsec0").isTunnel());
  EXPECT_FALSE(interface(1, "en0").isTunnel());
  EXPECT_FALSE(interface(1, "xutun").isTunnel());
}

TEST(NetworkProcessInfo, TotalsAddBothDirections) {
  NetworkProcessInfo info = process(7, 1.5, 2.5);
  info.bytesIn = 100;
  info.bytesOut = 23;
  EXPECT_DOUBLE_EQ(info.totalBytesPerSec(), 4.0);
  EXPECT_EQ(info.totalBytes(), 123U);
}

TEST(NetworkSnapshot, OnlyLoopbackGivesNothing) {
  const NetworkSnapshot snapshot{.interfaces = {interface(1, "lo0", 900, 800, 7.0, 6.0)}};
  EXPECT_EQ(snapshot.totalBytesIn(), 0U);
  EXPECT_EQ(snapshot.totalBytesOut(), 0U);
  EXPECT_EQ(snapshot.totalBytesInPerSec(), 0.0);
  EXPECT_EQ(snapshot.totalBytesOutPerSec(), 0.0);
  EXPECT_THAT(snapshot.activeInterfaces(), IsEmpty());
}

TEST(NetworkSnapshot, NoInterfacesGiveZeroTotals) {
  EXPECT_EQ(NetworkSnapshot{}.totalBytesInPerSec(), 0.0);
  EXPECT_EQ(NetworkSnapshot{}.totalBytesOut(), 0U);
}

TEST(NetworkSnapshot, TotalsCountTunnelsAndLeaveOutLoopback) {
  const NetworkSnapshot snapshot{.interfaces = {interface(1, "lo0", 1000, 1000, 50.0, 50.0),
                                                interface(2, "en0", 10, 20, 1.0, 2.0),
                                                interface(3, "utun0", 5, 6, 0.5, 0.25)}};
  EXPECT_EQ(snapshot.totalBytesIn(), 10U + 5U);
  EXPECT_EQ(snapshot.totalBytesOut(), 20U + 6U);
  EXPECT_DOUBLE_EQ(snapshot.totalBytesInPerSec(), 1.5);
  EXPECT_DOUBLE_EQ(snapshot.totalBytesOutPerSec(), 2.25);
}

TEST(NetworkSnapshot, HostileCountersSaturate) {
  constexpr auto top = std::numeric_limits<std::uint64_t>::max();
  const NetworkSnapshot snapshot{
      .interfaces = {interface(1, "en0", top, 1), interface(2, "en1", top, 2)}};
  EXPECT_EQ(snapshot.totalBytesIn(), top);
  EXPECT_EQ(snapshot.totalBytesOut(), 3U);
}

TEST(NetworkSnapshot, IdleInterfaceWithTrafficBehindItStaysListed) {
  const NetworkSnapshot snapshot{.interfaces = {interface(4, "en0", 5, 0),
                                                interface(2, "en1", 0, 0),
                                                interface(3, "en2", 0, 1)}};
  EXPECT_FALSE(snapshot.interfaces[0].isActive());
  EXPECT_THAT(snapshot.activeInterfaces(), ElementsAre(Field(&NetworkInterfaceStats::id, 4),
                                                       Field(&NetworkInterfaceStats::id, 3)));
}

TEST(NetworkSnapshot, ActiveProcessesHaveARateInTheirOrder) {
  const NetworkSnapshot snapshot{
      .processes = {process(1, 0.0, 2.0), process(2, 0.0, 0.0), process(3, 5.0, 0.0)}};
  EXPECT_THAT(snapshot.activeProcesses(),
              ElementsAre(Field(&NetworkProcessInfo::id, 1), Field(&NetworkProcessInfo::id, 3)));
}

TEST(NetworkSnapshot, TopProcessesAreBusiestFirstAndKeepTies) {
  const NetworkSnapshot snapshot{.processes = {process(1, 1.0, 1.0), process(2, 9.0, 0.0),
                                               process(3, 0.0, 2.0), process(4, 0.0, 0.0),
                                               process(5, 2.0, 0.0)}};
  EXPECT_THAT(snapshot.topProcesses(),
              ElementsAre(Field(&NetworkProcessInfo::id, 2), Field(&NetworkProcessInfo::id, 1),
                          Field(&NetworkProcessInfo::id, 3), Field(&NetworkProcessInfo::id, 5)));
}

}  // namespace
}  // namespace quorvex
