#pragma once

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace quorvex {

/// What one key of the recording's frames says over time: one entry for each frame that carries the
/// key. Frames that leave it out keep the value before, and so have no entry.
template <typename Value>
class Track {
 public:
  struct Entry {
    std::chrono::nanoseconds at{0};
    std::optional<Value> value;  ///< none: the frame says null
  };

  /// Entries come in ascending `at`.
  void append(std::chrono::nanoseconds at, std::optional<Value> value) {
    entries_.push_back(Entry{at, std::move(value)});
  }

  /// The entry in force at a position of the recording; null before the first. Valid as long as
  /// the track lives unchanged.
  [[nodiscard]] const Entry* entry(std::chrono::nanoseconds position) const {
    const auto next = std::upper_bound(
        entries_.begin(), entries_.end(), position,
        [](std::chrono::nanoseconds wanted, const Entry& entry) { return wanted < entry.at; });
    return next == entries_.begin() ? nullptr : &*std::prev(next);
  }

  /// The value in force at a position; null when there is none.
  [[nodiscard]] const Value* value(std::chrono::nanoseconds position) const {
    const Entry* found = entry(position);
    return found != nullptr && found->value ? &*found->value : nullptr;
  }

 private:
  std::vector<Entry> entries_;
};

}  // namespace quorvex
