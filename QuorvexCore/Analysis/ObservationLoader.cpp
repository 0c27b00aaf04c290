#include "ObservationLoader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "FatalError.h"
#include "ObservationMemory.h"

namespace quorvex {

ObservationLoader::ObservationLoader(std::size_t sampleCount, Threads threads)
    : threads_(threads), capacity_(sampleCount), set_(sampleCount) {}

ObservationLoader::~ObservationLoader() {
  endWorker();
}

void ObservationLoader::add(const StoredSample& sample) {
  if (added_ == capacity_) {
    fatalError("more samples than were announced");
  }
  if (filling_.batch.isEmpty()) {
    filling_.place = set_.observations_.get() + added_;
  }
  filling_.batch.add(sample);
  ++added_;
  if (filling_.batch.byteCount() >= batchBytes) {
    handOver();
  }
}

void ObservationLoader::handOver() {
  if (threads_ == Threads::callerOnly) {
    decoder_.decode(filling_.batch, filling_.place);
    filling_.batch.clear();
    return;
  }
  if (!worker_.joinable()) {
    worker_ = std::thread{[this] { work(); }};
  }
  std::optional<Job> own;
  {
    const std::lock_guard lock{mutex_};
    waiting_.push_back(std::exchange(filling_, {}));
    if (waiting_.size() > mostWaiting) {
      own = std::move(waiting_.front());
      waiting_.pop_front();
    } else if (!spare_.empty()) {
      filling_.batch = std::move(spare_.back());
      spare_.pop_back();
    }
  }
  changed_.notify_one();
  if (own) {
    decode(decoder_, std::move(*own));
  }
}

void ObservationLoader::decode(ObservationDecoder& decoder, Job job) {
  decoder.decode(job.batch, job.place);
  job.batch.clear();
  const std::lock_guard lock{mutex_};
  if (spare_.size() < mostWaiting) {
    spare_.push_back(std::move(job.batch));
  }
}

void ObservationLoader::work() {
  while (true) {
    Job job;
    {
      std::unique_lock lock{mutex_};
      changed_.wait(lock, [this] { return isComplete_ || !waiting_.empty(); });
      if (waiting_.empty()) {
        return;
      }
      job = std::move(waiting_.front());
      waiting_.pop_front();
    }
    decode(workerDecoder_, std::move(job));
  }
}

void ObservationLoader::endWorker() {
  {
    const std::lock_guard lock{mutex_};
    isComplete_ = true;
  }
  changed_.notify_one();
  if (worker_.joinable()) {
    worker_.join();
  }
}

ObservationSet ObservationLoader::finish() {
  if (!filling_.batch.isEmpty()) {
    decode(decoder_, std::exchange(filling_, {}));
  }
  while (true) {
    std::optional<Job> job;
    {
      const std::lock_guard lock{mutex_};
      if (waiting_.empty()) {
        break;
      }
      job = std::move(waiting_.back());
      waiting_.pop_back();
    }
    decode(decoder_, std::move(*job));
  }
  endWorker();
  set_.count_ = added_;
  set_.memory_.push_back(decoder_.takeMemory());
  set_.memory_.push_back(workerDecoder_.takeMemory());
  const auto isEarlier = [](const Observation& left, const Observation& right) {
    return left.columns.timestamp < right.columns.timestamp;
  };
  Observation* const first = set_.observations_.get();
  if (!std::is_sorted(first, first + added_, isEarlier)) {
    std::stable_sort(first, first + added_, isEarlier);
  }
  return std::move(set_);
}

}  // namespace quorvex
