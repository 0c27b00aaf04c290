#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "StrictJSON.h"

/// The parts that readers of records are made of.
namespace quorvex::record_readers {

/// What `read` makes of a value; none when the value is null.
template <typename Read>
auto orNull(StrictJSON& json, Read read) -> std::optional<decltype(read(json))> {
  if (json.isNull()) {
    return std::nullopt;
  }
  return read(json);
}

inline std::string readText(StrictJSON& json) {
  return json.string();
}

/// An integer of one of the signed types, or of the unsigned ones below 64 bits.
template <typename Integer>
Integer readInteger(StrictJSON& json) {
  return static_cast<Integer>(
      json.integer(std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
}

/// The value that one of the object's keys set; an error when that key did not come.
template <typename Value>
Value required(const StrictJSON& object, std::string_view key, std::optional<Value> value) {
  if (!value) {
    object.failMissing(key);
  }
  return std::move(*value);
}

/// An array of what `read` makes of its elements.
template <typename Read>
auto readList(StrictJSON& json, Read read) {
  std::vector<decltype(read(json))> list;
  json.forEachElement([&](std::size_t, StrictJSON& element) { list.push_back(read(element)); });
  return list;
}

/// Bytes as pairs of hexadecimal digits, without anything between.
[[nodiscard]] std::vector<std::byte> readHex(StrictJSON& json);

}  // namespace quorvex::record_readers
