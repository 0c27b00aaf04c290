#include "PowerSegmentAccumulator.h"

#include <algorithm>

#include "PercentChange.h"

namespace quorvex {

PowerSegmentBuilder::PowerSegmentBuilder(std::int64_t index, const PowerSamplePoint& first,
                                         std::optional<double> maxSampleGap)
    : index_(index),
      sourceKind_(first.sourceKind),
      sourceLabel_(first.sourceLabel),
      acConnected_(first.acConnected),
      startedAt_(first.timestamp),
      endedAt_(first.timestamp),
      energy_(maxSampleGap) {}

void PowerSegmentBuilder::ingest(const PowerSamplePoint& point) {
  ++sampleCount_;
  endedAt_ = point.timestamp;
  if (point.watts) {
    const double watts = *point.watts;
    ++wattSampleCount_;
    wattSum_ += watts;
    minWatts_ = std::min(minWatts_.value_or(watts), watts);
    maxWatts_ = std::max(maxWatts_.value_or(watts), watts);
    energy_.ingest({point.timestamp, watts});
  }
  if (point.batteryPercent) {
    batteryPercentStart_ = batteryPercentStart_.value_or(*point.batteryPercent);
    batteryPercentEnd_ = point.batteryPercent;
  }
}

PowerSessionPowerSegment PowerSegmentBuilder::materialize() const {
  PowerSessionPowerSegment segment{
      .index = index_,
      .sourceKind = sourceKind_,
      .sourceLabel = sourceLabel_,
      .acConnected = acConnected_,
      .startedAt = startedAt_,
      .endedAt = endedAt_,
      .durationSeconds = std::max(0.0, secondsBetween(startedAt_, endedAt_)),
      .sampleCount = sampleCount_,
      .wattSampleCount = wattSampleCount_,
      .minWatts = minWatts_,
      .maxWatts = maxWatts_,
      .batteryPercentStart = batteryPercentStart_,
      .batteryPercentEnd = batteryPercentEnd_};
  if (wattSampleCount_ > 0) {
    segment.averageWatts = wattSum_ / static_cast<double>(wattSampleCount_);
  }
  if (wattSampleCount_ >= 2 && !energy_.hasGap()) {
    segment.totalWattHours = energy_.wattHours();
    if (segment.durationSeconds > 0.0) {
      segment.averageWatts = energy_.wattHours() * 3600.0 / segment.durationSeconds;
    }
  }
  if (batteryPercentStart_) {
    segment.batteryPercentDelta = percentChange(*batteryPercentStart_, *batteryPercentEnd_);
  }
  return segment;
}

void PowerSegmentAccumulator::ingest(const PowerSamplePoint& point) {
  if (current_ && !current_->continues(point)) {
    finished_.push_back(current_->materialize());
    current_.reset();
  }
  if (!current_) {
    current_.emplace(static_cast<std::int64_t>(finished_.size()), point, maxSampleGap_);
  }
  current_->ingest(point);
}

std::vector<PowerSessionPowerSegment> PowerSegmentAccumulator::materialize() const {
  auto segments = finished_;
  if (current_) {
    segments.push_back(current_->materialize());
  }
  return segments;
}

}  // namespace quorvex
