#include "RecordedTesting.h"

namespace quorvex {
namespace {

TEST(RecordedBatteryDictionaries, RegistryIsTheFramesDictionary) {
  const auto machine = machineWithFrame(R"("registry": {"Voltage": 11900, "IsCharging": false})");
  EXPECT_EQ(machine->batteryDictionaries().registry(),
            (Dictionary{{"Voltage", 11900}, {"IsCharging", false}}));
}

TEST(RecordedBatteryDictionaries, EmptyRegistryIsPresent) {
  EXPECT_EQ(machineWithFrame(R"("registry": {})")->batteryDictionaries().registry(), Dictionary{});
}

TEST(RecordedBatteryDictionaries, NullRegistryIsNoService) {
  EXPECT_EQ(machineWithFrame(R"("registry": null)")->batteryDictionaries().registry(),
            std::nullopt);
}

TEST(RecordedBatteryDictionaries, OnlyTheFirstPowerSourceAnswers) {
  const auto machine = machineWithFrame(R"("powerSources": [{"A": 1}, {"A": 2}])");
  EXPECT_EQ(machine->batteryDictionaries().firstPowerSource(), (Dictionary{{"A", 1}}));
}

TEST(RecordedBatteryDictionaries, FirstPowerSourceWithoutADescriptionIsNone) {
  const auto machine = machineWithFrame(R"("powerSources": [null, {"A": 2}])");
  EXPECT_EQ(machine->batteryDictionaries().firstPowerSource(), std::nullopt);
}

TEST(RecordedBatteryDictionaries, EmptyAndNullPowerSourcesAreNone) {
  EXPECT_EQ(machineWithFrame(R"("powerSources": [])")->batteryDictionaries().firstPowerSource(),
            std::nullopt);
  EXPECT_EQ(machineWithFrame(R"("powerSources": null)")->batteryDictionaries().firstPowerSource(),
            std::nullopt);
}

TEST(RecordedBatteryDictionaries, AnswerFollowsTheClock) {
  const auto machine = machineOf(
      R"({"pace": "instant", "frames": [{"at": 0, "registry": {"A": 1}},
                                        {"at": 30, "registry": {"A": 2}}]})");
  machine->clock().sleep(29.999999999);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"A", 1}}));
  machine->clock().sleep(0.000000001);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"A", 2}}));
  machine->clock().sleep(1e6);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"A", 2}}))
      << "the last frame goes on answering";
}

TEST(RecordedBatteryDictionaries, AnswerStartsOverWhenTheRecordingRepeats) {
  const auto machine = machineOf(
      R"({"pace": "instant", "atEnd": "repeat", "duration": 60,
          "frames": [{"at": 0}, {"at": 30, "registry": {"A": 2}}]})");
  machine->clock().sleep(59);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"A", 2}}));
  machine->clock().sleep(1);
  EXPECT_EQ(machine->batteryDictionaries().registry(), std::nullopt)
      << "a key left out of the first frame is null in every pass";
  machine->clock().sleep(30);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"A", 2}}));
}

}  // namespace
}  // namespace quorvex
