#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Date.h"
#include "Result.h"

namespace quorvex {

/// One value of a property list. Values of types that nobody asks for (data, numbers that are no
/// number) are kept as nothing.
class PropertyListValue {
 public:
  using Array = std::vector<PropertyListValue>;
  /// Keys and values side by side, as many of the one as of the other.
  struct Dictionary {
    std::vector<std::string> keys;
    Array values;
  };

  PropertyListValue() = default;
  explicit PropertyListValue(bool flag) : storage_(flag) {}
  explicit PropertyListValue(std::int64_t integer) : storage_(integer) {}
  explicit PropertyListValue(double number) : storage_(number) {}
  explicit PropertyListValue(std::string text) : storage_(std::move(text)) {}
  explicit PropertyListValue(Date date) : storage_(date) {}
  explicit PropertyListValue(Array items) : storage_(std::move(items)) {}
  explicit PropertyListValue(Dictionary dictionary) : storage_(std::move(dictionary)) {}

  /// The value at `key`, the first one if there are several; null when this is no dictionary or has
  /// no such key.
  [[nodiscard]] const PropertyListValue* find(std::string_view key) const;
  /// The items of an array; nothing for any other type.
  [[nodiscard]] std::span<const PropertyListValue> items() const;

  // Each is none or null for a value of any other type.
  [[nodiscard]] std::optional<std::int64_t> integer() const;
  /// An integer or a real; always finite.
  [[nodiscard]] std::optional<double> number() const;
  [[nodiscard]] const std::string* string() const { return std::get_if<std::string>(&storage_); }
  [[nodiscard]] std::optional<Date> date() const;

 private:
  std::variant<std::monostate, bool, std::int64_t, double, std::string, Date, Array, Dictionary>
      storage_;
};

/// Why a text is no property list: one line, with the line of the text.
struct PropertyListError {
  std::string description;
  bool operator==(const PropertyListError&) const = default;
};

/// Arrays and dictionaries within one another; powermetrics needs 7.
inline constexpr int deepestPropertyList = 32;
/// Values of a list in all; a sample of a thousand processes has about 60,000.
inline constexpr std::size_t mostPropertyListValues = 500'000;

/// Reads the XML form of one property list. Nothing outside the text is ever opened: a document
/// type may be named, but a text that declares or uses entities of its own is refused.
[[nodiscard]] Result<PropertyListValue, PropertyListError> parsePropertyList(std::string_view xml);

}  // namespace quorvex
