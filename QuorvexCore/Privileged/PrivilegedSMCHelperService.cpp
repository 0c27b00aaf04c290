#include "PrivilegedSMCHelperService.h"

#include <array>

#include "HelperReplies.h"

namespace quorvex {

PrivilegedSMCHelperService::PrivilegedSMCHelperService(FileAttributes& fileAttributes,
                                                       ChildProcesses& childProcesses,
                                                       std::string helperPath)
    : fileAttributes_(&fileAttributes),
      childProcesses_(&childProcesses),
      helperPath_(std::move(helperPath)) {}

bool PrivilegedSMCHelperService::isAvailable() const {
  return fileAttributes_->isExecutable(helperPath_);
}

std::vector<TemperatureSensor> PrivilegedSMCHelperService::readTemperatures() const {
  if (!isAvailable()) {
    return {};
  }
  const std::array<std::string, 1> arguments{"read-temperatures-json"};
  LaunchResult launched = childProcesses_->launch(helperPath_, arguments);
  auto* child = std::get_if<std::unique_ptr<ChildProcess>>(&launched);
  if (child == nullptr) {
    return {};
  }
  const std::string output = (*child)->readOutputToEnd();
  (*child)->waitForExit(std::nullopt);
  if ((*child)->exitStatus() != 0) {
    return {};
  }
  return decodeTemperatureReply(output).value_or(std::vector<TemperatureSensor>{});
}

}  // namespace quorvex
