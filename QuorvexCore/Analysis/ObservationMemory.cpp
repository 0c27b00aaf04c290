#include "ObservationMemory.h"

#include <algorithm>

namespace quorvex {

template <typename Item>
std::span<const Item> ObservationMemory::Blocks<Item>::keep(std::span<const Item> items) {
  if (items.empty()) {
    return {};
  }
  if (items.size() > free_) {
    size_ = std::max(blockSize, items.size());
    free_ = size_;
    blocks_.push_back(std::make_unique<Item[]>(size_));
  }
  Item* const place = blocks_.back().get() + (size_ - free_);
  free_ -= items.size();
  std::copy(items.begin(), items.end(), place);
  return {place, items.size()};
}

std::string_view ObservationMemory::keep(std::string_view text) {
  const auto known = texts_.find(text);
  if (known != texts_.end()) {
    return *known;
  }
  const auto kept = characters_.keep(std::span<const char>{text});
  return *texts_.emplace(kept.data(), kept.size()).first;
}

template class ObservationMemory::Blocks<ObservedProcess>;
template class ObservationMemory::Blocks<ObservedNetworkProcess>;

}  // namespace quorvex
