#include <array>
#include <cstring>

#include "DarwinTest.h"
#include "FakeOutput.h"
#include "FakeTree.h"
#include "HIDSensorService.h"
#include "MacMachine.h"
#include "PowerService.h"
#include "SMCService.h"
#include "StatusCommand.h"

namespace quorvex::darwin {
namespace {

/// A Mac of which everything answers.
void answerEverything() {
  fake().isLogging = false;
  fake().libraries = {"", "/usr/lib/libIOReport.dylib"};
  fake().properties =
      dictionary(Entries{{"Voltage", number(std::int64_t{12000})},
                         {"Amperage", number(std::int64_t{-1500})},
                         {"AdapterDetails", dictionary(Entries{{"Watts", number(96.0)}})},
                         {"Cells", array({number(std::int64_t{1}), text(u"two")})},
                         {"Data", other()}});
  fake().powerSources = {dictionary(Entries{{"BatteryHealth", text(u"Good")}})};
  fake().delta = channelList({{"CPU Energy", 100'000'000}, {"GPU Energy", 50'000'000}});
  fake().hidServices = {{text(u"PMU tdie1"), 45.5}, {nothing(), std::nullopt}};
  fake().smcCall = [](const void* /*input*/, void* output) {
    SMCKeyRecord record;
    record.dataSize = 2;
    record.dataType = 0x73703738;  // "sp78"
    record.bytes[0] = 40;
    std::memcpy(output, &record, sizeof record);
    return 0;
  };
  fake().readInterfaceList = [](void* buffer, std::size_t* size) {
    *size = 160;
    if (buffer != nullptr) {
      std::memset(buffer, 0, *size);
    }
    return 0;
  };
  fake().interfaceName = [](unsigned /*index*/) { return std::optional<std::string>{"en0"}; };
  fake().listProcesses = [](void* buffer, int /*size*/) {
    const std::int32_t pid = 1;
    std::memcpy(buffer, &pid, sizeof pid);
    return static_cast<int>(sizeof pid);
  };
  fake().processUsage = [](int /*pid*/, void* /*record*/) { return 0; };
  fake().processName = [](int /*pid*/, char* /*buffer*/, std::uint32_t /*size*/) { return 0; };
}

class MacMachineTests : public DarwinTest {
 protected:
  /// The folder that stands for the machine's file system.
  testing::FakeTree tree;
};

TEST_F(MacMachineTests, EveryPortReadsTheSystem) {
  answerEverything();
  librariesThatStay = 1;
  MacMachine machine{loader, tree.root()};
  EXPECT_TRUE(machine.batteryDictionaries().registry());
  EXPECT_TRUE(machine.batteryDictionaries().firstPowerSource());
  EXPECT_NE(machine.energyLibrary().open(), nullptr);
  const auto connection = machine.smc().open();
  ASSERT_TRUE(connection);
  machine.smc().close(*connection);
  EXPECT_NE(machine.hidTemperatures().open(), nullptr);
  EXPECT_EQ(machine.thermalReadings().thermalPressure(), 0U);
  EXPECT_TRUE(machine.interfaceTable().readInterfaceList());
  std::array<std::int32_t, 1> ids{};
  EXPECT_EQ(machine.processTable().listProcessIDs(ids), 4);
  EXPECT_EQ(machine.clock().monotonic(), std::chrono::seconds{5});
  machine.userDefaults().setValue("key", true);
  EXPECT_TRUE(machine.userDefaults().boolean("key", false));
  EXPECT_EQ(machine.loginItem().status(), LoginItemStatus::notRegistered);
}

TEST_F(MacMachineTests, FilesAndChildrenAreLookedUpBelowTheGivenRoot) {
  tree.file("usr/bin/nettop", "#!/bin/sh\necho \"$@\"\n");
  std::filesystem::permissions(tree.path("usr/bin/nettop"), std::filesystem::perms::owner_all);
  MacMachine machine{loader, tree.root()};
  EXPECT_TRUE(machine.fileAttributes().fileExists("/usr/bin/nettop"));
  EXPECT_TRUE(machine.fileAttributes().isExecutable("/usr/bin/nettop"));
  EXPECT_EQ(machine.fileAttributes().attributes("/usr/bin/nettop")->permissions, 0700U);
  const std::vector<std::string> arguments{"-P", "-x"};
  auto launched = machine.childProcesses().launch("/usr/bin/nettop", arguments);
  auto& child = std::get<std::unique_ptr<ChildProcess>>(launched);
  EXPECT_EQ(child->readOutputToEnd(), "-P -x\n");
  EXPECT_EQ(child->exitStatus(), 0);
}

TEST_F(MacMachineTests, TenThousandReadsOfEverythingLeakNothing) {
  constexpr int reads = 10'000;
  answerEverything();
  MacMachine machine{loader, tree.root()};
  SMCService smc{machine.smc()};
  PowerService power{machine.energyLibrary(), machine.clock()};
  HIDSensorService hid{machine.hidTemperatures()};
  std::size_t objectsAfterTheFirst = 0;
  for (int i = 0; i < reads; ++i) {
    static_cast<void>(machine.batteryDictionaries().registry());
    static_cast<void>(machine.batteryDictionaries().firstPowerSource());
    ASSERT_TRUE(power.read());
    ASSERT_EQ(smc.readTemperatures().size(), 37U);
    ASSERT_EQ(hid.readTemperatures().size(), 1U);
    static_cast<void>(machine.thermalReadings().thermalState());
    static_cast<void>(machine.thermalReadings().thermalPressure());
    static_cast<void>(machine.interfaceTable().readInterfaceList());
    static_cast<void>(machine.processTable().resources(1));
    machine.userDefaults().setValue("key", 2.5);
    static_cast<void>(machine.userDefaults().value("key"));
    static_cast<void>(machine.loginItem().registerItem());
    if (i == 0) {
      objectsAfterTheFirst = liveObjectCount();
    }
  }
  EXPECT_EQ(liveObjectCount(), objectsAfterTheFirst);
  EXPECT_EQ(fake().openCount("connection 201"), 1) << "the service's own";
  EXPECT_EQ(fake().openCount("token"), 0);
  EXPECT_EQ(fake().openCount("library"), 2) << "energy library and the process's symbols";
  librariesThatStay = 1;
}

TEST_F(MacMachineTests, TenThousandFailuresLeakNothing) {
  constexpr int reads = 10'000;
  answerEverything();
  fake().properties = nothing();
  fake().powerSources = {nothing()};
  fake().subscribedChannels = nothing();
  fake().connectionResult = -1;
  fake().hasHIDClient = false;
  fake().stateStatus = 1;
  fake().loginItemError = "Operation not permitted";
  MacMachine machine{loader, tree.root()};
  SMCService smc{machine.smc()};
  PowerService power{machine.energyLibrary(), machine.clock()};
  HIDSensorService hid{machine.hidTemperatures()};
  const std::size_t objects = liveObjectCount();
  for (int i = 0; i < reads; ++i) {
    ASSERT_EQ(machine.batteryDictionaries().registry(), std::nullopt);
    ASSERT_EQ(machine.batteryDictionaries().firstPowerSource(), std::nullopt);
    ASSERT_EQ(power.read(), std::nullopt);
    ASSERT_TRUE(smc.readFans().empty());
    ASSERT_TRUE(hid.readTemperatures().empty());
    ASSERT_EQ(machine.thermalReadings().thermalPressure(), std::nullopt);
    ASSERT_TRUE(machine.loginItem().registerItem());
  }
  EXPECT_EQ(liveObjectCount(), objects);
  EXPECT_EQ(fake().openCount("library"), 1) << "the energy library";
}

TEST_F(MacMachineTests, MachineWithoutAnythingStillAnswers) {
  fake().hasBatteryService = false;
  fake().hasSMCService = false;
  fake().hasProcessInfo = false;
  fake().hasLoginItems = false;
  fake().registerStatus = 1;
  fake().readInterfaceList = [](void* /*buffer*/, std::size_t* /*size*/) { return -1; };
  MacMachine machine{loader, tree.root()};
  testing::FakeOutput output;
  const SystemPowerState state = StatusCommand{machine, output, {}}.readState();
  EXPECT_EQ(state.battery, std::nullopt);
  EXPECT_EQ(state.power, std::nullopt);
  EXPECT_TRUE(state.sensors.empty());
  EXPECT_TRUE(state.fans.empty());
  EXPECT_EQ(machine.loginItem().status(), LoginItemStatus::unknown);
}

}  // namespace
}  // namespace quorvex::darwin
