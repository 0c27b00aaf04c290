#include "SessionRecording.h"

#include <fmt/format.h>

#include <utility>

#include "BatteryService.h"
#include "CLITemperatures.h"
#include "PowerService.h"
#include "PowerSessionMetrics.h"
#include "ProcessActivityService.h"
#include "ProcessSampleCadence.h"
#include "SMCService.h"
#include "SessionJSON.h"
#include "ThermalService.h"

namespace quorvex {

SessionRecording::SessionRecording(Machine& machine, Output& output, PowerSessionStore& store,
                                   CommandLineOptions options,
                                   std::shared_ptr<PowerSession> session)
    : machine_(&machine),
      output_(&output),
      store_(&store),
      options_(options),
      session_(std::move(session)),
      sampler_(machine, true),
      energy_(session_->startedAt(), session_->sampleInterval()) {}

StoreResult<void> SessionRecording::run(const StopFlag& stop, bool isRead) {
  while (!stop.shouldStop()) {
    const Date timestamp = machine_->clock().now();
    const SystemPowerState state = readState(timestamp, sampler_.read(timestamp));
    const auto processes = readProcesses(timestamp);
    if (auto added = store_->appendSample(*session_, state, processes, std::nullopt); !added) {
      return added.error();
    }
    energy_.ingest(PowerSessionMetrics::livePowerPoint(state));
    if (!report(state) || !isRead) {
      break;
    }
    machine_->clock().sleep(options_.interval);
  }
  return {};
}

SystemPowerState SessionRecording::readState(Date timestamp, NetworkSnapshot network) const {
  SystemPowerState state;
  state.battery = BatteryService{machine_->batteryDictionaries()}.read();
  state.thermal = ThermalService{machine_->thermalReadings()}.read();
  PowerService powerService{machine_->energyLibrary(), machine_->clock()};
  state.power = powerService.read();
  SMCService smcService{machine_->smc()};
  state.sensors = readTemperaturesWithFallbacks(smcService, *machine_);
  state.fans = smcService.readFans();
  state.network = std::move(network);
  state.timestamp = timestamp;
  return state;
}

std::vector<ProcessActivityInfo> SessionRecording::readProcesses(Date timestamp) {
  if (!isProcessSampleDue(lastProcessSample_, timestamp, usualProcessSampleInterval)) {
    return {};
  }
  auto processes =
      ProcessActivityService{machine_->processTable(), machine_->clock()}.sampleTopProcesses();
  lastProcessSample_ = timestamp;
  return processes;
}

bool SessionRecording::report(const SystemPowerState& state) {
  const auto reading = state.primaryPowerReading();
  if (options_.json) {
    return output_->print(jsonDocument([&](JSONWriter& json) {
      json.field("event", "sample");
      json.field("id", session_->id().text());
      json.field("timestamp", iso8601(state.timestamp));
      if (reading) {
        json.field("watts", reading->watts);
      }
    }));
  }
  if (!reading) {
    return true;
  }
  const SessionEnergy energy = energy_.energy();
  return output_->print(fmt::format("\r{:.1f}W avg {:.1f}W {:.3f}Wh samples {}", reading->watts,
                                    energy.averageWatts.value_or(reading->watts),
                                    energy.totalWattHours.value_or(0.0), energy_.sampleCount()));
}

}  // namespace quorvex
