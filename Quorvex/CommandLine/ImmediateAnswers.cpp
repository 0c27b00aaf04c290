#include "ImmediateAnswers.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "AppVersion.h"
#include "Output.h"

namespace quorvex {

namespace {

constexpr std::string_view usageBody =
    R"(
USAGE: quorvex <command> [options]

COMMANDS:
  status      One-shot system power snapshot (default)
  battery     Detailed battery information
  monitor     Live-updating power metrics (Ctrl+C to stop)
  session     Record, list, show, export, and delete measurement sessions

OPTIONS:
  --json           Output as JSON
  --interval <s>   Sampling interval in seconds (monitor only, default: 2)
  --no-color       Disable colored output
  --version        Print version and exit
  --help           Show help
)";

bool contains(std::span<const std::string_view> arguments, std::string_view wanted) {
  return std::ranges::find(arguments, wanted) != arguments.end();
}

}  // namespace

std::string versionText() {
  return std::string{"Quorvex "} + AppVersion::shortText + "\n";
}

std::string usageText() {
  return versionText() + std::string{usageBody};
}

std::string immediateAnswer(std::span<const std::string_view> arguments) {
  if (contains(arguments, "--version")) {
    return versionText();
  }
  if (contains(arguments, "--help") || contains(arguments, "-h")) {
    return usageText();
  }
  return {};
}

bool answerImmediately(int argumentCount, const char* const* arguments) {
  const char* recordedMachine = std::getenv("QUORVEX_MACHINE");
  if (recordedMachine != nullptr && *recordedMachine != '\0') {
    return false;
  }
  const std::vector<std::string_view> words(arguments + 1, arguments + argumentCount);
  const std::string answer = immediateAnswer(words);
  if (answer.empty()) {
    return false;
  }
  StandardOutput{}.print(answer);
  return true;
}

}  // namespace quorvex
