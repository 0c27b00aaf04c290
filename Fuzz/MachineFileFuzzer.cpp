#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "FatalError.h"
#include "MachineFile.h"
#include "RecordedMachine.h"

namespace {

using quorvex::MachineFile;
using quorvex::RecordedMachine;

void readSMC(quorvex::SMCPort& smc) {
  const auto connection = smc.open();
  if (!connection) {
    return;
  }
  quorvex::SMCKeyRecord input{.key = 0x464E756D};
  quorvex::SMCKeyRecord output;
  for (const auto command :
       {quorvex::SMCKeyRecord::readKeyInfoCommand, quorvex::SMCKeyRecord::readBytesCommand}) {
    input.command = command;
    static_cast<void>(smc.call(*connection, input, output));
  }
  smc.close(*connection);
}

void readProcesses(quorvex::ProcessTable& table) {
  std::array<std::int32_t, 64> ids{};
  std::array<char, 16> name{};
  const auto bytes = table.listProcessIDs(ids);
  for (const auto pid : std::span{ids}.first(static_cast<std::size_t>(bytes) / sizeof ids[0])) {
    static_cast<void>(table.resources(pid));
    static_cast<void>(table.processName(pid, name));
  }
}

void readEnergy(quorvex::EnergyLibrary& library) {
  const auto entryPoints = library.open();
  if (!entryPoints) {
    return;
  }
  const auto group = entryPoints->copyChannelsInGroup("Energy Model", std::nullopt);
  const auto delta = entryPoints->createSamplesDelta(group, group);
  for (std::int64_t i = 0; i < entryPoints->channelCount(delta); ++i) {
    static_cast<void>(entryPoints->channelName(entryPoints->channelEntry(delta, i)));
  }
}

void runTool(quorvex::ChildProcesses& tools, const std::string& path) {
  const std::array<std::string, 1> arguments{"status-json"};
  auto launched = tools.launch(path, arguments);
  if (auto* child = std::get_if<std::unique_ptr<quorvex::ChildProcess>>(&launched)) {
    static_cast<void>((*child)->waitForExit(8.0));
    (*child)->terminate();
    static_cast<void>((*child)->readOutputToEnd());
  }
}

void readEverything(RecordedMachine& machine) {
  static_cast<void>(machine.batteryDictionaries().registry());
  static_cast<void>(machine.batteryDictionaries().firstPowerSource());
  readEnergy(machine.energyLibrary());
  readSMC(machine.smc());
  if (const auto client = machine.hidTemperatures().open()) {
    static_cast<void>(client->copyServices());
  }
  static_cast<void>(machine.thermalReadings().thermalPressure());
  static_cast<void>(machine.interfaceTable().readInterfaceList());
  static_cast<void>(machine.interfaceTable().interfaceName(4));
  readProcesses(machine.processTable());
  for (const char* path : {"/usr/bin/nettop", "/usr/bin/osascript",
                           "/Library/PrivilegedHelperTools/com.quorvex.helper"}) {
    runTool(machine.childProcesses(), path);
  }
}

}  // namespace

/// Any bytes are either refused with a message or a machine that answers every question.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  auto parsed = quorvex::parseMachineFile(text, "fuzz.json");
  if (const auto* error = std::get_if<quorvex::MachineFileError>(&parsed)) {
    if (!error->message.starts_with("fuzz.json: $")) {
      quorvex::fatalError("a refusal without a place: " + error->message);
    }
    return 0;
  }
  auto file = std::get<MachineFile>(std::move(parsed));
  if (file.atEnd == MachineFile::AtEnd::interrupt) {
    file.atEnd = MachineFile::AtEnd::hold;
  }
  RecordedMachine machine{std::move(file), RecordedMachine::Pace::instant};
  for (const double pause : {0.0, 0.1, 30.0, 1e9, 1e300}) {
    machine.clock().sleep(pause);
    readEverything(machine);
  }
  return 0;
}
