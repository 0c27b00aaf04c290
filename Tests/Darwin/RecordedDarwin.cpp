#include "RecordedDarwin.h"

#include <fmt/format.h>
#include <libproc.h>

#include <cstring>
#include <span>
#include <variant>

#include "RecordedHelperFile.h"
#include "SMCKeyRecord.h"

namespace quorvex::darwin {

namespace {

constexpr const char* energyLibraryPath = "/usr/lib/libIOReport.dylib";
constexpr const char* nettopPath = "/usr/bin/nettop";

Make madeFrom(const Dictionary& values);

Make madeFrom(const DictionaryValue& value) {
  if (const auto* integer = value.ifInteger()) {
    return number(*integer);
  }
  if (const auto* real = value.ifFloat()) {
    return number(*real);
  }
  if (const auto flag = value.boolean()) {
    return boolean(*flag);
  }
  if (const auto string = value.string()) {
    return text(*string);
  }
  if (const Dictionary* nested = value.dictionary()) {
    return madeFrom(*nested);
  }
  return array({});
}

Make madeFrom(const Dictionary& values) {
  std::vector<std::pair<std::string, Make>> entries;
  for (const auto& [key, value] : values) {
    entries.emplace_back(key, madeFrom(value));
  }
  return dictionary(std::move(entries));
}

/// A word that the shell takes as it is.
std::string quoted(const std::string& text) {
  std::string result{"'"};
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      result += c;
    }
  }
  return result + "'";
}

}  // namespace

RecordedDarwin::RecordedDarwin(RecordedMachine& machine) : machine_(&machine) {
  serveKernel();
  serveClocks();
  refresh();
}

void RecordedDarwin::serveKernel() {
  fake().smcCall = [this](const void* input, void* output) {
    SMCKeyRecord request;
    SMCKeyRecord reply;
    std::memcpy(&request, input, sizeof request);
    const int result = machine_->smc().call(smc_.value_or(0), request, reply);
    std::memcpy(output, &reply, sizeof reply);
    return result;
  };
  fake().readInterfaceList = [this](void* buffer, std::size_t* size) {
    const auto list = machine_->interfaceTable().readInterfaceList();
    if (!list) {
      return -1;
    }
    *size = list->size();
    if (buffer != nullptr) {
      std::memcpy(buffer, list->data(), list->size());
    }
    return 0;
  };
  fake().interfaceName = [this](unsigned index) {
    return machine_->interfaceTable().interfaceName(static_cast<std::uint16_t>(index));
  };
  fake().listProcesses = [this](void* buffer, int size) {
    const std::span ids{static_cast<std::int32_t*>(buffer),
                        static_cast<std::size_t>(size) / sizeof(std::int32_t)};
    return static_cast<int>(machine_->processTable().listProcessIDs(ids));
  };
  fake().processUsage = [this](int pid, void* buffer) {
    const auto resources = machine_->processTable().resources(pid);
    if (!resources) {
      return -1;
    }
    rusage_info_v6 record{};
    record.ri_user_time = resources->userTime;
    record.ri_system_time = resources->systemTime;
    record.ri_pkg_idle_wkups = resources->idleWakeups;
    record.ri_interrupt_wkups = resources->interruptWakeups;
    record.ri_diskio_bytesread = resources->bytesRead;
    record.ri_diskio_byteswritten = resources->bytesWritten;
    record.ri_energy_nj = resources->energy;
    std::memcpy(buffer, &record, sizeof record);
    return 0;
  };
  fake().processName = [this](int pid, char* buffer, std::uint32_t size) {
    return static_cast<int>(machine_->processTable().processName(pid, std::span{buffer, size}));
  };
}

void RecordedDarwin::serveClocks() {
  fake().wallClock = [this] {
    return static_cast<std::uint64_t>(machine_->clock().now().time_since_epoch().count());
  };
  fake().continuousClock = [this] {
    return static_cast<std::uint64_t>(machine_->clock().monotonic().count());
  };
  fake().sleep = [this](std::uint64_t nanoseconds) {
    machine_->clock().sleep(static_cast<double>(nanoseconds) / 1e9);
    refresh();
  };
}

void RecordedDarwin::refresh() {
  refreshBattery();
  refreshEnergy();
  refreshSensors();
  refreshTools();
}

void RecordedDarwin::refreshBattery() {
  const auto registry = machine_->batteryDictionaries().registry();
  fake().hasBatteryService = registry.has_value();
  fake().properties = registry ? madeFrom(*registry) : nothing();
  const auto source = machine_->batteryDictionaries().firstPowerSource();
  fake().powerSources.clear();
  if (source) {
    fake().powerSources.push_back(madeFrom(*source));
  }
}

void RecordedDarwin::refreshEnergy() {
  auto present = machine_->energyLibrary().open();
  fake().libraries.erase(energyLibraryPath);
  fake().samples = nothing();
  fake().delta = nothing();
  if (present == nullptr) {
    return;
  }
  fake().libraries.insert(energyLibraryPath);
  fake().samples = other();
  energy_ = std::move(present);
  const auto sample = energy_->copyChannelsInGroup("Energy Model", std::nullopt);
  const auto delta = energy_->createSamplesDelta(sample, sample);
  std::vector<Channel> channels;
  for (std::int64_t i = 0; i < energy_->channelCount(delta); ++i) {
    const void* entry = energy_->channelEntry(delta, i);
    channels.push_back({energy_->channelName(entry), energy_->simpleIntegerValue(entry, 0)});
  }
  fake().delta = channelList(std::move(channels));
}

void RecordedDarwin::refreshSensors() {
  if (const auto connection = machine_->smc().open()) {
    fake().hasSMCService = true;
    if (smc_) {
      machine_->smc().close(*connection);
    } else {
      smc_ = connection;
    }
  } else {
    fake().hasSMCService = false;
  }

  hid_ = machine_->hidTemperatures().open();
  fake().libraries.erase("");
  fake().hidServices.reset();
  if (hid_ != nullptr) {
    fake().libraries.insert("");
    fake().hidServices.emplace();
    const auto services = hid_->copyServices();
    for (const auto& service : *services) {
      fake().hidServices->push_back(
          {service.product ? text(*service.product) : nothing(), service.value});
    }
  }

  fake().thermalState = machine_->thermalReadings().thermalState();
  fake().isLowPowerModeEnabled = machine_->thermalReadings().isLowPowerModeEnabled();
  const auto pressure = machine_->thermalReadings().thermalPressure();
  fake().registerStatus = pressure ? 0 : 1;
  fake().pressure = pressure.value_or(0);
}

void RecordedDarwin::refreshTools() {
  writeTool(nettopPath, {""});
  writeTool(std::string{RecordedHelperFile::helperPath},
            {"status-json", "read-pro-telemetry-json", "read-temperatures-json"});
}

void RecordedDarwin::writeTool(const std::string& path, const std::vector<std::string>& commands) {
  std::string script{"#!/bin/sh\ncase \"$1\" in\n"};
  for (const std::string& command : commands) {
    const std::vector<std::string> arguments{command};
    auto launched = machine_->childProcesses().launch(path, arguments);
    auto* child = std::get_if<std::unique_ptr<ChildProcess>>(&launched);
    if (child == nullptr) {
      tree_.remove(path.substr(1));
      written_.erase(path);
      return;
    }
    const std::string output = (*child)->readOutputToEnd();
    const std::string error = (*child)->readErrorToEnd();
    script += fmt::format("{})\nprintf %s {}\nprintf %s {} >&2\nexit {} ;;\n",
                          command.empty() ? "*" : command, quoted(output), quoted(error),
                          (*child)->exitStatus());
  }
  script += "esac\nexit 64\n";
  if (std::string& before = written_[path]; before != script) {
    tree_.file(path.substr(1), script);
    std::filesystem::permissions(tree_.path(path.substr(1)), std::filesystem::perms::owner_all);
    before = script;
  }
}

}  // namespace quorvex::darwin
