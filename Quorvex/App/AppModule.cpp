#include <cstdlib>
#include <memory>
#include <variant>

#include "Application.h"
#include "MachineSelection.h"
#include "Output.h"

/// Entry point of the app role. A machine file that cannot be used ends the program before it does
/// anything.
extern "C" __attribute__((visibility("default"))) int quorvex_run_role(int argumentCount,
                                                                       char** arguments) {
  using namespace quorvex;
  const auto selected = selectMachine(PacePolicy::realOnly);
  if (const auto* error = std::get_if<MachineSelectionError>(&selected)) {
    StandardOutput{}.printError(error->message);
    return EXIT_FAILURE;
  }
  return runApplication(argumentCount, arguments, *std::get<std::unique_ptr<Machine>>(selected));
}
