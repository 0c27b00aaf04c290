#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvex {

/// What a child process left behind. Empty output has no `outputData` and yet an `output`, the
/// empty text: readers of bytes want to know that nothing came, readers of words want the words.
struct ProcessRunResult {
  std::int32_t terminationStatus = -1;    ///< exit status; -1 when the launch failed
  std::optional<std::string> outputData;  ///< standard output's bytes; none if empty
  std::optional<std::string> errorData;   ///< standard error's bytes; none if empty
  std::optional<std::string> output;      ///< standard output trimmed; none if it is not UTF-8
  std::optional<std::string> error;       ///< standard error likewise, or why the launch failed

  bool operator==(const ProcessRunResult&) const = default;
};

}  // namespace quorvex
