#include "PowerSessionReportBuilder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

#include "PowerSessionMetrics.h"
#include "PowerSessionThermalDigest.h"

namespace quorvex::PowerSessionReportBuilder {

namespace {

/// What thinning looks at.
struct Candidate {
  double elapsedSeconds = 0.0;
  double significance = 0.0;
  std::size_t position = 0;  ///< among the points as given
};

/// One watt weighs as much as 5 degrees, 1000 revolutions per minute or a megabyte per second.
double significance(const PowerSessionTimelinePoint& point) {
  return std::abs(point.watts.value_or(0.0)) + point.maxTemperature.value_or(0.0) / 5.0 +
         static_cast<double>(point.maxFanRPM.value_or(0)) / 1000.0 +
         (point.bytesInPerSec.value_or(0.0) + point.bytesOutPerSec.value_or(0.0)) / 1'000'000.0;
}

/// The positions of the points that thinning keeps, in their new order.
std::vector<std::size_t> keptPositions(std::vector<Candidate> candidates, std::int64_t maxCount) {
  std::vector<std::size_t> kept;
  if (maxCount < 1 || std::cmp_less_equal(candidates.size(), maxCount)) {
    kept.resize(candidates.size());
    std::iota(kept.begin(), kept.end(), std::size_t{0});
    return kept;
  }
  if (maxCount == 1) {
    return {0};
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& left, const Candidate& right) {
                     return left.elapsedSeconds < right.elapsedSeconds;
                   });
  const std::span<const Candidate> interior{candidates.begin() + 1, candidates.end() - 1};
  const auto size = static_cast<double>(interior.size());
  const auto bucketCount = static_cast<std::size_t>(std::max<std::int64_t>(maxCount, 3) - 2);
  const auto bucketStart = [&](std::size_t bucket) {
    return static_cast<std::size_t>(static_cast<double>(bucket) / static_cast<double>(bucketCount) *
                                    size);
  };
  kept.reserve(bucketCount + 2);
  kept.push_back(candidates.front().position);
  for (std::size_t bucket = 0; bucket < bucketCount; ++bucket) {
    const std::size_t start = bucketStart(bucket);
    const std::size_t end = bucketStart(bucket + 1);
    if (start < end) {
      const auto candidatesOfBucket = interior.subspan(start, end - start);
      kept.push_back(std::max_element(candidatesOfBucket.begin(), candidatesOfBucket.end(),
                                      [](const Candidate& left, const Candidate& right) {
                                        return left.significance < right.significance;
                                      })
                         ->position);
    }
  }
  kept.push_back(candidates.back().position);
  return kept;
}

/// A point without its texts, which only the kept ones need.
PowerSessionTimelinePoint figures(const Observation& sample) {
  const SampleColumns& columns = sample.columns;
  PowerSessionTimelinePoint point;
  point.elapsedSeconds = columns.elapsedSeconds;
  point.timestamp = columns.timestamp;
  point.watts = columns.totalWatts;
  point.batteryPercent = columns.batteryPercent;
  point.maxTemperature = columns.maxTemperature;
  point.maxFanRPM = columns.maxFanRPM;
  if (!sample.snapshot) {
    return point;
  }
  const ObservedSnapshot& snapshot = *sample.snapshot;
  if (!point.watts) {
    point.watts = snapshot.totalWatts;
  }
  // The column comes first here, other than where charge is analysed.
  if (!point.batteryPercent && snapshot.battery) {
    point.batteryPercent = snapshot.battery->chargePercent;
  }
  if (!point.maxTemperature) {
    point.maxTemperature = snapshot.maxSensorTemperature;
  }
  if (!point.maxFanRPM) {
    point.maxFanRPM = snapshot.maxFanRPM;
  }
  if (snapshot.network) {
    point.bytesInPerSec = snapshot.network->totalBytesInPerSec;
    point.bytesOutPerSec = snapshot.network->totalBytesOutPerSec;
  }
  return point;
}

PowerSessionTimelinePoint timelinePoint(std::size_t position, const Observation& sample) {
  PowerSessionTimelinePoint point = figures(sample);
  const PowerSamplePoint source = PowerSessionMetrics::storedPowerPoint(sample);
  point.id = static_cast<std::int64_t>(position);
  point.sourceKind = source.sourceKind;
  point.sourceLabel = source.sourceLabel;
  return point;
}

std::vector<PowerSessionTimelinePoint> timeline(std::span<const Observation> samples,
                                                std::int64_t maxCount) {
  std::vector<Candidate> candidates;
  candidates.reserve(samples.size());
  for (const Observation& sample : samples) {
    candidates.push_back({.elapsedSeconds = sample.columns.elapsedSeconds,
                          .significance = significance(figures(sample)),
                          .position = candidates.size()});
  }
  std::vector<PowerSessionTimelinePoint> points;
  for (const std::size_t position : keptPositions(std::move(candidates), maxCount)) {
    points.push_back(timelinePoint(position, samples[position]));
  }
  return points;
}

}  // namespace

PowerSessionReport report(const PowerSessionMetadataDTO& session,
                          const PowerSessionSummary& summary, std::span<const Observation> samples,
                          std::int64_t maxTimelinePoints) {
  PowerSessionReport report;
  report.sessionID = session.id;
  report.title = session.title;
  report.status = session.status;
  report.source = session.source;
  report.startedAt = session.startedAt;
  report.endedAt = session.endedAt;
  report.sampleInterval = session.sampleInterval;
  report.summary = summary;
  report.phases = phaseDigests(summary);
  report.timeline = timeline(samples, maxTimelinePoints);
  std::partition_copy(summary.topContributors.begin(), summary.topContributors.end(),
                      std::back_inserter(report.aggregateContributors),
                      std::back_inserter(report.actionableContributors),
                      [](const PowerSessionContributor& row) { return row.isAggregate; });
  report.thermalDigest = PowerSessionThermalDigestBuilder::digest(samples, session.sampleInterval);
  return report;
}

std::vector<PowerSessionTimelinePoint> downsample(std::vector<PowerSessionTimelinePoint> points,
                                                  std::int64_t maxCount) {
  std::vector<Candidate> candidates;
  candidates.reserve(points.size());
  for (const PowerSessionTimelinePoint& point : points) {
    candidates.push_back({.elapsedSeconds = point.elapsedSeconds,
                          .significance = significance(point),
                          .position = candidates.size()});
  }
  std::vector<PowerSessionTimelinePoint> kept;
  for (const std::size_t position : keptPositions(std::move(candidates), maxCount)) {
    kept.push_back(std::move(points[position]));
  }
  return kept;
}

std::vector<PowerSessionPhaseDigest> phaseDigests(const PowerSessionSummary& summary) {
  const auto duration = [](const PowerSessionPowerSegment& segment) {
    return std::max(segment.durationSeconds, 0.0);
  };
  double total = 0.0;
  for (const PowerSessionPowerSegment& segment : summary.powerSegments) {
    total += duration(segment);
  }
  total = std::max(total, summary.durationSeconds);
  std::vector<PowerSessionPhaseDigest> phases;
  for (const PowerSessionPowerSegment& segment : summary.powerSegments) {
    if (segment.sampleCount < 2 && segment.durationSeconds <= 0.0) {
      continue;
    }
    phases.push_back({.index = segment.index,
                      .sourceKind = segment.sourceKind,
                      .sourceLabel = segment.sourceLabel,
                      .acConnected = segment.acConnected,
                      .startedAt = segment.startedAt,
                      .endedAt = segment.endedAt,
                      .durationSeconds = duration(segment),
                      .durationFraction = total > 0.0 ? duration(segment) / total : 0.0,
                      .sampleCount = segment.sampleCount,
                      .wattSampleCount = segment.wattSampleCount,
                      .averageWatts = segment.averageWatts,
                      .minWatts = segment.minWatts,
                      .maxWatts = segment.maxWatts,
                      .totalWattHours = segment.totalWattHours,
                      .batteryPercentDelta = segment.batteryPercentDelta});
  }
  return phases;
}

}  // namespace quorvex::PowerSessionReportBuilder
