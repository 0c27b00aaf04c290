#pragma once

#include <filesystem>
#include <string>

#include "FakeDarwin.h"
#include "FakeTree.h"
#include "RecordedMachine.h"

namespace quorvex::darwin {

/// Makes the Darwin that the tests run on answer what a recorded machine answers, its clock
/// included. Tools become scripts in a folder that stands for the whole file system. The machine
/// must outlive this object.
class RecordedDarwin {
 public:
  explicit RecordedDarwin(RecordedMachine& machine);

  [[nodiscard]] std::string root() const { return tree_.root(); }

 private:
  void serveKernel();
  void serveClocks();
  /// Brings everything to the recording's present frame.
  void refresh();
  void refreshBattery();
  void refreshEnergy();
  void refreshSensors();
  void refreshTools();
  /// Writes a script that answers each of the commands as the recorded tool does; an empty command
  /// stands for any arguments.
  void writeTool(const std::string& path, const std::vector<std::string>& commands);

  RecordedMachine* machine_;
  std::unique_ptr<EnergyEntryPoints> energy_;
  std::unique_ptr<HIDTemperatureClient> hid_;
  std::optional<SMCPort::Connection> smc_;
  testing::FakeTree tree_;
  std::map<std::string, std::string> written_;  ///< scripts by their path
};

}  // namespace quorvex::darwin
