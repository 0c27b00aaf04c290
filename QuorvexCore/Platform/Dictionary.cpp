#include "Dictionary.h"

#include <cmath>
#include <utility>

namespace quorvex {

DictionaryValue::DictionaryValue(Dictionary nested)
    : storage_(std::make_shared<const Dictionary>(std::move(nested))) {}

std::optional<std::int64_t> DictionaryValue::integer() const {
  if (const auto* whole = ifInteger()) {
    return *whole;
  }
  if (const auto* number = ifFloat()) {
    constexpr double limit = 9223372036854775808.0;
    if (*number >= -limit && *number < limit && std::trunc(*number) == *number) {
      return static_cast<std::int64_t>(*number);
    }
  }
  return std::nullopt;
}

std::optional<bool> DictionaryValue::boolean() const {
  const auto* flag = std::get_if<bool>(&storage_);
  return flag != nullptr ? std::optional{*flag} : std::nullopt;
}

std::optional<std::string> DictionaryValue::string() const {
  const auto* text = std::get_if<std::string>(&storage_);
  return text != nullptr ? std::optional{*text} : std::nullopt;
}

const Dictionary* DictionaryValue::dictionary() const {
  const auto* nested = std::get_if<std::shared_ptr<const Dictionary>>(&storage_);
  return nested != nullptr ? nested->get() : nullptr;
}

bool DictionaryValue::operator==(const DictionaryValue& other) const {
  const Dictionary* mine = dictionary();
  const Dictionary* theirs = other.dictionary();
  if (mine != nullptr && theirs != nullptr) {
    return *mine == *theirs;
  }
  return storage_ == other.storage_;
}

const DictionaryValue* find(const Dictionary& dictionary, std::string_view key) {
  const auto found = dictionary.find(key);
  return found != dictionary.end() ? &found->second : nullptr;
}

}  // namespace quorvex
