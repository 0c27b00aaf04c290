#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quorvex {

/// "Quorvex {version}" and a newline.
[[nodiscard]] std::string versionText();

/// The usage text, ending in one newline.
[[nodiscard]] std::string usageText();

/// What the command line answers from the arguments alone (without the program's name): the version
/// when "--version" stands anywhere, else the usage when "--help" or "-h" does; empty otherwise.
[[nodiscard]] std::string immediateAnswer(std::span<const std::string_view> arguments);

/// Prints the immediate answer, if there is one, on standard output; gives whether there was one.
/// Gives false when a recorded machine is selected, since that must be checked first.
/// Main thread.
[[nodiscard]] bool answerImmediately(int argumentCount, const char* const* arguments);

}  // namespace quorvex
