#pragma once

#include "BatteryDictionaries.h"
#include "ChildProcesses.h"
#include "Clock.h"
#include "EnergyLibrary.h"
#include "FileAttributes.h"
#include "HIDTemperatures.h"
#include "InterfaceTable.h"
#include "LoginItem.h"
#include "ProcessTable.h"
#include "SMCPort.h"
#include "ThermalReadings.h"
#include "UserDefaults.h"

namespace quorvex {

/// Everything that the program asks of the computer it runs on. A source takes the one port that it
/// needs by reference; the machine outlives all of them.
class Machine {
 public:
  Machine() = default;
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  virtual ~Machine() = default;

  [[nodiscard]] virtual BatteryDictionaries& batteryDictionaries() = 0;
  [[nodiscard]] virtual EnergyLibrary& energyLibrary() = 0;
  [[nodiscard]] virtual SMCPort& smc() = 0;
  [[nodiscard]] virtual HIDTemperatures& hidTemperatures() = 0;
  [[nodiscard]] virtual ThermalReadings& thermalReadings() = 0;
  [[nodiscard]] virtual InterfaceTable& interfaceTable() = 0;
  [[nodiscard]] virtual ProcessTable& processTable() = 0;
  [[nodiscard]] virtual ChildProcesses& childProcesses() = 0;
  [[nodiscard]] virtual FileAttributes& fileAttributes() = 0;
  [[nodiscard]] virtual Clock& clock() = 0;
  [[nodiscard]] virtual UserDefaults& userDefaults() = 0;
  [[nodiscard]] virtual LoginItem& loginItem() = 0;
};

}  // namespace quorvex
