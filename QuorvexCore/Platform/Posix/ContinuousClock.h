#pragma once

#include <chrono>

/// The system's clock that never steps back and goes on while the machine sleeps; one source file a
/// system (ContinuousClockLinux.cpp). Any thread.
namespace quorvex::continuous_clock {

[[nodiscard]] std::chrono::nanoseconds now();

/// Blocks until the clock has reached `deadline`; signals don't shorten the wait.
void sleepUntil(std::chrono::nanoseconds deadline);

}  // namespace quorvex::continuous_clock
