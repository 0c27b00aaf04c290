#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "ArgumentParser.h"
#include "ImmediateAnswers.h"

namespace {

/// One argument a line.
std::vector<std::string> argumentsFrom(std::string_view text) {
  std::vector<std::string> arguments;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    arguments.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return arguments;
}

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto arguments = argumentsFrom({reinterpret_cast<const char*>(data), size});
  const auto [command, options] = quorvex::parseArguments(arguments);
  require(!command.starts_with('-'));
  require(!std::isnan(options.interval));
  const std::vector<std::string_view> words{arguments.begin(), arguments.end()};
  const std::string answer = quorvex::immediateAnswer(words);
  require(answer.empty() || answer == quorvex::versionText() || answer == quorvex::usageText());
  for (const std::string& argument : arguments) {
    const auto number = quorvex::parseDecimalNumber(argument);
    require(!number || !std::isnan(*number));
  }
  return 0;
}
