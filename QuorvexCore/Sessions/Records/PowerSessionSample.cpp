#include "PowerSessionSample.h"

#include <utility>

namespace quorvex {

PowerSessionSample::PowerSessionSample(const PowerSessionSampleColumns& columns,
                                       PowerSessionBlobs blobs, std::weak_ptr<PowerSession> session)
    : columns_(columns),
      session_(std::move(session)),
      ownBlobs_(std::make_unique<const PowerSessionBlobs>(std::move(blobs))) {}

PowerSessionSample::PowerSessionSample(const PowerSessionSampleColumns& columns, std::int64_t row,
                                       std::weak_ptr<PowerSessionBlobSource> source,
                                       std::weak_ptr<PowerSession> session)
    : columns_(columns), row_(row), session_(std::move(session)), source_(std::move(source)) {}

PowerSessionBlobViews PowerSessionSample::blobs() const {
  if (ownBlobs_) {
    return {ownBlobs_->snapshotData, ownBlobs_->processActivityData, ownBlobs_->proTelemetryData};
  }
  const auto source = source_.lock();
  return source && row_ ? source->read(*row_) : PowerSessionBlobViews{};
}

void PowerSessionSample::markStored(std::int64_t row,
                                    std::weak_ptr<PowerSessionBlobSource> source) {
  row_ = row;
  source_ = std::move(source);
  ownBlobs_.reset();
}

}  // namespace quorvex
