#pragma once

#include <optional>

#include "Date.h"

namespace quorvex {

/// Seconds from one walk of the process table to the next while a session is recorded: it costs
/// more than all other sources.
inline constexpr double usualProcessSampleInterval = 10.0;

/// Whether a sample of the time `now` takes the costly extras, of which the last were taken at
/// `last`; the first sample always does.
[[nodiscard]] inline bool isProcessSampleDue(std::optional<Date> last, Date now, double interval) {
  return !last || secondsBetween(*last, now) >= interval;
}

}  // namespace quorvex
