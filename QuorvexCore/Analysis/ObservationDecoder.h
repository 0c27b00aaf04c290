#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Observation.h"

namespace quorvex {

class ObservationMemory;

/// Stored samples on their way to being decoded, with copies of their blobs: what a reader of the
/// store hands to a decoder on another thread.
class StoredSampleBatch {
 public:
  void add(const StoredSample& sample);
  void clear();

  [[nodiscard]] bool isEmpty() const { return samples_.empty(); }
  [[nodiscard]] std::size_t sampleCount() const { return samples_.size(); }
  [[nodiscard]] std::size_t byteCount() const { return bytes_.size(); }

 private:
  friend class ObservationDecoder;

  /// A blob's place in `bytes_`, with zero bytes behind it. Length 0: there is none, or an empty
  /// one, which decodes to nothing either.
  struct Blob {
    std::size_t offset = 0;
    std::size_t length = 0;
  };
  struct Sample {
    SampleColumns columns;
    Blob snapshot;
    Blob processActivity;
    Blob proTelemetry;
  };

  [[nodiscard]] Blob copy(std::string_view blob);
  [[nodiscard]] std::string_view text(Blob blob) const {
    return {bytes_.data() + blob.offset, blob.length};
  }

  std::vector<Sample> samples_;
  std::string bytes_;
};

/// Turns stored samples into observations. A blob decodes exactly when the session decoder reads it
/// as `SystemPowerStateDTO`, `ProTelemetrySnapshot` or array of `ProcessActivityDTO`, and to the
/// same values; what does not decode is absent and no error. Blobs in the form that this program
/// writes are read in one pass; the session decoder judges all others.
///
/// Each sample stands for itself: which decoder takes it, and when, does not change its
/// observation. One thread at a time; keep one for many batches.
class ObservationDecoder {
 public:
  ObservationDecoder();
  ObservationDecoder(ObservationDecoder&&) noexcept;
  ObservationDecoder& operator=(ObservationDecoder&&) noexcept;
  ~ObservationDecoder();

  /// Constructs one observation for each sample of the batch at `place`, in its order. They are
  /// good as long as the memory that `takeMemory` gives.
  void decode(const StoredSampleBatch& batch, Observation* place);

  /// Hands over the texts and rows of all observations since the last call.
  [[nodiscard]] std::unique_ptr<ObservationMemory> takeMemory();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvex
