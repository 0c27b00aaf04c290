#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Appearance.h"
#include "Date.h"
#include "LocalizedDate.h"
#include "PowerSessionSummary.h"

namespace quorvex {

/// What stands for an absent value in everything about sessions.
inline constexpr std::string_view absentValue = "--";

/// Seconds rounded to whole ones: "59s", from a minute "1m 0s", from an hour "1h 0m" without the
/// seconds. Below 0 and NaN count as 0. The dropdown's and the power breakdown's durations cut or
/// round otherwise.
[[nodiscard]] std::string formatSessionDuration(double seconds);

/// The words and colours that the session views share. Numbers that are not finite are printed as
/// such.
namespace SessionFormat {

/// "12.3W" or "--".
[[nodiscard]] std::string wattsText(std::optional<double> watts);

/// "-3%", "+0%" or "--".
[[nodiscard]] std::string percentDeltaText(std::optional<std::int64_t> delta);

/// "55 C", "131 F" or "--". No degree sign: these figures stand in narrow tiles.
[[nodiscard]] std::string temperatureText(std::optional<double> celsius, bool useFahrenheit);

/// "14:05 – 14:40".
[[nodiscard]] std::string timeRangeText(Date startedAt, Date endedAt, const ShortTimeFormat& times);

/// "1 samples": the plural is fixed.
[[nodiscard]] std::string samplesText(std::int64_t count);

/// One figure for a session's power: the average, or why there is none.
[[nodiscard]] std::string primaryPowerText(const PowerSessionSummary& summary);

/// Whether energy is withheld because samples lie too far apart.
[[nodiscard]] bool hasSparsePowerCoverage(const PowerSessionSummary& summary);

/// The colour of a power source. `sourceKind` is a segment's or a phase's.
[[nodiscard]] ColorName colorForSource(std::string_view sourceKind,
                                       std::optional<bool> acConnected);

}  // namespace SessionFormat

}  // namespace quorvex
