#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Observation.h"
#include "PowerSessionMetadataDTO.h"
#include "PowerSessionReport.h"
#include "PowerSessionSummary.h"

/// Assembles what is shown of a session. Pure functions; any thread.
namespace quorvex::PowerSessionReportBuilder {

/// The report of a session from its summary and its samples, in ascending order of time. A snapshot
/// that does not decode leaves its sample's columns. No samples at all is a fatal error, as it is
/// for the thermal digest. `maxTimelinePoints`: see `downsample`.
[[nodiscard]] PowerSessionReport report(const PowerSessionMetadataDTO& session,
                                        const PowerSessionSummary& summary,
                                        std::span<const Observation> samples,
                                        std::int64_t maxTimelinePoints);

/// Thins points to `maxCount`: the first, the last, and of each equal slice between them the one
/// that shows most, by watts, temperature, fan speed and network rate. No more points than
/// `maxCount`, or one below 1, leaves them as they are; 2 gives 3 points and 1 the first as given.
/// The result is in ascending order of `elapsedSeconds`.
[[nodiscard]] std::vector<PowerSessionTimelinePoint> downsample(
    std::vector<PowerSessionTimelinePoint> points, std::int64_t maxCount);

/// The phases of a summary's power segments: all but those of one sample and no duration. Their
/// fractions are of the segments' total or the session's duration, whichever is longer.
[[nodiscard]] std::vector<PowerSessionPhaseDigest> phaseDigests(const PowerSessionSummary& summary);

}  // namespace quorvex::PowerSessionReportBuilder
