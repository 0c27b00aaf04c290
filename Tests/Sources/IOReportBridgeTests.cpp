#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeEnergyLibrary.h"
#include "IOReportBridge.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeEnergyLibrary;
using Step = FakeEnergyLibrary::Step;

TEST(IOReportBridgeTests, AMissingLibraryGivesNoBridge) {
  FakeEnergyLibrary library;
  library.setFails(Step::open);
  EXPECT_EQ(IOReportBridge::load(library), nullptr);
  EXPECT_THAT(library.log(), ElementsAre("open"));
}

TEST(IOReportBridgeTests, DestroyingTheBridgeClosesTheLibrary) {
  FakeEnergyLibrary library;
  IOReportBridge::load(library).reset();
  EXPECT_THAT(library.log(), ElementsAre("open", "close"));
}

TEST(IOReportBridgeTests, AGroupIsAskedForWithItsSubgroupOrNone) {
  FakeEnergyLibrary library;
  const auto bridge = IOReportBridge::load(library);
  EXPECT_NE(bridge->channelsInGroup("Energy Model"), nullptr);
  EXPECT_EQ(library.requestedGroup(), "Energy Model -");
  EXPECT_NE(bridge->channelsInGroup("CPU Stats", "CPU Core Performance States"), nullptr);
  EXPECT_EQ(library.requestedGroup(), "CPU Stats CPU Core Performance States");
  library.setFails(Step::channels);
  EXPECT_EQ(bridge->channelsInGroup("Energy Model"), nullptr);
}

TEST(IOReportBridgeTests, ASubscriptionComesWithItsChannels) {
  FakeEnergyLibrary library;
  const auto bridge = IOReportBridge::load(library);
  const auto subscription = bridge->subscription(bridge->channelsInGroup("Energy Model"));
  ASSERT_TRUE(subscription.has_value());
  EXPECT_NE(subscription->subscription, nullptr);
  EXPECT_NE(subscription->channels, nullptr);
}

TEST(IOReportBridgeTests, ARefusedSubscriptionIsNone) {
  FakeEnergyLibrary library;
  const auto bridge = IOReportBridge::load(library);
  library.setFails(Step::subscription);
  EXPECT_EQ(bridge->subscription(bridge->channelsInGroup("Energy Model")), std::nullopt);
  EXPECT_EQ(library.liveObjects(), 0);
}

TEST(IOReportBridgeTests, ASubscriptionWithoutItsChannelsIsNoneAndReleased) {
  FakeEnergyLibrary library;
  const auto bridge = IOReportBridge::load(library);
  library.setFails(Step::subscribedChannels);
  EXPECT_EQ(bridge->subscription(bridge->channelsInGroup("Energy Model")), std::nullopt);
  EXPECT_EQ(library.liveObjects(), 0);
}

TEST(IOReportBridgeTests, ADeltasChannelsCanBeEnumerated) {
  FakeEnergyLibrary library;
  library.setChannels({{.name = "CPU Energy", .value = 7}, {.name = std::nullopt, .value = 8}});
  const auto bridge = IOReportBridge::load(library);
  const auto subscription = bridge->subscription(bridge->channelsInGroup("Energy Model")).value();
  const auto first = bridge->sample(subscription);
  const auto delta = bridge->delta(first, bridge->sample(subscription));
  ASSERT_EQ(bridge->channelCount(delta), 2);
  const void* named = bridge->channelEntry(delta, 0);
  EXPECT_EQ(bridge->channelName(named), "CPU Energy");
  EXPECT_EQ(bridge->channelGroupName(named), "Energy Model");
  EXPECT_EQ(bridge->integerValue(named, 0), 7);
  EXPECT_EQ(bridge->channelName(bridge->channelEntry(delta, 1)), std::nullopt);
  EXPECT_EQ(bridge->channelEntry(delta, 2), nullptr);
  EXPECT_EQ(bridge->channelEntry(delta, -1), nullptr);
}

}  // namespace
}  // namespace quorvex
