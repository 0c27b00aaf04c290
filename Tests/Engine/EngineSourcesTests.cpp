#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "EngineSources.h"
#include "FakeMachine.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeMachine;
using ::testing::IsEmpty;

constexpr const char* helperPath = PrivilegedSMCHelperService::defaultHelperPath;

/// A machine that writes down in which order its ports are read; consecutive reads of one port
/// count once.
class OrderedMachine final : public Machine {
 public:
  FakeMachine fake;

  OrderedMachine() {
    fake.time.duringSleep([this] { note("silicon"); });
  }

  [[nodiscard]] const std::vector<std::string>& order() const { return order_; }

  BatteryDictionaries& batteryDictionaries() override { return battery_; }
  EnergyLibrary& energyLibrary() override { return fake.energy; }
  SMCPort& smc() override { return smc_; }
  HIDTemperatures& hidTemperatures() override { return hid_; }
  ThermalReadings& thermalReadings() override { return thermal_; }
  InterfaceTable& interfaceTable() override { return interfaces_; }
  ProcessTable& processTable() override { return fake.processes; }
  ChildProcesses& childProcesses() override { return children_; }
  FileAttributes& fileAttributes() override { return fake.files; }
  Clock& clock() override { return clock_; }
  UserDefaults& userDefaults() override { return fake.defaults; }
  LoginItem& loginItem() override { return fake.login; }

 private:
  void note(const std::string& name) {
    if (order_.empty() || order_.back() != name) {
      order_.push_back(name);
    }
  }

  struct Battery final : BatteryDictionaries {
    explicit Battery(OrderedMachine& owner) : machine(&owner) {}
    std::optional<Dictionary> registry() override {
      machine->note("battery");
      return machine->fake.battery.registry();
    }
    std::optional<Dictionary> firstPowerSource() override {
      machine->note("battery");
      return machine->fake.battery.firstPowerSource();
    }
    OrderedMachine* machine;
  };
  struct SMC final : SMCPort {
    explicit SMC(OrderedMachine& owner) : machine(&owner) {}
    std::optional<Connection> open() override { return machine->fake.smcFake.open(); }
    void close(Connection connection) override { machine->fake.smcFake.close(connection); }
    int call(Connection connection, const SMCKeyRecord& input, SMCKeyRecord& output) override {
      const char first = static_cast<char>(input.key >> 24U);
      machine->note(first == 'F' ? "fans" : "SMC temperatures");
      return machine->fake.smcFake.call(connection, input, output);
    }
    OrderedMachine* machine;
  };
  struct HID final : HIDTemperatures {
    explicit HID(OrderedMachine& owner) : machine(&owner) {}
    std::unique_ptr<HIDTemperatureClient> open() override {
      machine->note("HID");
      return machine->fake.hid.open();
    }
    OrderedMachine* machine;
  };
  struct Thermal final : ThermalReadings {
    explicit Thermal(OrderedMachine& owner) : machine(&owner) {}
    std::int64_t thermalState() override {
      machine->note("thermal");
      return machine->fake.thermal.thermalState();
    }
    std::optional<std::uint64_t> thermalPressure() override {
      machine->note("thermal");
      return machine->fake.thermal.thermalPressure();
    }
    bool isLowPowerModeEnabled() override {
      machine->note("thermal");
      return machine->fake.thermal.isLowPowerModeEnabled();
    }
    OrderedMachine* machine;
  };
  struct Interfaces final : InterfaceTable {
    explicit Interfaces(OrderedMachine& owner) : machine(&owner) {}
    std::optional<std::vector<std::byte>> readInterfaceList() override {
      machine->note("interfaces");
      return machine->fake.interfaces.readInterfaceList();
    }
    std::optional<std::string> interfaceName(std::uint16_t index) override {
      return machine->fake.interfaces.interfaceName(index);
    }
    OrderedMachine* machine;
  };
  struct Children final : ChildProcesses {
    explicit Children(OrderedMachine& owner) : machine(&owner) {}
    LaunchResult launch(const std::string& path, std::span<const std::string> arguments) override {
      machine->note("launch " + path);
      return machine->fake.children.launch(path, arguments);
    }
    OrderedMachine* machine;
  };
  struct OrderedClock final : Clock {
    explicit OrderedClock(OrderedMachine& owner) : machine(&owner) {}
    Date now() override {
      machine->note("clock");
      return machine->fake.time.now();
    }
    std::chrono::nanoseconds monotonic() override { return machine->fake.time.monotonic(); }
    void sleep(double seconds) override { machine->fake.time.sleep(seconds); }
    OrderedMachine* machine;
  };

  std::vector<std::string> order_;
  Battery battery_{*this};
  SMC smc_{*this};
  HID hid_{*this};
  Thermal thermal_{*this};
  Interfaces interfaces_{*this};
  Children children_{*this};
  OrderedClock clock_{*this};
};

class EngineSourcesTest : public ::testing::Test {
 protected:
  EngineSourcesTest() {
    machine.fake.energy.setChannels({{.name = "CPU Energy", .value = 400'000'000}});
  }

  void setSMCTemperature() { machine.fake.smcFake.setFloat("TC0P", 45.0F); }
  void setHelperReply(const std::string& json) {
    machine.fake.files.set(helperPath, {});
    machine.fake.children.answer(helperPath, {"read-temperatures-json"}, {.output = json});
  }
  void setHIDSensor() { machine.fake.hid.setServices({{{"tdie 1", 41.0}}}); }

  OrderedMachine machine;
};

TEST_F(EngineSourcesTest, ReadsStrictlyInSequence) {
  machine.fake.smcFake.set("FNum", "ui8 ", {1});
  EngineSources sources{machine};
  (void)sources.read(false, std::nullopt);
  EXPECT_THAT(machine.order(), ElementsAre("clock", "battery", "thermal", "silicon", "fans",
                                           "SMC temperatures", "HID", "interfaces", "clock"));
}

TEST_F(EngineSourcesTest, AsksTheHelperToolBetweenTheSMCAndTheHIDSensors) {
  setHelperReply("[]");
  setHIDSensor();
  EngineSources sources{machine};
  const EngineReading reading = sources.read(false, std::nullopt);
  EXPECT_THAT(machine.order(),
              ElementsAre("clock", "battery", "thermal", "silicon", "fans", "SMC temperatures",
                          std::string{"launch "} + helperPath, "HID", "interfaces", "clock"));
  EXPECT_THAT(reading.state.sensors, ElementsAre(TemperatureSensor{"tdie_1", "tdie 1", 41.0}));
}

TEST_F(EngineSourcesTest, LowImpactSkipsSiliconHelperAndHID) {
  setHelperReply(R"([{"key":"Tp01","name":"N","temperature":55}])");
  setHIDSensor();
  EngineSources sources{machine};
  const EngineReading reading = sources.read(true, std::nullopt);
  EXPECT_THAT(machine.order(), ElementsAre("clock", "battery", "thermal", "fans",
                                           "SMC temperatures", "interfaces", "clock"));
  EXPECT_THAT(reading.state.sensors, IsEmpty());
  EXPECT_EQ(reading.state.power, std::nullopt);
}

TEST_F(EngineSourcesTest, LowImpactTakesTheCarriedSiliconReading) {
  EngineSources sources{machine};
  const PowerMetrics carried{.cpuPower = 3.0, .systemPower = 3.0};
  EXPECT_EQ(sources.read(true, carried).state.power, carried);
}

TEST_F(EngineSourcesTest, WithoutLowImpactACarriedReadingIsOfNoMeaning) {
  machine.fake.energy.setChannels({});
  EngineSources sources{machine};
  EXPECT_EQ(sources.read(false, PowerMetrics{.cpuPower = 3.0}).state.power, std::nullopt);
}

TEST_F(EngineSourcesTest, SMCTemperaturesGoBeforeEveryFallback) {
  setSMCTemperature();
  setHelperReply(R"([{"key":"Tp01","name":"N","temperature":55}])");
  setHIDSensor();
  EngineSources sources{machine};
  EXPECT_THAT(sources.read(false, std::nullopt).state.sensors,
              ElementsAre(TemperatureSensor{"TC0P", "CPU Proximity", 45.0}));
  EXPECT_THAT(machine.fake.children.launches(), IsEmpty());
  EXPECT_EQ(machine.fake.hid.opens(), 0);
}

TEST_F(EngineSourcesTest, TheHelperToolGoesBeforeTheHIDSensors) {
  setHelperReply(R"([{"key":"Tp01","name":"N","temperature":55}])");
  setHIDSensor();
  EngineSources sources{machine};
  EXPECT_THAT(sources.read(false, std::nullopt).state.sensors,
              ElementsAre(TemperatureSensor{"Tp01", "N", 55.0}));
  EXPECT_EQ(machine.fake.hid.opens(), 0);
}

TEST_F(EngineSourcesTest, WithoutAnyTemperatureSourceThereAreNoSensors) {
  machine.fake.smcFake.setAvailable(false);
  machine.fake.hid.setAvailable(false);
  EngineSources sources{machine};
  EXPECT_THAT(sources.read(false, std::nullopt).state.sensors, IsEmpty());
}

TEST_F(EngineSourcesTest, NettopNeverRuns) {
  machine.fake.children.answerAll({.output = "Safari.4242,100,200\n"});
  EngineSources sources{machine};
  EXPECT_THAT(sources.read(false, std::nullopt).processes, IsEmpty());
  EXPECT_THAT(machine.fake.children.launches(), IsEmpty());
}

TEST_F(EngineSourcesTest, TheNetworkIsHandedBackApartFromTheState) {
  machine.fake.interfaces.names[4] = "en0";
  machine.fake.interfaces.set({{.index = 4, .bytesIn = 7, .bytesOut = 8}});
  EngineSources sources{machine};
  const EngineReading reading = sources.read(false, std::nullopt);
  EXPECT_EQ(reading.state.network, std::nullopt);
  EXPECT_THAT(reading.interfaces, ElementsAre(NetworkInterfaceStats{
                                      .id = 4, .name = "en0", .bytesIn = 7, .bytesOut = 8}));
}

TEST_F(EngineSourcesTest, TheTimestampIsTakenAtTheEndAndTheDurationIsTheTimeOfTheRead) {
  const Date start = machine.fake.time.now();
  machine.fake.time.duringSleep([this] { machine.fake.time.advance(0.9); });
  EngineSources sources{machine};
  const EngineReading reading = sources.read(false, std::nullopt);
  EXPECT_DOUBLE_EQ(reading.duration, 0.9 + 0.1);
  EXPECT_EQ(reading.state.timestamp, start + std::chrono::seconds{1});
}

TEST_F(EngineSourcesTest, ConnectionsLiveBetweenReads) {
  machine.fake.smcFake.set("FNum", "ui8 ", {0});
  setSMCTemperature();
  EngineSources sources{machine};
  (void)sources.read(false, std::nullopt);
  (void)sources.read(false, std::nullopt);
  EXPECT_EQ(machine.fake.smcFake.count("open"), 1);
  const auto energyLog = machine.fake.energy.log();
  EXPECT_EQ(std::ranges::count(energyLog, "createSubscription"), 1);
  EXPECT_EQ(std::ranges::count(energyLog, "open"), 1);
}

}  // namespace
}  // namespace quorvex
