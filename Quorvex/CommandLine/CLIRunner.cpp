#include "CLIRunner.h"

#include <span>
#include <string_view>

#include "BatteryCommand.h"
#include "ImmediateAnswers.h"
#include "MonitorCommand.h"
#include "SessionCommand.h"
#include "StatusCommand.h"

namespace quorvex {

void CLIRunner::run() {
  std::span<const std::string> arguments{arguments_};
  if (!arguments.empty()) {
    arguments = arguments.subspan(1);
  }
  const std::vector<std::string_view> words{arguments.begin(), arguments.end()};
  if (const std::string answer = immediateAnswer(words); !answer.empty()) {
    output_->print(answer);
    return;
  }
  const auto [command, options] = parseArguments(arguments);
  if (command == "status") {
    StatusCommand{*machine_, *output_, options}.run();
  } else if (command == "battery") {
    BatteryCommand{*machine_, *output_, options}.run();
  } else if (command == "monitor") {
    MonitorCommand{*machine_, *output_, options}.run();
  } else if (command == "session") {
    SessionCommand{*machine_, *output_, {arguments.begin(), arguments.end()}, options}.run();
  } else {
    output_->printError("Unknown command: " + command);
    output_->print(usageText());
  }
}

}  // namespace quorvex
