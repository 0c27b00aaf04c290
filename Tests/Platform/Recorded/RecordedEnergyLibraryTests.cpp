#include "RecordedTesting.h"

namespace quorvex {
namespace {

constexpr const char* energyGroup = "Energy Model";

/// Goes the whole way that a reader goes: subscribe, two samples 0.1 s apart, their delta.
PlatformObject readDelta(EnergyEntryPoints& library, Clock& clock) {
  const auto group = library.copyChannelsInGroup(energyGroup, std::nullopt);
  const auto subscription = library.createSubscription(group);
  const auto first = library.createSamples(subscription.subscription, subscription.channels);
  clock.sleep(0.1);
  const auto second = library.createSamples(subscription.subscription, subscription.channels);
  return library.createSamplesDelta(first, second);
}

constexpr const char* twoFrames =
    R"({"pace": "instant", "frames": [
        {"at": 0, "energyChannels": [{"name": "CPU Energy", "value": 320000000},
                                     {"name": null, "value": -5}]},
        {"at": 30, "energyChannels": [{"name": "CPU Energy", "value": 1100000000}]},
        {"at": 60, "energyChannels": null}]})";

TEST(RecordedEnergyLibrary, NullChannelsAreAMissingLibrary) {
  EXPECT_EQ(machineWithFrame(R"("energyChannels": null)")->energyLibrary().open(), nullptr);
}

TEST(RecordedEnergyLibrary, DeltaCarriesTheFramesChannels) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  const auto delta = readDelta(*library, machine->clock());
  ASSERT_EQ(library->channelCount(delta), 2);
  const void* cpu = library->channelEntry(delta, 0);
  EXPECT_EQ(library->channelName(cpu), "CPU Energy");
  EXPECT_EQ(library->channelGroup(cpu), energyGroup);
  EXPECT_EQ(library->simpleIntegerValue(cpu, 0), 320000000);
  const void* nameless = library->channelEntry(delta, 1);
  EXPECT_EQ(library->channelName(nameless), std::nullopt);
  EXPECT_EQ(library->simpleIntegerValue(nameless, 0), -5);
}

TEST(RecordedEnergyLibrary, DeltaIsOfTheMomentWhenItIsFormed) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  machine->clock().sleep(29.95);
  const auto delta = readDelta(*library, machine->clock());
  ASSERT_EQ(library->channelCount(delta), 1) << "formed at 30.05 s";
  EXPECT_EQ(library->simpleIntegerValue(library->channelEntry(delta, 0), 0), 1100000000);
  machine->clock().sleep(10);
  EXPECT_EQ(library->simpleIntegerValue(library->channelEntry(delta, 0), 0), 1100000000)
      << "a delta keeps its values";
}

TEST(RecordedEnergyLibrary, OpenLibraryFailsWhileTheFrameHasNone) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  const auto group = library->copyChannelsInGroup(energyGroup, std::nullopt);
  const auto subscription = library->createSubscription(group);
  const auto sample = library->createSamples(subscription.subscription, subscription.channels);
  machine->clock().sleep(60);
  EXPECT_EQ(library->copyChannelsInGroup(energyGroup, std::nullopt), nullptr);
  EXPECT_EQ(library->createSubscription(group).subscription, nullptr);
  EXPECT_EQ(library->createSamples(subscription.subscription, subscription.channels), nullptr);
  EXPECT_EQ(library->createSamplesDelta(sample, sample), nullptr);
}

TEST(RecordedEnergyLibrary, OnlyTheEnergyGroupHasChannels) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  EXPECT_EQ(library->copyChannelsInGroup("CPU Stats", std::nullopt), nullptr);
  EXPECT_EQ(library->copyChannelsInGroup(energyGroup, "Cluster"), nullptr);
}

TEST(RecordedEnergyLibrary, NoChannelsAreAnEmptyDelta) {
  const auto machine = machineWithFrame(R"("energyChannels": [])");
  const auto library = machine->energyLibrary().open();
  const auto delta = readDelta(*library, machine->clock());
  ASSERT_NE(delta, nullptr);
  EXPECT_EQ(library->channelCount(delta), 0);
}

TEST(RecordedEnergyLibrary, MissingObjectsGiveNothing) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  const auto group = library->copyChannelsInGroup(energyGroup, std::nullopt);
  EXPECT_EQ(library->createSubscription(nullptr).subscription, nullptr);
  EXPECT_EQ(library->createSubscription(nullptr).channels, nullptr);
  EXPECT_EQ(library->createSamples(nullptr, group), nullptr);
  EXPECT_EQ(library->createSamples(group, nullptr), nullptr);
  EXPECT_EQ(library->createSamplesDelta(nullptr, group), nullptr);
  EXPECT_EQ(library->createSamplesDelta(group, nullptr), nullptr);
  EXPECT_EQ(library->channelCount(nullptr), 0);
  EXPECT_EQ(library->channelEntry(nullptr, 0), nullptr);
  EXPECT_EQ(library->channelName(nullptr), std::nullopt);
  EXPECT_EQ(library->channelGroup(nullptr), std::nullopt);
  EXPECT_EQ(library->simpleIntegerValue(nullptr, 0), 0);
}

TEST(RecordedEnergyLibrary, IndicesOutsideTheListGiveNothing) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  const auto delta = readDelta(*library, machine->clock());
  EXPECT_EQ(library->channelEntry(delta, -1), nullptr);
  EXPECT_EQ(library->channelEntry(delta, 2), nullptr);
}

TEST(RecordedEnergyLibrary, SampleByItselfHasNoChannels) {
  const auto machine = machineOf(twoFrames);
  const auto library = machine->energyLibrary().open();
  const auto group = library->copyChannelsInGroup(energyGroup, std::nullopt);
  EXPECT_EQ(library->channelCount(library->createSamples(group, group)), 0);
}

}  // namespace
}  // namespace quorvex
