#include <gmock/gmock.h>

#include <array>

#include "RecordedTesting.h"

namespace quorvex {
namespace {

using testing::ElementsAre;

constexpr const char* threeProcesses =
    R"("processes": [{"pid": 300, "name": "WindowServer"}, {"pid": 0, "name": "kernel_task"},
                     {"pid": 7, "name": null}])";

TEST(RecordedProcessTable, NullIsAnEmptyList) {
  const auto machine = machineWithFrame(R"("processes": null)");
  std::array<std::int32_t, 4> buffer{};
  EXPECT_LT(machine->processTable().listProcessIDs(buffer), 1);
  EXPECT_EQ(machine->processTable().resources(1), std::nullopt);
}

TEST(RecordedProcessTable, ListsTheIDsInTheirOrder) {
  const auto machine = machineWithFrame(threeProcesses);
  std::array<std::int32_t, 4> buffer{-1, -1, -1, -1};
  EXPECT_EQ(machine->processTable().listProcessIDs(buffer), 12) << "3 ids of 4 bytes";
  EXPECT_THAT(buffer, ElementsAre(300, 0, 7, -1));
}

TEST(RecordedProcessTable, ListThatIsCutFillsTheBuffer) {
  const auto machine = machineWithFrame(threeProcesses);
  std::array<std::int32_t, 2> buffer{};
  EXPECT_EQ(machine->processTable().listProcessIDs(buffer), 8) << "2 ids of 4 bytes";
  EXPECT_THAT(buffer, ElementsAre(300, 0));
}

TEST(RecordedProcessTable, ResourcesAreTheCounters) {
  const auto machine = machineWithFrame(
      R"("processes": [{"pid": 7, "userTime": 1, "systemTime": 2, "idleWakeups": 3,
          "interruptWakeups": 4, "bytesRead": 5, "bytesWritten": 6, "energy": 7}])");
  EXPECT_EQ(machine->processTable().resources(7), (ProcessResources{.userTime = 1,
                                                                    .systemTime = 2,
                                                                    .idleWakeups = 3,
                                                                    .interruptWakeups = 4,
                                                                    .bytesRead = 5,
                                                                    .bytesWritten = 6,
                                                                    .energy = 7}));
}

TEST(RecordedProcessTable, CountersLeftOutAreZero) {
  EXPECT_EQ(machineWithFrame(R"("processes": [{"pid": 7}])")->processTable().resources(7),
            ProcessResources{});
}

TEST(RecordedProcessTable, CountersGrowWithTheClock) {
  const auto machine =
      machineWithFrame(R"("processes": [{"pid": 7, "userTime": {"start": 5, "perSecond": 1e9}}])");
  machine->clock().sleep(0.35);
  EXPECT_EQ(machine->processTable().resources(7)->userTime, 350000005U) << "5 ns + 1e9/s * 0.35 s";
}

TEST(RecordedProcessTable, ProcessThatIsNotAccessibleIsListedWithoutResources) {
  const auto machine =
      machineWithFrame(R"("processes": [{"pid": 7, "name": "x", "accessible": false}])");
  std::array<std::int32_t, 4> ids{};
  EXPECT_EQ(machine->processTable().listProcessIDs(ids), 4);
  EXPECT_EQ(machine->processTable().resources(7), std::nullopt);
}

TEST(RecordedProcessTable, UnknownProcessHasNoResources) {
  EXPECT_EQ(machineWithFrame(threeProcesses)->processTable().resources(8), std::nullopt);
}

TEST(RecordedProcessTable, NameIsFilledIn) {
  const auto machine = machineWithFrame(threeProcesses);
  std::array<char, 64> buffer{};
  buffer.fill('#');
  EXPECT_EQ(machine->processTable().processName(300, buffer), 12);
  EXPECT_STREQ(buffer.data(), "WindowServer");
}

TEST(RecordedProcessTable, NameIsCutToTheBuffer) {
  const auto machine = machineWithFrame(threeProcesses);
  std::array<char, 5> buffer{};
  EXPECT_EQ(machine->processTable().processName(300, buffer), 4);
  EXPECT_STREQ(buffer.data(), "Wind");
  EXPECT_LT(machine->processTable().processName(300, {}), 1);
}

TEST(RecordedProcessTable, MissingNameIsAFailure) {
  const auto machine = machineWithFrame(threeProcesses);
  std::array<char, 64> buffer{};
  EXPECT_LT(machine->processTable().processName(7, buffer), 1) << "a null name";
  EXPECT_LT(machine->processTable().processName(8, buffer), 1) << "no such process";
}

}  // namespace
}  // namespace quorvex
