#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Result.h"

namespace quorvex {

/// Why a text is not the record that it should be, with the JSON path of the place:
/// "$.processes[2].pid: missing". One line, for people.
struct DecodingError {
  std::string description;

  bool operator==(const DecodingError&) const = default;
};

/// Reads JSON documents into records by their field tables.
///
/// Fields that are not optional must be there; optional ones may be missing or null; unknown keys
/// are ignored, wherever keys stand. A value of another type, an integer that does not fit, a date
/// that is not ISO 8601 or a text that is not JSON throughout fails the whole document. It is
/// quickest on what `RecordEncoder` writes, since it expects the next key first.
///
/// It owns the memory that parsing needs: keep one for many documents. One thread at a time. Each
/// record type is instantiated once, by a source that includes "RecordDecoding.h".
class RecordDecoder {
 public:
  /// Bytes behind a text that must be readable for it to be read in place, without a copy.
  static constexpr std::size_t padding = 64;

  RecordDecoder();
  RecordDecoder(RecordDecoder&&) noexcept;
  RecordDecoder& operator=(RecordDecoder&&) noexcept;
  ~RecordDecoder();

  template <typename Value>
  [[nodiscard]] Result<Value, DecodingError> decode(std::string_view json) {
    Value value{};
    if (!decodeInto(value, json)) {
      return DecodingError{error()};
    }
    return value;
  }

  /// Reads into `value`, whose strings and arrays are used again: for passes over many documents.
  /// False when the text is not such a record, with the reason in `error()`; `value` is then
  /// half-written, but usable for the next document. `readableBehind` is the number of bytes after
  /// `json` that belong to the caller too.
  template <typename Value>
  [[nodiscard]] bool decodeInto(Value& value, std::string_view json,
                                std::size_t readableBehind = 0);

  /// The reason of the last failure.
  [[nodiscard]] DecodingError error() const;

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvex
