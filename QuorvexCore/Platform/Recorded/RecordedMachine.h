#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "Machine.h"
#include "MachineFile.h"

namespace quorvex {

/// A computer that a machine file stands in for: every port answers from the frame that the virtual
/// clock has reached. Deterministic. Several threads may use it at a time.
class RecordedMachine final : public Machine {
 public:
  using Pace = MachineFile::Pace;

  /// Reads a machine file. `pace` goes before what the file says.
  [[nodiscard]] static std::variant<std::unique_ptr<RecordedMachine>, MachineFileError> load(
      const std::string& path, std::optional<Pace> pace = std::nullopt);

  /// A machine from a file's parsed content.
  explicit RecordedMachine(MachineFile file, std::optional<Pace> pace = std::nullopt);
  ~RecordedMachine() override;

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
