#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace quorvex {

/// A stored setting as it was published.
using UserDefaultsValue = std::variant<bool, std::int64_t, double, std::string>;

/// The user's settings, by key. What is written is there for the next process too, where the
/// machine has a place for it. Any thread.
class UserDefaults {
 public:
  UserDefaults() = default;
  UserDefaults(const UserDefaults&) = delete;
  UserDefaults& operator=(const UserDefaults&) = delete;
  virtual ~UserDefaults() = default;

  /// None when the key is not set, or holds a value of some other type. A whole float may come back
  /// as an integer.
  [[nodiscard]] virtual std::optional<UserDefaultsValue> value(const std::string& key) = 0;
  /// A failure to store is not told: the setting then lasts as long as the process at most.
  virtual void setValue(const std::string& key, const UserDefaultsValue& value) = 0;
  virtual void removeValue(const std::string& key) = 0;

  /// A Boolean; a number counts as whether it is not 0. `fallback` for everything else.
  [[nodiscard]] bool boolean(const std::string& key, bool fallback) {
    const auto stored = value(key);
    if (const auto* flag = stored ? std::get_if<bool>(&*stored) : nullptr) {
      return *flag;
    }
    const auto number = stored ? numberOf(*stored) : std::nullopt;
    return number ? *number != 0 : fallback;
  }
  /// A number of either kind; none for everything else, a Boolean and a text with digits included.
  [[nodiscard]] std::optional<double> number(const std::string& key) {
    const auto stored = value(key);
    return stored ? numberOf(*stored) : std::nullopt;
  }
  [[nodiscard]] std::optional<std::string> text(const std::string& key) {
    const auto stored = value(key);
    const auto* text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    return text != nullptr ? std::optional{*text} : std::nullopt;
  }

 private:
  static std::optional<double> numberOf(const UserDefaultsValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      return static_cast<double>(*integer);
    }
    const auto* number = std::get_if<double>(&value);
    return number != nullptr ? std::optional{*number} : std::nullopt;
  }
};

}  // namespace quorvex
