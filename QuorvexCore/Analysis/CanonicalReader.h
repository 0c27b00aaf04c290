#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <type_traits>
#include <utility>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// Tells JSON text that is, byte for byte, what the compact `RecordEncoder` writes for the record
/// that a `RecordDecoder` reads from it. Such text need not be decoded to be written again. It
/// follows the records' own field tables and looks at each byte about once.
///
/// It knows "yes" and "perhaps not": for text that it refuses, only decoding and encoding tells.
class CanonicalReader {
 public:
  /// Zero bytes that must stand behind a text: they end every scan, so that none needs a limit.
  static constexpr std::size_t padding = 64;

  /// Whether a text, with the padding behind it, is the canonical form of a `Value`: a record with
  /// a field table or an array of them.
  template <typename Value>
  [[nodiscard]] static bool isCanonical(std::string_view paddedText) {
    CanonicalReader reader{paddedText};
    return reader.pass<Value>() && reader.isAtEnd();
  }

 private:
  /// The bytes `"key":` of one field.
  template <typename Record, std::size_t index>
  struct KeyToken {
    static constexpr std::string_view key = std::get<index>(RecordFields<Record>::values).key;
    static constexpr auto bytes = [] {
      std::array<char, key.size() + 3> result{};
      result.front() = '"';
      for (std::size_t i = 0; i < key.size(); ++i) {
        result[i + 1] = key[i];
      }
      result[key.size() + 1] = '"';
      result[key.size() + 2] = ':';
      return result;
    }();
    static_assert(key.size() + 4 < padding);
  };

  explicit CanonicalReader(std::string_view paddedText)
      : text_(paddedText), at_(paddedText.data()) {}

  /// Whether all has been passed and is well-formed UTF-8.
  [[nodiscard]] bool isAtEnd() const;

  [[nodiscard]] bool take(char wanted) {
    if (*at_ != wanted) {
      return false;
    }
    ++at_;
    return true;
  }

  // Each passes over one value and says whether it is in its canonical form.
  template <typename Value>
  [[nodiscard]] bool pass();
  template <typename Value>
  [[nodiscard]] bool passArray();
  template <typename Record, std::size_t... index>
  [[nodiscard]] bool passFields(std::index_sequence<index...> /*indices*/);
  template <typename Record, std::size_t index>
  [[nodiscard]] bool passField(char& separator);
  template <std::integral Integer>
  [[nodiscard]] bool passInteger();
  [[nodiscard]] bool passFlag();
  [[nodiscard]] bool passNumber();
  [[nodiscard]] bool passText();
  [[nodiscard]] bool passDate();

  std::string_view text_;
  const char* at_;
  bool hasNonASCII_ = false;
};

template <typename Value>
bool CanonicalReader::pass() {
  if constexpr (isOptionalValue<Value>) {
    return pass<typename Value::value_type>();
  } else if constexpr (CodedRecord<Value>) {
    static_assert(recordKeysAscend<Value>(), "the field table must be in ascending order of keys");
    return passFields<Value>(std::make_index_sequence<recordFieldCount<Value>>{});
  } else if constexpr (std::same_as<Value, bool>) {
    return passFlag();
  } else if constexpr (std::integral<Value>) {
    return passInteger<Value>();
  } else if constexpr (std::same_as<Value, double>) {
    return passNumber();
  } else if constexpr (std::same_as<Value, std::string>) {
    return passText();
  } else if constexpr (std::same_as<Value, Date>) {
    return passDate();
  } else {
    return passArray<typename Value::value_type>();
  }
}

template <typename Value>
bool CanonicalReader::passArray() {
  if (!take('[')) {
    return false;
  }
  if (take(']')) {
    return true;
  }
  do {
    if (!pass<Value>()) {
      return false;
    }
  } while (take(','));
  return take(']');
}

template <typename Record, std::size_t... index>
bool CanonicalReader::passFields(std::index_sequence<index...> /*indices*/) {
  char separator = '{';
  if (!(passField<Record, index>(separator) && ...)) {
    return false;
  }
  // An object without any field has not been opened yet.
  return (separator == ',' || take('{')) && take('}');
}

template <typename Record, std::size_t index>
bool CanonicalReader::passField(char& separator) {
  using Value = std::remove_cvref_t<decltype(std::declval<Record>().*
                                             std::get<index>(RecordFields<Record>::values).member)>;
  constexpr auto& token = KeyToken<Record, index>::bytes;
  if (*at_ == separator && std::memcmp(at_ + 1, token.data(), token.size()) == 0) {
    at_ += token.size() + 1;
    separator = ',';
    return pass<Value>();
  }
  // Whatever is not optional is written, also where a reader would do without.
  return isOptionalValue<Value>;
}

template <std::integral Integer>
bool CanonicalReader::passInteger() {
  Integer integer{};
  const auto [end, error] = std::from_chars(at_, text_.data() + text_.size(), integer);
  const bool isNegative = *at_ == '-';
  const char* const digits = at_ + (isNegative ? 1 : 0);
  at_ = end;
  return error == std::errc{} && (*digits != '0' || (!isNegative && end == digits + 1));
}

}  // namespace quorvex
