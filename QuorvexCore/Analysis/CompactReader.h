#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// Reads records from JSON exactly as the compact `RecordEncoder` writes it: known keys in their
/// order, no white space, no null. It follows the records' own field tables, checks every value and
/// keeps only those that are asked for.
///
/// It knows "yes" and "not in this form", never "no": whatever it reads, a `RecordDecoder` reads to
/// the same values; whatever it does not read, a `RecordDecoder` must judge. It looks at each byte
/// about once and builds no index, which is what makes it several times as quick.
class CompactReader {
 public:
  /// Zero bytes that must stand behind a text: they end every scan, so that none needs a limit.
  static constexpr std::size_t padding = 64;

  explicit CompactReader(std::string_view paddedText)
      : begin_(paddedText.data()), at_(begin_), end_(begin_ + paddedText.size()) {}

  /// Whether the text has been read to its end and is well-formed UTF-8 throughout.
  [[nodiscard]] bool isAtEnd() const;

  [[nodiscard]] bool read(bool& flag);
  [[nodiscard]] bool read(double& number);
  /// Reads a number and raises `largest` to it.
  [[nodiscard]] bool raise(std::optional<double>& largest);
  /// The view holds until the next text is read.
  [[nodiscard]] bool read(std::string_view& text);
  [[nodiscard]] bool read(Date& date);
  template <std::integral Integer>
  requires(!std::same_as<Integer, bool>) [[nodiscard]] bool read(Integer& integer);
  template <typename Value>
  [[nodiscard]] bool read(std::optional<Value>& value) {
    return read(value.emplace());
  }

  /// Reads an object by the field table of `Record`. Each of `kept` says what becomes of one
  /// member's value; all other values are checked and dropped.
  template <CodedRecord Record, typename... Kept>
  [[nodiscard]] bool readRecord(Kept&&... kept) {
    return readFields<Record>(std::make_index_sequence<recordFieldCount<Record>>{}, kept...);
  }

  /// Calls `readItem` for each item of an array until it says false.
  template <typename ReadItem>
  [[nodiscard]] bool readArray(ReadItem readItem);

  /// Reads a value as strictly as if it were kept.
  template <typename Value>
  [[nodiscard]] bool check();

 private:
  /// The bytes `"key":` of one field.
  template <typename Record, std::size_t index>
  struct KeyToken {
    static constexpr std::string_view key = std::get<index>(RecordFields<Record>::values).key;
    static constexpr auto bytes = [] {
      std::array<char, key.size() + 3> result{};
      result[0] = '"';
      for (std::size_t i = 0; i < key.size(); ++i) {
        result[i + 1] = key[i];
      }
      result[key.size() + 1] = '"';
      result[key.size() + 2] = ':';
      return result;
    }();
    static_assert(key.size() + 4 < padding);
  };
  template <auto value>
  struct Constant {};

  /// Compares in words: most tokens are too long to be compared without a call otherwise.
  template <std::size_t size>
  [[nodiscard]] static bool standsAt(const char* at, const std::array<char, size>& token) {
    constexpr std::size_t word = sizeof(std::uint64_t);
    if constexpr (size < word) {
      return std::memcmp(at, token.data(), size) == 0;
    } else {
      std::uint64_t difference = 0;
      for (std::size_t i = 0; i + word <= size; i += word) {
        difference |= wordAt(at + i) ^ wordAt(token.data() + i);
      }
      difference |= wordAt(at + size - word) ^ wordAt(token.data() + size - word);
      return difference == 0;
    }
  }
  [[nodiscard]] static std::uint64_t wordAt(const char* at) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
  }
  [[nodiscard]] bool take(char wanted) {
    if (*at_ != wanted) {
      return false;
    }
    ++at_;
    return true;
  }
  template <CodedRecord Record, std::size_t... index, typename... Kept>
  [[nodiscard]] bool readFields(std::index_sequence<index...> /*indices*/, Kept&... kept);
  template <CodedRecord Record, std::size_t index, typename... Kept>
  [[nodiscard]] bool readField(char& separator, Kept&... kept);
  template <auto member, typename Value, typename First, typename... Rest>
  [[nodiscard]] bool readMember(First& first, Rest&... rest) {
    if constexpr (std::same_as<Constant<member>, Constant<First::member>>) {
      return first.readFrom(*this);
    } else {
      return readMember<member, Value>(rest...);
    }
  }
  template <auto member, typename Value>
  [[nodiscard]] bool readMember() {
    return check<Value>();
  }
  struct NumberParts;

  [[nodiscard]] bool readNumber(const NumberParts& parts, double& number);
  [[nodiscard]] bool checkNumber();
  /// Passes over a text; `start` is its first character, `hasEscapes` whether it needs unescaping.
  [[nodiscard]] bool passText(const char*& start, bool& hasEscapes);
  [[nodiscard]] bool readDigits(std::uint64_t& value);

  const char* begin_;
  const char* at_;
  const char* end_;
  bool hasNonASCII_ = false;
  std::string unescaped_;
};

/// What becomes of one member's value: `read` is called with the reader in front of it.
template <auto recordMember, typename Read>
struct KeptMember {
  static constexpr auto member = recordMember;
  Read read;
  [[nodiscard]] bool readFrom(CompactReader& reader) { return read(reader); }
};

template <auto member, typename Read>
[[nodiscard]] auto readBy(Read read) {
  return KeptMember<member, Read>{std::move(read)};
}

/// Keeps a member's value in `target`, which stays untouched when an optional one is missing.
template <auto member, typename Target>
[[nodiscard]] auto keep(Target& target) {
  return readBy<member>([&target](CompactReader& reader) { return reader.read(target); });
}

template <std::integral Integer>
requires(!std::same_as<Integer, bool>) bool CompactReader::read(Integer& integer) {
  bool isNegative = false;
  if constexpr (std::signed_integral<Integer>) {
    isNegative = take('-');
  }
  std::uint64_t digits = 0;
  if (!readDigits(digits)) {
    return false;
  }
  const auto value = static_cast<std::int64_t>(digits);
  if (!std::in_range<Integer>(isNegative ? -value : value)) {
    return false;
  }
  integer = static_cast<Integer>(isNegative ? -value : value);
  return true;
}

template <typename ReadItem>
bool CompactReader::readArray(ReadItem readItem) {
  if (!take('[')) {
    return false;
  }
  if (take(']')) {
    return true;
  }
  do {
    if (!readItem()) {
      return false;
    }
  } while (take(','));
  return take(']');
}

template <typename Value>
bool CompactReader::check() {
  if constexpr (isOptionalValue<Value>) {
    return check<typename Value::value_type>();
  } else if constexpr (CodedRecord<Value>) {
    return readRecord<Value>();
  } else if constexpr (std::same_as<Value, double>) {
    return checkNumber();
  } else if constexpr (std::same_as<Value, std::string>) {
    const char* start = nullptr;
    bool hasEscapes = false;
    return passText(start, hasEscapes);
  } else if constexpr (requires { typename Value::allocator_type; }) {
    return readArray([this] { return check<typename Value::value_type>(); });
  } else {
    Value dropped{};
    return read(dropped);
  }
}

template <CodedRecord Record, std::size_t... index, typename... Kept>
bool CompactReader::readFields(std::index_sequence<index...> /*indices*/, Kept&... kept) {
  char separator = '{';
  return (readField<Record, index>(separator, kept...) && ...) && separator == ',' && take('}');
}

template <CodedRecord Record, std::size_t index, typename... Kept>
bool CompactReader::readField(char& separator, Kept&... kept) {
  constexpr auto& field = std::get<index>(RecordFields<Record>::values);
  using Value = std::remove_cvref_t<decltype(std::declval<Record>().*field.member)>;
  constexpr auto& token = KeyToken<Record, index>::bytes;
  if (*at_ == separator && standsAt(at_ + 1, token)) {
    at_ += token.size() + 1;
    separator = ',';
    return readMember<field.member, Value>(kept...);
  }
  return isOptionalValue<Value>;
}

}  // namespace quorvex
