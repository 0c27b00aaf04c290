#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "Result.h"

namespace quorvex {

/// A program to run with root's rights, within bounds.
struct BoundedCommand {
  std::string path;  ///< absolute; no shell and no search path
  std::vector<std::string> arguments;
  std::chrono::milliseconds timeLimit{0};
  std::size_t outputLimit = 0;  ///< bytes of standard output
};

/// Why there is no output: one line, for people.
struct CommandFailure {
  std::string description;
  bool operator==(const CommandFailure&) const = default;
};

/// Runs the command to its end and gives its standard output. It gets an empty standard input, a
/// fixed environment, root as its real user and group if this process has root's rights, and
/// nothing else of the caller's. It is a failure when the command cannot be started, ends with
/// another status than 0 (its standard error is part of the words) or breaks a bound, for which it
/// is killed at once. Blocks; one thread.
[[nodiscard]] Result<std::string, CommandFailure> runBounded(const BoundedCommand& command);

}  // namespace quorvex
