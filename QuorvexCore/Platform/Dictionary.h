#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvex {

class DictionaryValue;

/// A string-keyed dictionary as the platform publishes it: raw values of mixed types.
using Dictionary = std::map<std::string, DictionaryValue, std::less<>>;

/// One raw value: an integer, float, Boolean, string, nested dictionary, or a value of some other
/// type, of which only its presence is kept. A value type; copies share nested dictionaries.
class DictionaryValue {
 public:
  /// Stands for a value of a type that the program has no use for (an array, data, a date).
  struct Other {
    bool operator==(const Other&) const = default;
  };

  // A raw value is written where a dictionary is: {"Voltage", 12000}.
  // NOLINTBEGIN(google-explicit-constructor)
  DictionaryValue() : storage_(Other{}) {}
  DictionaryValue(std::int64_t integer) : storage_(integer) {}
  DictionaryValue(int integer) : storage_(std::int64_t{integer}) {}
  DictionaryValue(double number) : storage_(number) {}
  DictionaryValue(bool flag) : storage_(flag) {}
  DictionaryValue(std::string text) : storage_(std::move(text)) {}
  DictionaryValue(const char* text) : storage_(std::string{text}) {}
  DictionaryValue(Dictionary nested);
  // NOLINTEND(google-explicit-constructor)

  /// The value as a signed 64-bit integer: an integer, or a float that is exactly one. None for
  /// every other type; a Boolean is not a number.
  [[nodiscard]] std::optional<std::int64_t> integer() const;
  /// The value when it was published as an integer.
  [[nodiscard]] const std::int64_t* ifInteger() const {
    return std::get_if<std::int64_t>(&storage_);
  }
  /// The value when it was published as a float.
  [[nodiscard]] const double* ifFloat() const { return std::get_if<double>(&storage_); }
  [[nodiscard]] std::optional<bool> boolean() const;
  [[nodiscard]] std::optional<std::string> string() const;
  /// The nested dictionary; null for every other type. Valid as long as this value lives.
  [[nodiscard]] const Dictionary* dictionary() const;

  bool operator==(const DictionaryValue& other) const;

 private:
  std::variant<Other, std::int64_t, double, bool, std::string, std::shared_ptr<const Dictionary>>
      storage_;
};

/// The value at `key`; null when the key is missing.
[[nodiscard]] const DictionaryValue* find(const Dictionary& dictionary, std::string_view key);

}  // namespace quorvex
