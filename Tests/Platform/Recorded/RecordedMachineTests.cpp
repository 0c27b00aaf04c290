#include <array>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "Date.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::hours;
using std::chrono::seconds;
using Pace = RecordedMachine::Pace;

TEST(RecordedMachine, MachineOfNothingAnswersThatItHasNothing) {
  const auto machine = machineOf(R"({"pace": "instant", "frames": [{"at": 0}]})");
  EXPECT_EQ(machine->batteryDictionaries().registry(), std::nullopt);
  EXPECT_EQ(machine->batteryDictionaries().firstPowerSource(), std::nullopt);
  EXPECT_EQ(machine->energyLibrary().open(), nullptr);
  EXPECT_EQ(machine->smc().open(), std::nullopt);
  EXPECT_EQ(machine->hidTemperatures().open(), nullptr);
  EXPECT_EQ(machine->thermalReadings().thermalState(), 0);
  EXPECT_EQ(machine->thermalReadings().thermalPressure(), 0U);
  EXPECT_EQ(machine->interfaceTable().readInterfaceList(), std::nullopt);
  std::array<std::int32_t, 1> ids{};
  EXPECT_LT(machine->processTable().listProcessIDs(ids), 1);
  EXPECT_TRUE(std::holds_alternative<LaunchFailure>(
      machine->childProcesses().launch("/usr/bin/nettop", {})));
}

TEST(RecordedMachine, GivenPaceGoesBeforeTheFiles) {
  RecordedMachine instant{parsedFile(R"({"pace": "real", "frames": [{"at": 0}]})"), Pace::instant};
  instant.clock().sleep(3600);
  EXPECT_EQ(instant.clock().monotonic(), hours{1});
  RecordedMachine real{parsedFile(R"({"pace": "instant", "frames": [{"at": 0}]})"), Pace::real};
  real.clock().sleep(0.001);
  EXPECT_LT(real.clock().monotonic(), hours{1});
  EXPECT_NE(real.clock().monotonic(), std::chrono::milliseconds{1}) << "it runs by itself";
}

TEST(RecordedMachine, FileIsLoadedFromDisk) {
  const auto path = std::filesystem::path{testing::TempDir()} / "recorded-machine-test.json";
  std::ofstream{path} << R"({"startedAt": "2026-01-31T09:30:05Z", "pace": "instant",
                             "frames": [{"at": 0, "registry": {"Voltage": 11900}}]})";
  const auto loaded = RecordedMachine::load(path.string());
  std::filesystem::remove(path);
  const auto& machine = std::get<std::unique_ptr<RecordedMachine>>(loaded);
  EXPECT_EQ(iso8601(machine->clock().now()), "2026-01-31T09:30:05Z");
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"Voltage", 11900}}));
}

TEST(RecordedMachine, FileThatIsNoMachineGivesItsError) {
  const auto loaded = RecordedMachine::load("/nowhere/machine.json");
  EXPECT_EQ(std::get<MachineFileError>(loaded).message,
            "/nowhere/machine.json: cannot be read: No such file or directory");
}

TEST(RecordedMachine, SeveralThreadsMayUseIt) {
  const auto machine = machineOf(
      R"({"pace": "instant", "atEnd": "repeat", "duration": 5, "frames": [
          {"at": 0, "registry": {"A": 1}, "smc": {"FNum": {"type": "ui8 ", "bytes": "02"}},
           "processes": [{"pid": 1, "userTime": {"start": 0, "perSecond": 1e9}}],
           "osascript": {"status": 0, "installs": {"executable": true}}},
          {"at": 2, "helper": null, "registry": {"A": 2}}]})");
  constexpr int threadCount = 4;
  constexpr int rounds = 200;
  std::vector<std::thread> threads;
  threads.reserve(threadCount);
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < rounds; ++round) {
        const auto connection = machine->smc().open();
        SMCKeyRecord input{.key = 0x464E756D};
        input.command = SMCKeyRecord::readBytesCommand;
        SMCKeyRecord output;
        EXPECT_EQ(machine->smc().call(*connection, input, output), 0);
        machine->smc().close(*connection);
        EXPECT_TRUE(machine->batteryDictionaries().registry().has_value());
        EXPECT_TRUE(machine->processTable().resources(1).has_value());
        static_cast<void>(machine->childProcesses().launch("/usr/bin/osascript", {}));
        static_cast<void>(machine->fileAttributes().fileExists(
            "/Library/PrivilegedHelperTools/com.quorvex.helper"));
        machine->clock().sleep(0.5);
      }
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(machine->clock().monotonic(), seconds{400}) << "4 threads * 200 sleeps * 0.5 s";
}

}  // namespace
}  // namespace quorvex
