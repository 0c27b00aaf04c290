#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

/// An absolute point in time, in nanoseconds since 1970-01-01T00:00:00Z without leap seconds.
using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

/// `later` minus `earlier` in seconds; negative when `later` is the earlier one.
[[nodiscard]] double secondsBetween(Date earlier, Date later);

/// Seconds as whole nanoseconds, rounded to nearest; saturates at the range of the type, and NaN
/// gives 0.
[[nodiscard]] std::chrono::nanoseconds nanosecondsFromSeconds(double seconds);

/// `date` moved by `seconds` (negative moves back); saturates at the range of the type.
[[nodiscard]] Date dateByAdding(Date date, double seconds);

/// The ISO 8601 internet form in UTC and whole seconds, fractions dropped towards the past:
/// "2026-01-31T09:30:05Z".
[[nodiscard]] std::string iso8601(Date date);

/// Reads "YYYY-MM-DDThh:mm:ss", an optional fraction and a zone designator ("Z" or "±hh:mm"). The
/// fraction is kept to nanoseconds. None when the text has another form or names no real instant.
[[nodiscard]] std::optional<Date> parseISO8601(std::string_view text);

}  // namespace quorvex
