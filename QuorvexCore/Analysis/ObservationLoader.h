#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>

#include "ObservationDecoder.h"
#include "ObservationSet.h"

namespace quorvex {

/// Decodes the samples of a session while they are still being read: the caller adds them as they
/// come, a second thread decodes, and the caller decodes too where reading is ahead. The result is
/// the same with and without the second thread.
///
/// It belongs to the thread that made it.
class ObservationLoader {
 public:
  enum class Threads {
    callerOnly,       ///< everything on the calling thread
    callerAndWorker,  ///< a second thread too, once there is enough to do
  };

  /// `sampleCount` is the most samples that are going to be added.
  explicit ObservationLoader(std::size_t sampleCount, Threads threads = Threads::callerAndWorker);
  ObservationLoader(const ObservationLoader&) = delete;
  ObservationLoader& operator=(const ObservationLoader&) = delete;
  /// Waits for the second thread; what was added is dropped.
  ~ObservationLoader();

  /// Copies what it needs of the sample. One more than `sampleCount` is a fatal error.
  void add(const StoredSample& sample);

  /// Decodes what is left and gives all observations, in ascending order of time. The last call.
  [[nodiscard]] ObservationSet finish();

 private:
  /// Samples whose observations belong at `place`.
  struct Job {
    StoredSampleBatch batch;
    Observation* place = nullptr;
  };
  /// What one batch holds: enough that handing it over costs nothing beside decoding it, little
  /// enough to stay in a core's own cache.
  static constexpr std::size_t batchBytes = 64 * 1024;
  /// Batches that wait for the second thread before the caller takes one itself.
  static constexpr std::size_t mostWaiting = 4;

  void handOver();
  void decode(ObservationDecoder& decoder, Job job);
  void work();
  void endWorker();

  Threads threads_;
  std::size_t capacity_;
  ObservationSet set_;
  std::size_t added_ = 0;
  Job filling_;
  ObservationDecoder decoder_;
  ObservationDecoder workerDecoder_;
  std::thread worker_;

  std::mutex mutex_;
  std::condition_variable changed_;
  // Guarded by `mutex_`.
  std::deque<Job> waiting_;
  std::vector<StoredSampleBatch> spare_;  ///< batches to be filled again
  bool isComplete_ = false;
};

}  // namespace quorvex
