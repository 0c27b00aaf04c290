#pragma once

#include <memory>
#include <string>

#include "DynamicLoader.h"
#include "Machine.h"

namespace quorvex {

/// The Mac that the process runs on, read through the platform's own calls and, for what is
/// private, through entry points that are looked up at run time. Any thread.
class MacMachine final : public Machine {
 public:
  MacMachine();
  /// With another loader, which must outlive the machine, and with a folder that stands for the
  /// whole file system in what is asked about files and in the executables of children.
  MacMachine(DynamicLoader& loader, const std::string& root);
  ~MacMachine() override;

  [[nodiscard]] BatteryDictionaries& batteryDictionaries() override;
  [[nodiscard]] EnergyLibrary& energyLibrary() override;
  [[nodiscard]] SMCPort& smc() override;
  [[nodiscard]] HIDTemperatures& hidTemperatures() override;
  [[nodiscard]] ThermalReadings& thermalReadings() override;
  [[nodiscard]] InterfaceTable& interfaceTable() override;
  [[nodiscard]] ProcessTable& processTable() override;
  [[nodiscard]] ChildProcesses& childProcesses() override;
  [[nodiscard]] FileAttributes& fileAttributes() override;
  [[nodiscard]] Clock& clock() override;
  [[nodiscard]] UserDefaults& userDefaults() override;
  [[nodiscard]] LoginItem& loginItem() override;

 private:
  struct Ports;
  std::unique_ptr<Ports> ports_;
};

}  // namespace quorvex
