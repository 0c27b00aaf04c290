#include "EngineSources.h"

#include <utility>

namespace quorvex {

EngineSources::EngineSources(Machine& machine)
    : clock_(&machine.clock()),
      batteryService_(machine.batteryDictionaries()),
      thermalService_(machine.thermalReadings()),
      powerService_(machine.energyLibrary(), machine.clock()),
      smcService_(machine.smc()),
      privilegedSMCHelperService_(machine.fileAttributes(), machine.childProcesses()),
      hidSensorService_(machine.hidTemperatures()),
      // Attribution by process costs a run of a tool, which a regular poll must not.
      networkService_(machine.interfaceTable(), machine.childProcesses(),
                      NetworkProcessAttributionMode::disabled) {}

EngineReading EngineSources::read(bool lowImpact, const std::optional<PowerMetrics>& carriedPower) {
  EngineReading reading;
  SystemPowerState& state = reading.state;
  const Date start = clock_->now();
  state.battery = batteryService_.read();
  state.thermal = thermalService_.read();
  state.power = lowImpact ? carriedPower : powerService_.read();
  state.fans = smcService_.readFans();
  state.sensors = readTemperatures(lowImpact);
  reading.interfaces = networkService_.readInterfaces();
  reading.processes = networkService_.snapshotProcessActivity();
  reading.duration = secondsBetween(start, clock_->now());
  state.timestamp = clock_->now();
  return reading;
}

std::vector<TemperatureSensor> EngineSources::readTemperatures(bool lowImpact) {
  std::vector<TemperatureSensor> sensors = smcService_.readTemperatures();
  if (lowImpact || !sensors.empty()) {
    return sensors;
  }
  sensors = privilegedSMCHelperService_.readTemperatures();
  if (!sensors.empty()) {
    return sensors;
  }
  return hidSensorService_.readTemperatures();
}

}  // namespace quorvex
