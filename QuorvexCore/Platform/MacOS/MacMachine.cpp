#include "MacMachine.h"

#include "MacBatteryDictionaries.h"
#include "MacEnergyLibrary.h"
#include "MacHIDTemperatures.h"
#include "MacInterfaceTable.h"
#include "MacLoginItem.h"
#include "MacProcessTable.h"
#include "MacSMCPort.h"
#include "MacThermalReadings.h"
#include "MacUserDefaults.h"
#include "PosixChildProcesses.h"
#include "PosixFileAttributes.h"
#include "SystemClock.h"

namespace quorvex {

namespace {

DynamicLoader& systemLoader() {
  static SystemDynamicLoader loader;
  return loader;
}

}  // namespace

struct MacMachine::Ports {
  Ports(DynamicLoader& loader, const std::string& root)
      : energyLibrary(loader),
        hidTemperatures(loader),
        thermalReadings(loader),
        childProcesses(root),
        fileAttributes(root),
        loginItem(loader) {}

  MacBatteryDictionaries batteryDictionaries;
  MacEnergyLibrary energyLibrary;
  MacSMCPort smc;
  MacHIDTemperatures hidTemperatures;
  MacThermalReadings thermalReadings;
  MacInterfaceTable interfaceTable;
  MacProcessTable processTable;
  PosixChildProcesses childProcesses;
  PosixFileAttributes fileAttributes;
  SystemClock clock;
  MacUserDefaults userDefaults;
  MacLoginItem loginItem;
};

MacMachine::MacMachine() : MacMachine(systemLoader(), {}) {}
MacMachine::MacMachine(DynamicLoader& loader, const std::string& root)
    : ports_(std::make_unique<Ports>(loader, root)) {}
MacMachine::~MacMachine() = default;

BatteryDictionaries& MacMachine::batteryDictionaries() {
  return ports_->batteryDictionaries;
}
EnergyLibrary& MacMachine::energyLibrary() {
  return ports_->energyLibrary;
}
SMCPort& MacMachine::smc() {
  return ports_->smc;
}
HIDTemperatures& MacMachine::hidTemperatures() {
  return ports_->hidTemperatures;
}
ThermalReadings& MacMachine::thermalReadings() {
  return ports_->thermalReadings;
}
InterfaceTable& MacMachine::interfaceTable() {
  return ports_->interfaceTable;
}
ProcessTable& MacMachine::processTable() {
  return ports_->processTable;
}
ChildProcesses& MacMachine::childProcesses() {
  return ports_->childProcesses;
}
FileAttributes& MacMachine::fileAttributes() {
  return ports_->fileAttributes;
}
Clock& MacMachine::clock() {
  return ports_->clock;
}
UserDefaults& MacMachine::userDefaults() {
  return ports_->userDefaults;
}
LoginItem& MacMachine::loginItem() {
  return ports_->loginItem;
}

}  // namespace quorvex
