#pragma once

#include <optional>
#include <vector>

/// Order statistics of measured values. The values are taken over, since finding a rank reorders
/// them. Pure functions; any thread.
namespace quorvex {

/// The middle value, or the mean of the two middle ones of an even count; absent without values.
[[nodiscard]] std::optional<double> median(std::vector<double> values);

/// The value at rank ceil(`fraction` times (count - 1)) from below, without interpolation; absent
/// without values. Ranks outside the values are cut to the first and the last.
[[nodiscard]] std::optional<double> percentile(std::vector<double> values, double fraction);

}  // namespace quorvex
