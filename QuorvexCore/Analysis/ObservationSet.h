#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "Observation.h"

namespace quorvex {

class ObservationMemory;

/// The observations of one session, in ascending order of time, with all that they refer to. Those
/// of one instant keep the order in which their samples came. Movable, immutable; any thread.
class ObservationSet {
 public:
  ObservationSet();
  ObservationSet(ObservationSet&& other) noexcept;
  ObservationSet& operator=(ObservationSet&& other) noexcept;
  ~ObservationSet();

  /// Decodes samples on the calling thread.
  [[nodiscard]] static ObservationSet decoding(std::span<const StoredSample> samples);

  [[nodiscard]] std::span<const Observation> observations() const {
    return {observations_.get(), count_};
  }
  /// Good as long as the set, moved or not.
  operator std::span<const Observation>() const {  // NOLINT(google-explicit-constructor)
    return observations();
  }

 private:
  friend class ObservationLoader;

  struct Deallocation {
    std::size_t capacity;
    void operator()(Observation* observations) const;
  };

  explicit ObservationSet(std::size_t capacity);

  /// Room that the decoders fill in place, whichever order they finish in.
  std::unique_ptr<Observation[], Deallocation> observations_;
  std::size_t count_ = 0;
  std::vector<std::unique_ptr<ObservationMemory>> memory_;
};

}  // namespace quorvex
