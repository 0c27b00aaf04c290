#include "RecordedMachine.h"

#include <utility>

#include "RecordedBatteryDictionaries.h"
#include "RecordedChildProcesses.h"
#include "RecordedClock.h"
#include "RecordedEnergyLibrary.h"
#include "RecordedHelperFile.h"
#include "RecordedInterfaceTable.h"
#include "RecordedLoginItem.h"
#include "RecordedProcessTable.h"
#include "RecordedSMCPort.h"
#include "RecordedSensors.h"
#include "RecordedUserDefaults.h"

namespace quorvex {

/// The ports point into `file`, which therefore never moves.
struct RecordedMachine::Ports {
  Ports(MachineFile content, std::optional<Pace> pace)
      : file(std::move(content)), clock(file, pace.value_or(file.pace)) {}

  const MachineFile file;
  RecordedClock clock;
  RecordedBatteryDictionaries batteryDictionaries{file, clock};
  RecordedEnergyLibrary energyLibrary{file, clock};
  RecordedSMCPort smc{file, clock};
  RecordedHIDTemperatures hidTemperatures{file, clock};
  RecordedThermalReadings thermalReadings{file, clock};
  RecordedInterfaceTable interfaceTable{file, clock};
  RecordedProcessTable processTable{file, clock};
  RecordedHelperFile helperFile{file, clock};
  RecordedChildProcesses childProcesses{file, clock, helperFile};
  RecordedUserDefaults userDefaults;
  RecordedLoginItem loginItem;
};

std::variant<std::unique_ptr<RecordedMachine>, MachineFileError> RecordedMachine::load(
    const std::string& path, std::optional<Pace> pace) {
  auto loaded = loadMachineFile(path);
  if (auto* error = std::get_if<MachineFileError>(&loaded)) {
    return std::move(*error);
  }
  return std::make_unique<RecordedMachine>(std::get<MachineFile>(std::move(loaded)), pace);
}

RecordedMachine::RecordedMachine(MachineFile file, std::optional<Pace> pace)
    : ports_(std::make_unique<Ports>(std::move(file), pace)) {}

RecordedMachine::~RecordedMachine() = default;

BatteryDictionaries& RecordedMachine::batteryDictionaries() {
  return ports_->batteryDictionaries;
}
EnergyLibrary& RecordedMachine::energyLibrary() {
  return ports_->energyLibrary;
}
SMCPort& RecordedMachine::smc() {
  return ports_->smc;
}
HIDTemperatures& RecordedMachine::hidTemperatures() {
  return ports_->hidTemperatures;
}
ThermalReadings& RecordedMachine::thermalReadings() {
  return ports_->thermalReadings;
}
InterfaceTable& RecordedMachine::interfaceTable() {
  return ports_->interfaceTable;
}
ProcessTable& RecordedMachine::processTable() {
  return ports_->processTable;
}
ChildProcesses& RecordedMachine::childProcesses() {
  return ports_->childProcesses;
}
FileAttributes& RecordedMachine::fileAttributes() {
  return ports_->helperFile;
}
Clock& RecordedMachine::clock() {
  return ports_->clock;
}
UserDefaults& RecordedMachine::userDefaults() {
  return ports_->userDefaults;
}
LoginItem& RecordedMachine::loginItem() {
  return ports_->loginItem;
}

}  // namespace quorvex
