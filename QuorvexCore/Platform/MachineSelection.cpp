#include "MachineSelection.h"

#include <cstdlib>
#include <string_view>

#include "RecordedMachine.h"
#include "ThisMachine.h"

namespace quorvex {

namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::string_view{value} : std::string_view{};
}

}  // namespace

bool isRecordedMachineSelected() {
  return !environment("QUORVEX_MACHINE").empty();
}

std::variant<std::unique_ptr<Machine>, MachineSelectionError> selectMachine(PacePolicy pacePolicy) {
  if (!isRecordedMachineSelected()) {
    return thisMachine();
  }
  std::optional<RecordedMachine::Pace> pace;
  if (pacePolicy == PacePolicy::realOnly) {
    pace = RecordedMachine::Pace::real;
  }
  if (const std::string_view word = environment("QUORVEX_PACE"); !word.empty()) {
    if (word != "real" && word != "instant") {
      return MachineSelectionError{"QUORVEX_PACE: must be \"real\" or \"instant\", not \"" +
                                   std::string{word} + "\""};
    }
    if (!pace) {
      pace = word == "real" ? RecordedMachine::Pace::real : RecordedMachine::Pace::instant;
    }
  }
  auto loaded = RecordedMachine::load(std::string{environment("QUORVEX_MACHINE")}, pace);
  if (auto* error = std::get_if<MachineFileError>(&loaded)) {
    return MachineSelectionError{std::move(error->message)};
  }
  return std::get<std::unique_ptr<RecordedMachine>>(std::move(loaded));
}

}  // namespace quorvex
