#include "LinuxMachine.h"

#include "LinuxBatteryDictionaries.h"
#include "LinuxEnergyLibrary.h"
#include "LinuxHIDTemperatures.h"
#include "LinuxInterfaceTable.h"
#include "LinuxLoginItem.h"
#include "LinuxProcessTable.h"
#include "LinuxSMCPort.h"
#include "LinuxThermalReadings.h"
#include "LinuxUserDefaults.h"
#include "PosixChildProcesses.h"
#include "PosixFileAttributes.h"
#include "SystemClock.h"
#include "SystemTree.h"

namespace quorvex {

struct LinuxMachine::Ports {
  explicit Ports(const Roots& roots)
      : batteryDictionaries(roots.sys),
        smc(roots.sys),
        hidTemperatures(roots.sys),
        thermalReadings(roots.sys),
        interfaceTable(roots.sys),
        processTable(roots.proc),
        userDefaults(roots.configuration),
        loginItem(roots.configuration, system_tree::linkTarget(roots.proc + "/self/exe")) {}

  LinuxBatteryDictionaries batteryDictionaries;
  LinuxEnergyLibrary energyLibrary;
  LinuxSMCPort smc;
  LinuxHIDTemperatures hidTemperatures;
  LinuxThermalReadings thermalReadings;
  LinuxInterfaceTable interfaceTable;
  LinuxProcessTable processTable;
  PosixChildProcesses childProcesses;
  PosixFileAttributes fileAttributes;
  SystemClock clock;
  LinuxUserDefaults userDefaults;
  LinuxLoginItem loginItem;
};

LinuxMachine::LinuxMachine(const Roots& roots) : ports_(std::make_unique<Ports>(roots)) {}
LinuxMachine::~LinuxMachine() = default;

BatteryDictionaries& LinuxMachine::batteryDictionaries() {
  return ports_->batteryDictionaries;
}
EnergyLibrary& LinuxMachine::energyLibrary() {
  return ports_->energyLibrary;
}
SMCPort& LinuxMachine::smc() {
  return ports_->smc;
}
HIDTemperatures& LinuxMachine::hidTemperatures() {
  return ports_->hidTemperatures;
}
ThermalReadings& LinuxMachine::thermalReadings() {
  return ports_->thermalReadings;
}
InterfaceTable& LinuxMachine::interfaceTable() {
  return ports_->interfaceTable;
}
ProcessTable& LinuxMachine::processTable() {
  return ports_->processTable;
}
ChildProcesses& LinuxMachine::childProcesses() {
  return ports_->childProcesses;
}
FileAttributes& LinuxMachine::fileAttributes() {
  return ports_->fileAttributes;
}
Clock& LinuxMachine::clock() {
  return ports_->clock;
}
UserDefaults& LinuxMachine::userDefaults() {
  return ports_->userDefaults;
}
LoginItem& LinuxMachine::loginItem() {
  return ports_->loginItem;
}

}  // namespace quorvex
