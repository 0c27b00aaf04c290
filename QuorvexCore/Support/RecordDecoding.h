#pragma once

// The body of `RecordDecoder::decodeInto`. Included only by sources that instantiate it, and that
// link simdjson:
//   template bool RecordDecoder::decodeInto(FanInfo&, std::string_view, std::size_t);

#include <simdjson.h>

#include <array>
#include <bitset>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Date.h"
#include "RawEnum.h"
#include "RecordDecoder.h"
#include "RecordFields.h"
#include "UUID.h"

namespace quorvex {

/// The parser's memory and the walk through one document. The first problem ends the walk: every
/// `read` gives false from there on, and each level that is left puts its part before the path.
///
/// The parser looks at values only on demand, so that every value is looked at here, also those
/// that nobody keeps: a text that is broken anywhere is refused.
class RecordDecoder::State {
 public:
  template <typename Value>
  [[nodiscard]] bool readDocument(std::string_view json, std::size_t readableBehind, Value& value);

  [[nodiscard]] std::string problem() const;

 private:
  using JSON = simdjson::ondemand::value;
  using ObjectIterator = simdjson::ondemand::object_iterator;

  static constexpr std::string_view notJSON = "not valid JSON";
  /// Arrays and objects within one another in a value that nobody keeps.
  static constexpr int deepestUnknown = 64;
  /// From here on a float no longer tells neighbouring whole numbers apart.
  static constexpr double firstInexactInteger = 9007199254740992.0;

  // Each says false, for the caller to pass on.
  bool fail(std::string_view words);
  bool failIn(std::string_view key);
  bool failIn(std::size_t index);
  bool failMissing(std::string_view key);

  /// The characters of a string value: in the document itself unless it has escapes.
  bool readText(JSON json, std::string_view& text);
  bool readNumber(JSON json, double& number) {
    return json.get_double().get(number) == simdjson::SUCCESS || fail("not a number");
  }
  template <std::integral Integer>
  bool readInteger(JSON json, Integer& integer);
  /// Checks a value of any type and drops it.
  bool skip(JSON json, int depth = 0);

  template <typename Value>
  bool read(JSON json, Value& value);
  template <typename Value>
  bool readArray(JSON json, std::vector<Value>& values);
  template <CodedRecord Record>
  bool readRecord(JSON json, Record& record);
  template <typename Record, typename Value>
  bool readField(JSON json, const RecordField<Record, Value>& field, Record& record) {
    if constexpr (!isOptionalValue<Value>) {
      if (field.missing == MissingKey::keepsDefault && isNull(json)) {
        record.*field.member = Record{}.*field.member;
        return true;
      }
    }
    return read(json, record.*field.member) || failIn(field.key);
  }
  template <typename Record, typename Value>
  bool readField(JSON json, const CheckedField<Value>& field, Record&) {
    return check<Value>(json) || failIn(field.key);
  }
  template <typename Record, typename Value>
  bool fillMissing(const RecordField<Record, Value>& field, Record& record) {
    if constexpr (isOptionalValue<Value>) {
      (record.*field.member).reset();
      return true;
    } else {
      if (field.missing == MissingKey::keepsDefault) {
        record.*field.member = Record{}.*field.member;
        return true;
      }
      return failMissing(field.key);
    }
  }
  template <typename Record, typename Value>
  bool fillMissing(const CheckedField<Value>& field, Record&) {
    if constexpr (isOptionalValue<Value>) {
      return true;
    }
    return failMissing(field.key);
  }
  /// Reads a value as strictly as if it were kept.
  template <typename Value>
  bool check(JSON json);

  static bool isNull(JSON json) {
    bool null = false;
    return json.is_null().get(null) == simdjson::SUCCESS && null;
  }

  simdjson::ondemand::parser parser_;
  std::string buffer_;
  std::string path_;
  std::string_view words_;
};

template <typename Value>
bool RecordDecoder::State::readDocument(std::string_view json, std::size_t readableBehind,
                                        Value& value) {
  static_assert(padding >= simdjson::SIMDJSON_PADDING);
  path_.clear();
  words_ = {};
  if (readableBehind < padding) {
    if (buffer_.size() < json.size() + padding) {
      buffer_.resize(json.size() + padding);
    }
    json.copy(buffer_.data(), json.size());
    std::memset(buffer_.data() + json.size(), 0, padding);
    json = {buffer_.data(), json.size()};
  }
  simdjson::ondemand::document document;
  if (parser_.iterate(json, json.size() + padding).get(document) != simdjson::SUCCESS) {
    return fail(notJSON);
  }
  JSON root;
  const simdjson::error_code error = document.get_value().get(root);
  if (error == simdjson::SCALAR_DOCUMENT_AS_VALUE) {
    return fail(CodedRecord<Value> ? "not an object" : "not an array");
  }
  if (error != simdjson::SUCCESS) {
    return fail(notJSON);
  }
  // Anything behind the document makes it no JSON text.
  return read(root, value) &&
         (document.current_location().error() == simdjson::OUT_OF_BOUNDS || fail(notJSON));
}

template <std::integral Integer>
bool RecordDecoder::State::readInteger(JSON json, Integer& integer) {
  using Wide = std::conditional_t<std::signed_integral<Integer>, std::int64_t, std::uint64_t>;
  constexpr std::string_view doesNotFit =
      sizeof(Integer) == 4            ? std::string_view{"not an integer of 32 bits"}
      : std::signed_integral<Integer> ? std::string_view{"not an integer of 64 bits"}
                                      : std::string_view{"not an unsigned integer of 64 bits"};
  Wide wide = 0;
  if (json.get(wide) != simdjson::SUCCESS) {
    // 1000.0 is the same number as 1000.
    double number = 0.0;
    if (!readNumber(json, number)) {
      return false;
    }
    if (std::trunc(number) != number || std::abs(number) > firstInexactInteger ||
        (std::unsigned_integral<Integer> && number < 0)) {
      return fail(doesNotFit);
    }
    wide = static_cast<Wide>(number);
  }
  if (!std::in_range<Integer>(wide)) {
    return fail(doesNotFit);
  }
  integer = static_cast<Integer>(wide);
  return true;
}

template <typename Value>
bool RecordDecoder::State::read(JSON json, Value& value) {
  if constexpr (CodedRecord<Value>) {
    return readRecord(json, value);
  } else if constexpr (isOptionalValue<Value>) {
    if (isNull(json)) {
      value.reset();
      return true;
    }
    return read(json, value ? *value : value.emplace());
  } else if constexpr (std::same_as<Value, bool>) {
    return json.get_bool().get(value) == simdjson::SUCCESS || fail("not a Boolean");
  } else if constexpr (std::integral<Value>) {
    return readInteger(json, value);
  } else if constexpr (std::same_as<Value, double>) {
    return readNumber(json, value);
  } else if constexpr (std::same_as<Value, std::string>) {
    std::string_view text;
    if (!readText(json, text)) {
      return false;
    }
    value.assign(text);
    return true;
  } else if constexpr (std::same_as<Value, Date>) {
    std::string_view text;
    const auto date = readText(json, text) ? parseISO8601(text) : std::nullopt;
    value = date.value_or(value);
    return date || fail("not an ISO 8601 date");
  } else if constexpr (std::same_as<Value, UUID>) {
    std::string_view text;
    const auto id = readText(json, text) ? UUID::fromText(text) : std::nullopt;
    value = id.value_or(value);
    return id || fail("not a UUID");
  } else if constexpr (std::is_enum_v<Value>) {
    std::string_view text;
    const auto known = readText(json, text) ? fromRawValue<Value>(text) : std::nullopt;
    value = known.value_or(value);
    return known || fail("not one of the known words");
  } else {
    return readArray(json, value);
  }
}

template <typename Value>
bool RecordDecoder::State::readArray(JSON json, std::vector<Value>& values) {
  simdjson::ondemand::array array;
  if (json.get_array().get(array) != simdjson::SUCCESS) {
    return fail("not an array");
  }
  std::size_t count = 0;
  for (auto item : array) {
    if (item.error() != simdjson::SUCCESS) {
      return fail(notJSON);
    }
    if (count == values.size()) {
      values.emplace_back();
    }
    if (!read(item.value_unsafe(), values[count])) {
      return failIn(count);
    }
    ++count;
  }
  values.resize(count);
  return true;
}

template <typename Value>
bool RecordDecoder::State::check(JSON json) {
  if constexpr (isOptionalValue<Value>) {
    return isNull(json) || check<typename Value::value_type>(json);
  } else if constexpr (std::same_as<Value, std::string>) {
    std::string_view text;
    return readText(json, text);
  } else if constexpr (requires { typename Value::allocator_type; }) {
    simdjson::ondemand::array array;
    if (json.get_array().get(array) != simdjson::SUCCESS) {
      return fail("not an array");
    }
    std::size_t index = 0;
    for (auto item : array) {
      if (item.error() != simdjson::SUCCESS) {
        return fail(notJSON);
      }
      if (!check<typename Value::value_type>(item.value_unsafe())) {
        return failIn(index);
      }
      ++index;
    }
    return true;
  } else {
    Value dropped{};
    return read(json, dropped);
  }
}

template <CodedRecord Record>
bool RecordDecoder::State::readRecord(JSON json, Record& record) {
  static_assert(recordKeysAscend<Record>(), "the field table must be in ascending order of keys");
  constexpr std::size_t count = recordFieldCount<Record>;
  constexpr const auto& fields = RecordFields<Record>::values;

  simdjson::ondemand::object object;
  if (json.get_object().get(object) != simdjson::SUCCESS) {
    return fail("not an object");
  }
  ObjectIterator position = object.begin().value_unsafe();
  const ObjectIterator end = object.end().value_unsafe();
  simdjson::ondemand::field field;
  simdjson::ondemand::raw_json_string key;
  bool isAtEnd = false;
  const auto load = [&] {
    isAtEnd = !(position != end);
    if (isAtEnd) {
      return true;
    }
    if ((*position).get(field) != simdjson::SUCCESS) {
      return fail(notJSON);
    }
    key = field.key();
    return true;
  };
  std::bitset<count> found;
  const auto take = [&]<std::size_t index>(std::integral_constant<std::size_t, index>) {
    found.set(index);
    if (!readField(field.value(), std::get<index>(fields), record)) {
      return false;
    }
    ++position;
    return load();
  };
  // Keys come in the order of the table, with some left out: each field is compared once with the
  // key that stands next.
  const auto takeInOrder = [&]<std::size_t index>(std::integral_constant<std::size_t, index> i) {
    return isAtEnd || !key.unsafe_is_equal(std::get<index>(fields).key) || take(i);
  };
  // Any other order, unknown keys and keys with escapes.
  const auto takeAnywhere = [&](auto... indices) {
    std::string_view text;
    if (field.unescaped_key().get(text) != simdjson::SUCCESS) {
      return fail(notJSON);
    }
    bool isKnown = false;
    bool isGood = true;
    const auto tryField = [&](auto i) {
      if (!isKnown && std::get<decltype(i)::value>(fields).key == text) {
        isKnown = true;
        isGood = take(i);
      }
    };
    (tryField(indices), ...);
    if (isKnown) {
      return isGood;
    }
    if (!skip(field.value())) {
      return words_ == notJSON ? false : failIn(text);
    }
    ++position;
    return load();
  };

  const auto readAll = [&]<std::size_t... index>(std::index_sequence<index...>) {
    if (!load()) {
      return false;
    }
    while (!isAtEnd) {
      if (!(takeInOrder(std::integral_constant<std::size_t, index>{}) && ...)) {
        return false;
      }
      if (!isAtEnd && !takeAnywhere(std::integral_constant<std::size_t, index>{}...)) {
        return false;
      }
    }
    const bool isComplete =
        found.all() || ((found[index] || fillMissing(std::get<index>(fields), record)) && ...);
    const auto isMissing = [&](std::string_view name) {
      return ((std::get<index>(fields).key == name && !found[index]) || ...);
    };
    if constexpr (requires { RecordFields<Record>::complete(record, isMissing); }) {
      if (isComplete) {
        RecordFields<Record>::complete(record, isMissing);
      }
    }
    return isComplete;
  };
  return readAll(std::make_index_sequence<count>{});
}

template <typename Value>
bool RecordDecoder::decodeInto(Value& value, std::string_view json, std::size_t readableBehind) {
  return state_->readDocument(json, readableBehind, value);
}

}  // namespace quorvex
