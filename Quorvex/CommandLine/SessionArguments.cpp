#include "SessionArguments.h"

#include <algorithm>
#include <cstddef>

namespace quorvex {

std::vector<std::string> positionalArguments(std::span<const std::string> arguments,
                                             std::string_view word) {
  const auto found = std::ranges::find(arguments, word);
  std::vector<std::string> positional;
  for (auto i = static_cast<std::size_t>(found - arguments.begin()) + 1; i < arguments.size();
       ++i) {
    if (arguments[i].starts_with("--")) {
      ++i;
    } else {
      positional.push_back(arguments[i]);
    }
  }
  return positional;
}

std::optional<std::string> optionValue(std::span<const std::string> arguments,
                                       std::string_view name) {
  const auto found = std::ranges::find(arguments, name);
  if (found == arguments.end() || found + 1 == arguments.end()) {
    return std::nullopt;
  }
  return *(found + 1);
}

std::string sessionSubcommand(std::span<const std::string> arguments) {
  const auto rest = arguments.subspan(arguments.empty() ? 0 : 1);
  const auto found =
      std::ranges::find_if(rest, [](const std::string& word) { return !word.starts_with("-"); });
  return found == rest.end() ? "list" : *found;
}

}  // namespace quorvex
