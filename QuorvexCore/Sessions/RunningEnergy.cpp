#include "RunningEnergy.h"

#include <algorithm>

namespace quorvex {

namespace {

bool isEnergyWithheld(const PowerSessionPowerSegment& segment) {
  return segment.wattSampleCount >= 2 && !segment.totalWattHours;
}

}  // namespace

RunningEnergy::RunningEnergy(Date startedAt, double sampleInterval)
    : startedAt_(startedAt), maxGap_(maxSampleGap(sampleInterval)), wattHours_(maxGap_) {}

void RunningEnergy::ingest(const PowerSamplePoint& point) {
  const auto place = std::ranges::upper_bound(points_, point.timestamp, {}, &Point::timestamp);
  const bool isInOrder = place == points_.end();
  points_.insert(place, {.timestamp = point.timestamp,
                         .watts = point.watts,
                         .sourceKind = point.sourceKind,
                         .acConnected = point.acConnected});
  if (isInOrder) {
    advance(points_.back());
    return;
  }
  watts_ = {};
  wattHours_ = WattHoursAccumulator{maxGap_};
  segment_.reset();
  tellingSegments_.clear();
  for (const Point& each : points_) {
    advance(each);
  }
}

void RunningEnergy::advance(const Point& point) {
  const PowerSamplePoint sample{.timestamp = point.timestamp,
                                .watts = point.watts,
                                .sourceKind = point.sourceKind,
                                .sourceLabel = {},
                                .acConnected = point.acConnected};
  if (segment_ && !segment_->continues(sample)) {
    finishSegment();
  }
  if (!segment_) {
    segment_.emplace(0, sample, maxGap_);
  }
  segment_->ingest(sample);

  watts_.durationSeconds = std::max(0.0, secondsBetween(startedAt_, point.timestamp));
  if (!point.watts) {
    return;
  }
  ++watts_.sampleCount;
  watts_.sum += *point.watts;
  wattHours_.ingest({point.timestamp, *point.watts});
}

void RunningEnergy::finishSegment() {
  PowerSessionPowerSegment finished = segment_->materialize();
  segment_.reset();
  const auto isOfAnotherKind = [&](const PowerSessionPowerSegment& segment) {
    return segment.sourceKind != tellingSegments_.front().sourceKind;
  };
  const auto isNew = [&](const auto& isTelling) {
    return isTelling(finished) && std::ranges::none_of(tellingSegments_, isTelling);
  };
  if (tellingSegments_.empty() || isNew(isOfAnotherKind) || isNew(isEnergyWithheld)) {
    tellingSegments_.push_back(std::move(finished));
  }
}

SessionEnergy RunningEnergy::energy() const {
  auto segments = tellingSegments_;
  if (segment_) {
    segments.push_back(segment_->materialize());
  }
  SessionWatts watts = watts_;
  watts.totalWattHours = wattHours_.coveredWattHours();
  watts.hasGap = wattHours_.hasGap();
  return sessionEnergy(watts, segments);
}

}  // namespace quorvex
