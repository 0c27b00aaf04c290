#pragma once

#include <chrono>

/// The system's wall clock; one source file a system (WallClockLinux.cpp). Any thread.
namespace quorvex::wall_clock {

/// Time since 1970 in UTC, as finely as the system counts it.
[[nodiscard]] std::chrono::nanoseconds now();

}  // namespace quorvex::wall_clock
