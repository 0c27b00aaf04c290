#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "Observation.h"

namespace quorvex {

/// Keeps the texts and rows of observations where they lie until it is destroyed. Texts that come
/// again, as names of processes do, are kept once. One thread.
class ObservationMemory {
 public:
  [[nodiscard]] std::string_view keep(std::string_view text);
  [[nodiscard]] std::span<const ObservedProcess> keep(std::span<const ObservedProcess> rows) {
    return processes_.keep(rows);
  }
  [[nodiscard]] std::span<const ObservedNetworkProcess> keep(
      std::span<const ObservedNetworkProcess> rows) {
    return networkProcesses_.keep(rows);
  }

 private:
  /// Runs of items in blocks that never move.
  template <typename Item>
  class Blocks {
   public:
    [[nodiscard]] std::span<const Item> keep(std::span<const Item> items);

   private:
    static constexpr std::size_t blockSize = 64 * 1024 / sizeof(Item);

    std::vector<std::unique_ptr<Item[]>> blocks_;
    std::size_t free_ = 0;  ///< items left at the end of the last block
    std::size_t size_ = 0;  ///< of the last block
  };

  Blocks<char> characters_;
  Blocks<ObservedProcess> processes_;
  Blocks<ObservedNetworkProcess> networkProcesses_;
  std::unordered_set<std::string_view> texts_;
};

}  // namespace quorvex
