#include "MonitorCommand.h"

#include "BatteryService.h"
#include "InterruptHandler.h"
#include "JSONFormatter.h"
#include "TableFormatter.h"
#include "ThermalService.h"

namespace quorvex {

namespace {

constexpr std::string_view showCursor = "\x1b[?25h";
constexpr std::string_view clearScreen = "\x1b[2J\x1b[H";
constexpr std::string_view hideCursor = "\x1b[?25l";
constexpr std::string_view cursorHome = "\x1b[H";

}  // namespace

MonitorCommand::MonitorCommand(Machine& machine, Output& output, CommandLineOptions options)
    : options_(options),
      machine_(&machine),
      output_(&output),
      powerService_(machine.energyLibrary(), machine.clock()),
      smcService_(machine.smc()),
      networkSampler_(machine, false) {}

void MonitorCommand::run() {
  installInterruptHandler();
  bool isRead = true;
  if (!options_.json) {
    std::string start{showCursor};
    start.append(clearScreen).append(hideCursor);
    isRead = output_->print(start);
  }
  bool isFirstTick = true;
  while (isRead) {
    const SystemPowerState state = readState();
    // The frame and what goes before it are one write, so that a terminal never shows half of it.
    std::string text;
    if (options_.json) {
      text = JSONFormatter::systemStateDict(state);
    } else {
      text = isFirstTick ? std::string_view{} : cursorHome;
      text.append(TableFormatter::formatMonitor(state, !options_.noColor));
    }
    text.push_back('\n');
    isRead = output_->print(text);
    isFirstTick = false;
    if (isRead) {
      machine_->clock().sleep(options_.interval);
    }
  }
}

SystemPowerState MonitorCommand::readState() {
  SystemPowerState state;
  state.battery = BatteryService{machine_->batteryDictionaries()}.read();
  state.thermal = ThermalService{machine_->thermalReadings()}.read();
  state.power = powerService_.read();
  state.fans = smcService_.readFans();
  state.sensors = smcService_.readTemperatures();
  state.timestamp = machine_->clock().now();
  state.network = networkSampler_.read(state.timestamp);
  return state;
}

}  // namespace quorvex
