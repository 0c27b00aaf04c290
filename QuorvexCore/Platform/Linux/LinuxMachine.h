#pragma once

#include <memory>
#include <string>

#include "ConfigurationFolder.h"
#include "Machine.h"

namespace quorvex {

/// The Linux computer that the process runs on, with what it honestly has: batteries under
/// power_supply, hwmon temperatures and fans, interface counters, processes, files, children,
/// clock, settings, autostart. What it does not have (energy channels, nettop, thermal pressure) is
/// absent. Any thread.
class LinuxMachine final : public Machine {
 public:
  /// The file trees that the machine looks at; tests give folders of their own.
  struct Roots {
    std::string sys = "/sys";
    std::string proc = "/proc";
    std::string configuration = configurationFolder();
  };

  LinuxMachine() : LinuxMachine(Roots{}) {}
  explicit LinuxMachine(const Roots& roots);
  ~LinuxMachine() override;

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
