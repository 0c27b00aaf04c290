#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "CLIRunner.h"
#include "MachineSelection.h"
#include "Output.h"
#include "Text.h"

/// Entry point of the command-line role. A machine file that cannot be used ends the program before
/// it does anything.
extern "C" __attribute__((visibility("default"))) int quorvex_run_role(int argumentCount,
                                                                       char** arguments) {
  using namespace quorvex;
  StandardOutput output;
  auto selected = selectMachine(PacePolicy::asRecorded);
  if (const auto* error = std::get_if<MachineSelectionError>(&selected)) {
    output.printError(error->message);
    return EXIT_FAILURE;
  }
  std::vector<std::string> words;
  words.reserve(static_cast<std::size_t>(argumentCount));
  for (int i = 0; i < argumentCount; ++i) {
    words.push_back(text::repairedUTF8(arguments[i]));
  }
  CLIRunner{std::move(words), *std::get<std::unique_ptr<Machine>>(selected), output}.run();
  return EXIT_SUCCESS;
}
