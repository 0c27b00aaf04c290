# The adapters of macOS; the tests build them a second time, on a Darwin of their own.
set(macos_sources
  CFConversion.cpp MacBatteryDictionaries.cpp MacEnergyLibrary.cpp MacHIDTemperatures.cpp
  MacInterfaceTable.cpp MacLoginItem.cpp MacMachine.cpp MacProcessTable.cpp MacSMCPort.cpp
  MacThermalReadings.cpp MacUserDefaults.cpp ObjectiveC.cpp ThisMachine.cpp)
