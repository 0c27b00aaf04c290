#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvex {

/// What the parser hands to the commands.
struct CommandLineOptions {
  bool json = false;      ///< "--json" was given
  bool noColor = false;   ///< "--no-color" was given
  double interval = 2.0;  ///< seconds, the value behind "--interval"; any sign, may be infinite

  bool operator==(const CommandLineOptions&) const = default;
};

/// The command and the options of one command line.
struct ParsedArguments {
  std::string command;
  CommandLineOptions options;

  bool operator==(const ParsedArguments&) const = default;
};

/// Reads the arguments (without the program's name). It never fails: unknown options are ignored,
/// and a missing or unreadable interval keeps its default. The command is the first argument that
/// does not begin with "-", "status" when there is none; the value of an option is not exempt.
[[nodiscard]] ParsedArguments parseArguments(std::span<const std::string> arguments);

/// A text that is wholly a decimal number: an optional sign, digits with at most one point among or
/// beside them, an optional exponent. None for everything else, so for blanks, hexadecimal digits,
/// "inf" and "nan". Numbers too large become infinite, numbers too small 0.
[[nodiscard]] std::optional<double> parseDecimalNumber(std::string_view text);

}  // namespace quorvex
