#include "StatusCommand.h"

#include "BatteryService.h"
#include "CLINetworkSampler.h"
#include "CLITemperatures.h"
#include "JSONFormatter.h"
#include "PowerService.h"
#include "SMCService.h"
#include "TableFormatter.h"
#include "ThermalService.h"

namespace quorvex {

void StatusCommand::run() const {
  const SystemPowerState state = readState();
  std::string text = options_.json ? JSONFormatter::systemStateDict(state)
                                   : TableFormatter::formatStatus(state, !options_.noColor);
  text.push_back('\n');
  output_->print(text);
}

SystemPowerState StatusCommand::readState() const {
  SystemPowerState state;
  state.battery = BatteryService{machine_->batteryDictionaries()}.read();
  state.thermal = ThermalService{machine_->thermalReadings()}.read();
  PowerService powerService{machine_->energyLibrary(), machine_->clock()};
  state.power = powerService.read();
  SMCService smcService{machine_->smc()};
  state.fans = smcService.readFans();
  state.sensors = readTemperaturesWithFallbacks(smcService, *machine_);
  state.timestamp = machine_->clock().now();
  state.network = CLINetworkSampler{*machine_, false}.read(state.timestamp);
  return state;
}

}  // namespace quorvex
