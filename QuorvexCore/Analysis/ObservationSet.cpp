#include "ObservationSet.h"

#include <type_traits>
#include <utility>

#include "ObservationLoader.h"
#include "ObservationMemory.h"

namespace quorvex {

void ObservationSet::Deallocation::operator()(Observation* observations) const {
  static_assert(std::is_trivially_destructible_v<Observation>);
  std::allocator<Observation>{}.deallocate(observations, capacity);
}

ObservationSet::ObservationSet() = default;

ObservationSet::ObservationSet(std::size_t capacity)
    : observations_(std::allocator<Observation>{}.allocate(capacity), Deallocation{capacity}) {}

ObservationSet::ObservationSet(ObservationSet&& other) noexcept
    : observations_(std::move(other.observations_)),
      count_(std::exchange(other.count_, 0)),
      memory_(std::move(other.memory_)) {}

ObservationSet& ObservationSet::operator=(ObservationSet&& other) noexcept {
  observations_ = std::move(other.observations_);
  count_ = std::exchange(other.count_, 0);
  memory_ = std::move(other.memory_);
  return *this;
}

ObservationSet::~ObservationSet() = default;

ObservationSet ObservationSet::decoding(std::span<const StoredSample> samples) {
  ObservationLoader loader{samples.size(), ObservationLoader::Threads::callerOnly};
  for (const StoredSample& sample : samples) {
    loader.add(sample);
  }
  return loader.finish();
}

}  // namespace quorvex
