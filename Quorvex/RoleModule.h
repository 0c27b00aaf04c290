#pragma once

namespace quorvex {

/// The one function that a role's module offers, by C linkage under this name:
/// `extern "C" int quorvex_run_role(int argumentCount, char** arguments)`, giving the exit status.
inline constexpr const char* roleEntryPoint = "quorvex_run_role";

/// Loads a role's module from the executable's own folder and runs it. A module that is missing or
/// damaged is told on standard error; the exit status is then 1. Main thread.
[[nodiscard]] int runRoleModule(const char* moduleName, int argumentCount, char** arguments);

}  // namespace quorvex
