#pragma once

#include <string_view>

namespace quorvex {

/// Ends the process on a broken precondition: one line "Fatal error: {message}" on standard error,
/// then `abort()`. It is the only way in which library code ends the process. Any thread.
[[noreturn]] void fatalError(std::string_view message);

}  // namespace quorvex
