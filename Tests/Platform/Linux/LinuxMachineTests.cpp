#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "FakeTree.h"
#include "InterfaceMessage.h"
#include "LinuxMachine.h"

namespace quorvex {
namespace {

TEST(LinuxMachineTests, EveryPortReadsTheRootsThatWereGiven) {
  const testing::FakeTree sys;
  const testing::FakeTree proc;
  sys.file("class/power_supply/BAT0/type", "Battery\n");
  sys.file("class/power_supply/BAT0/voltage_now", "12000000\n");
  sys.file("class/hwmon/hwmon0/temp1_input", "40000\n");
  sys.file("class/hwmon/hwmon0/fan1_input", "2000\n");
  sys.file("class/net/eth7/ifindex", "7\n");
  sys.file("class/net/eth7/statistics/rx_bytes", "1\n");
  sys.file("class/net/eth7/statistics/tx_bytes", "2\n");
  sys.file("firmware/acpi/platform_profile", "low-power\n");
  proc.file("7/comm", "seven\n");
  const testing::FakeTree configuration;
  configuration.file("quorvex/defaults.json", "{\"lowImpactMode\": true}");
  std::filesystem::create_directories(proc.path("self"));
  std::filesystem::create_symlink("/opt/quorvex", proc.path("self/exe"));
  LinuxMachine machine{
      {.sys = sys.root(), .proc = proc.root(), .configuration = configuration.root()}};

  EXPECT_TRUE(machine.userDefaults().boolean("lowImpactMode", false));
  EXPECT_EQ(machine.loginItem().status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(machine.batteryDictionaries().registry(), (Dictionary{{"Voltage", 12000}}));
  EXPECT_NE(machine.hidTemperatures().open(), nullptr);
  EXPECT_TRUE(machine.smc().open());
  EXPECT_EQ(machine.interfaceTable().interfaceName(7), "eth7");
  EXPECT_TRUE(machine.thermalReadings().isLowPowerModeEnabled());
  std::vector<std::int32_t> ids(4);
  EXPECT_EQ(machine.processTable().listProcessIDs(ids), 4);
  EXPECT_EQ(ids.front(), 7);
}

TEST(LinuxMachineTests, WhatTheMachineDoesNotHaveIsAbsent) {
  const testing::FakeTree empty;
  LinuxMachine machine{{.sys = empty.root(), .proc = empty.root(), .configuration = empty.root()}};
  EXPECT_EQ(machine.userDefaults().value("lowImpactMode"), std::nullopt);
  EXPECT_EQ(machine.loginItem().status(), LoginItemStatus::notFound);
  EXPECT_EQ(machine.batteryDictionaries().registry(), std::nullopt);
  EXPECT_EQ(machine.batteryDictionaries().firstPowerSource(), std::nullopt);
  EXPECT_EQ(machine.energyLibrary().open(), nullptr);
  EXPECT_EQ(machine.smc().open(), std::nullopt);
  EXPECT_EQ(machine.hidTemperatures().open(), nullptr);
  EXPECT_EQ(machine.thermalReadings().thermalPressure(), std::nullopt);
  EXPECT_EQ(machine.interfaceTable().readInterfaceList(), std::nullopt);
  std::vector<std::int32_t> ids(4);
  EXPECT_EQ(machine.processTable().listProcessIDs(ids), 0);
}

/// What always holds on the computer that runs the tests.
class LiveLinuxMachineTests : public ::testing::Test {
 protected:
  LinuxMachine machine;
};

TEST_F(LiveLinuxMachineTests, ThisProcessIsInTheTableWithItsNameAndTimes) {
  std::vector<std::int32_t> ids(1U << 22U);
  const std::int64_t bytes = machine.processTable().listProcessIDs(ids);
  ASSERT_GT(bytes, 0);
  ids.resize(static_cast<std::size_t>(bytes) / sizeof(std::int32_t));
  EXPECT_THAT(ids, ::testing::Contains(getpid()));

  const auto before = machine.processTable().resources(getpid());
  ASSERT_TRUE(before);
  const auto after = machine.processTable().resources(getpid());
  ASSERT_TRUE(after);
  EXPECT_GE(after->userTime + after->systemTime, before->userTime + before->systemTime);
  EXPECT_EQ(after->energy, 0U);

  std::vector<char> name(1024);
  const std::int64_t length = machine.processTable().processName(getpid(), name);
  ASSERT_GT(length, 0);
  EXPECT_EQ(std::string(name.data(), static_cast<std::size_t>(length)), "LinuxTests");
}

TEST_F(LiveLinuxMachineTests, EveryListedInterfaceHasAName) {
  const auto buffer = machine.interfaceTable().readInterfaceList();
  ASSERT_TRUE(buffer);
  EXPECT_EQ(buffer->size() % interface_message::size, 0U);
  for (std::size_t start = 0; start < buffer->size(); start += interface_message::size) {
    const auto index = static_cast<std::uint16_t>(
        std::to_integer<unsigned>((*buffer)[start + interface_message::indexOffset]) |
        std::to_integer<unsigned>((*buffer)[start + interface_message::indexOffset + 1]) << 8U);
    EXPECT_TRUE(machine.interfaceTable().interfaceName(index)) << index;
  }
}

TEST_F(LiveLinuxMachineTests, TheClockDoesNotStepBack) {
  const std::chrono::nanoseconds before = machine.clock().monotonic();
  EXPECT_GE(machine.clock().monotonic(), before);
  EXPECT_GT(machine.clock().now(), Date{});
}

TEST_F(LiveLinuxMachineTests, FilesAndChildrenAreTheSystemsOwn) {
  EXPECT_TRUE(machine.fileAttributes().isExecutable("/bin/sh"));
  const std::vector<std::string> arguments{"-c", "exit 7"};
  LaunchResult result = machine.childProcesses().launch("/bin/sh", arguments);
  ASSERT_TRUE(std::holds_alternative<std::unique_ptr<ChildProcess>>(result));
  EXPECT_EQ(std::get<std::unique_ptr<ChildProcess>>(result)->exitStatus(), 7);
}

TEST_F(LiveLinuxMachineTests, EveryReadOfTheRealTreesAnswers) {
  // What is there differs from computer to computer; that both dictionaries go together does not.
  EXPECT_EQ(machine.batteryDictionaries().registry().has_value(),
            machine.batteryDictionaries().firstPowerSource().has_value());
  if (const auto client = machine.hidTemperatures().open()) {
    EXPECT_TRUE(client->copyServices());
  }
  EXPECT_EQ(machine.energyLibrary().open(), nullptr);
}

}  // namespace
}  // namespace quorvex
