#pragma once

#include <string>
#include <vector>

#include "FakeBatteryDictionaries.h"
#include "FakeChildProcesses.h"
#include "FakeClock.h"
#include "FakeEnergyLibrary.h"
#include "FakeFileAttributes.h"
#include "FakeHIDTemperatures.h"
#include "FakeInterfaceTable.h"
#include "FakeLoginItem.h"
#include "FakeProcessTable.h"
#include "FakeSMC.h"
#include "FakeThermalReadings.h"
#include "FakeUserDefaults.h"
#include "Machine.h"

namespace quorvex::testing {

/// A whole computer of fakes, and which of its ports were asked for. One thread.
class FakeMachine final : public Machine {
 public:
  FakeBatteryDictionaries battery;
  FakeEnergyLibrary energy;
  FakeSMC smcFake;
  FakeHIDTemperatures hid;
  FakeThermalReadings thermal;
  FakeInterfaceTable interfaces;
  FakeProcessTable processes;
  FakeChildProcesses children;
  FakeFileAttributes files;
  FakeClock time;
  FakeUserDefaults defaults;
  FakeLoginItem login;

  /// The ports in the order in which they were asked for, by the names of the machine's functions.
  [[nodiscard]] const std::vector<std::string>& asked() const { return asked_; }

  BatteryDictionaries& batteryDictionaries() override {
    return noted("batteryDictionaries", battery);
  }
  EnergyLibrary& energyLibrary() override { return noted("energyLibrary", energy); }
  SMCPort& smc() override { return noted("smc", smcFake); }
  HIDTemperatures& hidTemperatures() override { return noted("hidTemperatures", hid); }
  ThermalReadings& thermalReadings() override { return noted("thermalReadings", thermal); }
  InterfaceTable& interfaceTable() override { return noted("interfaceTable", interfaces); }
  ProcessTable& processTable() override { return noted("processTable", processes); }
  ChildProcesses& childProcesses() override { return noted("childProcesses", children); }
  FileAttributes& fileAttributes() override { return noted("fileAttributes", files); }
  Clock& clock() override { return noted("clock", time); }
  UserDefaults& userDefaults() override { return noted("userDefaults", defaults); }
  LoginItem& loginItem() override { return noted("loginItem", login); }

 private:
  template <typename Port>
  Port& noted(const char* name, Port& port) {
    asked_.emplace_back(name);
    return port;
  }

  std::vector<std::string> asked_;
};

}  // namespace quorvex::testing
