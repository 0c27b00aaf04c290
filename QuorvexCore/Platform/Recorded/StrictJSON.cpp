#include "StrictJSON.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace quorvex {

namespace {

namespace ondemand = simdjson::ondemand;

constexpr int greatestDepth = 100;
constexpr std::string_view notJSON = "not valid JSON";

[[noreturn]] void failAt(const std::string& path, std::string_view problem) {
  throw StrictJSONError{fmt::format("{}: {}", path, problem)};
}

bool isIdentifier(std::string_view key) {
  const auto isWordCharacter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  return !key.empty() && !(key.front() >= '0' && key.front() <= '9') &&
         std::all_of(key.begin(), key.end(), isWordCharacter);
}

std::string pathStep(std::string_view key) {
  if (isIdentifier(key)) {
    return fmt::format(".{}", key);
  }
  std::string quoted;
  for (const char c : key) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      quoted += '\\';
      quoted += c;
    } else if (code < 0x20) {
      quoted += fmt::format("\\u{:04x}", code);
    } else {
      quoted += c;
    }
  }
  return fmt::format("[\"{}\"]", quoted);
}

/// The keys of one object so far. Most objects have few keys, so that a list beats a tree there.
class KeySet {
 public:
  /// False when the key is there already.
  bool insert(std::string_view key) {
    if (few_.size() < 16) {
      if (std::find(few_.begin(), few_.end(), key) != few_.end()) {
        return false;
      }
      few_.push_back(key);
      return true;
    }
    return std::find(few_.begin(), few_.end(), key) == few_.end() && many_.insert(key).second;
  }

 private:
  std::vector<std::string_view> few_;
  std::set<std::string_view> many_;
};

}  // namespace

std::string StrictJSON::Place::path() const {
  if (parent == nullptr) {
    return "$";
  }
  return parent->path() + (index ? fmt::format("[{}]", *index) : pathStep(key));
}

void StrictJSON::readDocument(std::string_view text, const Visitor& onField) {
  const Place root;
  ondemand::parser parser;
  const simdjson::padded_string padded{text};
  ondemand::document document;
  if (parser.iterate(padded).get(document) != simdjson::SUCCESS) {
    failAt(root.path(), notJSON);
  }
  ondemand::object object;
  if (const auto error = document.get_object().get(object); error != simdjson::SUCCESS) {
    failAt(root.path(), error == simdjson::INCORRECT_TYPE ? "must be an object" : notJSON);
  }
  visitFields(object, root, onField);
  if (const char* rest = nullptr; document.current_location().get(rest) == simdjson::SUCCESS) {
    failAt(root.path(), "not valid JSON: text after the end of the object");
  }
}

StrictJSON::Type StrictJSON::type() {
  ondemand::json_type type{};
  require(value_.type().get(type), notJSON);
  switch (type) {
    case ondemand::json_type::array:
      return Type::array;
    case ondemand::json_type::object:
      return Type::object;
    case ondemand::json_type::number:
      return Type::number;
    case ondemand::json_type::string:
      return Type::string;
    case ondemand::json_type::boolean:
      return Type::boolean;
    case ondemand::json_type::null:
      break;
  }
  return Type::null;
}

bool StrictJSON::isNull() {
  if (type() != Type::null) {
    return false;
  }
  if (bool isNull = false; value_.is_null().get(isNull) != simdjson::SUCCESS || !isNull) {
    fail(notJSON);
  }
  return true;
}

bool StrictJSON::boolean() {
  if (type() != Type::boolean) {
    fail("must be true or false");
  }
  bool flag = false;
  require(value_.get_bool().get(flag), notJSON);
  return flag;
}

std::string StrictJSON::string() {
  if (type() != Type::string) {
    fail("must be a string");
  }
  std::string_view text;
  require(value_.get_string().get(text), notJSON);
  return std::string{text};
}

double StrictJSON::number() {
  if (type() != Type::number) {
    fail("must be a number");
  }
  double number = 0;
  require(value_.get_double().get(number), "not a valid number");
  if (!std::isfinite(number)) {
    fail("not a valid number");
  }
  return number;
}

std::optional<std::int64_t> StrictJSON::integerIfWritten() {
  std::int64_t integer = 0;
  if (type() != Type::number || value_.get_int64().get(integer) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  return integer;
}

std::int64_t StrictJSON::integer(std::int64_t least, std::int64_t greatest) {
  const auto integer = integerIfWritten();
  if (!integer || *integer < least || *integer > greatest) {
    fail(fmt::format("must be an integer from {} to {}", least, greatest));
  }
  return *integer;
}

std::uint64_t StrictJSON::wholeNumber() {
  constexpr std::string_view problem = "must be a whole number from 0 to 18446744073709551615";
  if (type() != Type::number) {
    fail(problem);
  }
  std::uint64_t whole = 0;
  if (value_.get_uint64().get(whole) == simdjson::SUCCESS) {
    return whole;
  }
  double written = 0;
  require(value_.get_double().get(written), problem);
  constexpr double limit = 18446744073709551616.0;
  if (!(written >= 0 && written < limit && std::trunc(written) == written)) {
    fail(problem);
  }
  return static_cast<std::uint64_t>(written);
}

void StrictJSON::forEachField(const Visitor& onField) {
  if (type() != Type::object) {
    fail("must be an object");
  }
  ondemand::object object;
  require(value_.get_object().get(object), notJSON);
  visitFields(object, place_, onField);
}

void StrictJSON::visitFields(ondemand::object& object, const Place& place, const Visitor& onField) {
  if (place.depth >= greatestDepth) {
    failAt(place.path(), "nested too deeply");
  }
  KeySet keys;
  for (auto result : object) {
    ondemand::field field;
    std::string_view key;
    if (std::move(result).get(field) != simdjson::SUCCESS ||
        field.unescaped_key().get(key) != simdjson::SUCCESS) {
      failAt(place.path(), notJSON);
    }
    StrictJSON child{field.value(), Place{&place, key, std::nullopt, place.depth + 1}};
    if (!keys.insert(key)) {
      child.fail("duplicate key");
    }
    onField(key, child);
  }
}

void StrictJSON::forEachElement(
    const std::function<void(std::size_t index, StrictJSON& child)>& onElement) {
  if (type() != Type::array) {
    fail("must be an array");
  }
  if (place_.depth >= greatestDepth) {
    fail("nested too deeply");
  }
  ondemand::array array;
  require(value_.get_array().get(array), notJSON);
  std::size_t index = 0;
  for (auto result : array) {
    ondemand::value element;
    require(result.get(element), notJSON);
    StrictJSON child{element, Place{&place_, {}, index, place_.depth + 1}};
    onElement(index, child);
    ++index;
  }
}

void StrictJSON::fail(std::string_view problem) const {
  failAt(place_.path(), problem);
}

void StrictJSON::failMissing(std::string_view key) const {
  failAt(Place{&place_, key, std::nullopt, 0}.path(), "missing");
}

void StrictJSON::require(simdjson::error_code error, std::string_view problem) const {
  if (error != simdjson::SUCCESS) {
    fail(problem);
  }
}

}  // namespace quorvex
