#pragma once

#include <cmath>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Date.h"
#include "JSONWriter.h"
#include "RawEnum.h"
#include "RecordFields.h"
#include "Result.h"
#include "Text.h"
#include "UUID.h"

namespace quorvex {

/// Why a record cannot be written, with the JSON path of the place:
/// "$.battery.voltage: not a finite number". One line, for people.
struct EncodingError {
  std::string description;

  bool operator==(const EncodingError&) const = default;
};

/// Writes one value of a record: a record with a field table, an array, a date (ISO 8601 in UTC and
/// whole seconds), an identifier, an enum by its text, text or a number. Text that is not UTF-8 is
/// repaired, so that what is written can always be read.
template <typename Value>
void writeCoded(JSONWriter& writer, const Value& value);

namespace detail {

template <typename Value>
inline constexpr bool isVector = false;
template <typename Value>
inline constexpr bool isVector<std::vector<Value>> = true;

void writeText(JSONWriter& writer, std::string_view text);

template <CodedRecord Record>
void writeFields(JSONWriter& writer, const Record& record) {
  static_assert(recordKeysAscend<Record>(), "the field table must be in ascending order of keys");
  const auto writeField = [&](const auto& field) {
    const auto& value = record.*field.member;
    if constexpr (isOptionalValue<std::remove_cvref_t<decltype(value)>>) {
      if (value) {
        writer.key(field.key);
        writeCoded(writer, *value);
      }
    } else {
      writer.key(field.key);
      writeCoded(writer, value);
    }
  };
  writer.beginObject();
  std::apply([&](const auto&... field) { (writeField(field), ...); }, RecordFields<Record>::values);
  writer.endObject();
}

/// Appends the path of the first number that is not finite and says whether there is one.
template <typename Value>
bool findNonFinite(const Value& value, std::string& path) {
  if constexpr (std::same_as<Value, double>) {
    return !std::isfinite(value);
  } else if constexpr (isOptionalValue<Value>) {
    return value && findNonFinite(*value, path);
  } else if constexpr (isVector<Value>) {
    for (std::size_t i = 0; i < value.size(); ++i) {
      const std::size_t length = path.size();
      path.append("[").append(std::to_string(i)).append("]");
      if (findNonFinite(value[i], path)) {
        return true;
      }
      path.resize(length);
    }
    return false;
  } else if constexpr (CodedRecord<Value>) {
    const auto inField = [&](const auto& field) {
      const std::size_t length = path.size();
      path.append(".").append(field.key);
      const bool found = findNonFinite(value.*field.member, path);
      if (!found) {
        path.resize(length);
      }
      return found;
    };
    return std::apply([&](const auto&... field) { return (inField(field) || ...); },
                      RecordFields<Value>::values);
  } else {
    return false;
  }
}

}  // namespace detail

template <typename Value>
void writeCoded(JSONWriter& writer, const Value& value) {
  if constexpr (CodedRecord<Value>) {
    detail::writeFields(writer, value);
  } else if constexpr (detail::isVector<Value>) {
    writer.beginArray();
    for (const auto& item : value) {
      writeCoded(writer, item);
    }
    writer.endArray();
  } else if constexpr (std::same_as<Value, Date>) {
    writer.value(iso8601(value));
  } else if constexpr (std::same_as<Value, UUID>) {
    writer.value(value.text());
  } else if constexpr (std::is_enum_v<Value>) {
    writer.value(rawValue(value));
  } else if constexpr (std::convertible_to<const Value&, std::string_view>) {
    detail::writeText(writer, value);
  } else {
    writer.value(value);
  }
}

/// Writes records as JSON documents with sorted keys. A value; any thread.
class RecordEncoder {
 public:
  explicit RecordEncoder(JSONWriter::Style style) : style_(style) {}

  /// The document, or the place of the number (NaN, infinity) for which JSON has no form.
  template <typename Value>
  [[nodiscard]] Result<std::string, EncodingError> encode(const Value& value) const {
    JSONWriter writer{style_};
    writeCoded(writer, value);
    if (writer.isValid()) {
      return writer.takeText();
    }
    std::string path = "$";
    detail::findNonFinite(value, path);
    return EncodingError{path + ": not a finite number"};
  }

 private:
  JSONWriter::Style style_;
};

}  // namespace quorvex
