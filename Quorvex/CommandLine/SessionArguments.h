#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The words of `quorvex session`. All functions take the command line without the program's name.
/// Pure functions; any thread.
namespace quorvex {

/// The arguments behind the first one that equals `word`, without options. Every argument that
/// begins with "--" counts as an option and takes the argument behind it along, whatever it is; one
/// that begins with a single "-" is positional. None without `word`.
[[nodiscard]] std::vector<std::string> positionalArguments(std::span<const std::string> arguments,
                                                           std::string_view word);

/// The argument behind the first one that equals `name`; absent when there is no such argument or
/// none behind it.
[[nodiscard]] std::optional<std::string> optionValue(std::span<const std::string> arguments,
                                                     std::string_view name);

/// The first argument behind the first one that does not begin with "-"; "list" without one.
[[nodiscard]] std::string sessionSubcommand(std::span<const std::string> arguments);

}  // namespace quorvex
