#include "PropertyList.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

namespace quorvex {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

std::string_view trimmedASCII(std::string_view text) {
  const std::size_t first = text.find_first_not_of(whiteSpace);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(whiteSpace) + 1 - first);
}

PropertyListValue integerValue(std::string_view text) {
  const std::string_view digits = trimmedASCII(text);
  const char* const end = digits.data() + digits.size();
  std::int64_t narrow = 0;
  if (const auto read = std::from_chars(digits.data(), end, narrow);
      read.ec == std::errc{} && read.ptr == end) {
    return PropertyListValue{narrow};
  }
  // Counters are unsigned and may be larger than any signed number.
  std::uint64_t wide = 0;
  if (const auto read = std::from_chars(digits.data(), end, wide);
      read.ec == std::errc{} && read.ptr == end) {
    return PropertyListValue{static_cast<double>(wide)};
  }
  return {};
}

PropertyListValue realValue(std::string_view text) {
  const std::string digits{trimmedASCII(text)};
  char* end = nullptr;
  const double number = std::strtod(digits.c_str(), &end);
  const bool isWhole = !digits.empty() && end == digits.c_str() + digits.size();
  return isWhole && std::isfinite(number) ? PropertyListValue{number} : PropertyListValue{};
}

PropertyListValue dateValue(std::string_view text) {
  const auto date = parseISO8601(trimmedASCII(text));
  return date ? PropertyListValue{*date} : PropertyListValue{};
}

/// Builds the value while expat walks through the text. The first problem stops the walk.
class Builder {
 public:
  explicit Builder(XML_Parser parser) : parser_(parser) {}

  void begin(std::string_view element) {
    if (isDone_ || (!isOpen_ && element != "plist")) {
      return fail("not a property list");
    }
    if (!isOpen_) {
      isOpen_ = true;
      return;
    }
    if (!leaf_.empty()) {
      return fail("an element inside a plain value");
    }
    if (levels_.empty() && hasRoot_) {
      return fail("more than one value");
    }
    if (element == "dict" || element == "array") {
      if (levels_.size() == static_cast<std::size_t>(deepestPropertyList)) {
        return fail("nested too deeply");
      }
      if (mayHoldValue()) {
        levels_.push_back({.isDictionary = element == "dict"});
      }
      return;
    }
    constexpr std::array<std::string_view, 8> leaves{"key",  "string", "integer", "real",
                                                     "true", "false",  "date",    "data"};
    if (std::ranges::find(leaves, element) == leaves.end()) {
      return fail("an unknown element");
    }
    if (element == "key" ? mayHoldKey() : mayHoldValue()) {
      leaf_ = element;
      text_.clear();
    }
  }

  void characters(std::string_view text) {
    if (!leaf_.empty()) {
      text_.append(text);
    } else if (!trimmedASCII(text).empty()) {
      fail("text outside a value");
    }
  }

  void end() {
    if (!leaf_.empty()) {
      endLeaf();
    } else if (!levels_.empty()) {
      Level level = std::move(levels_.back());
      levels_.pop_back();
      if (level.awaitsValue()) {
        return fail("a key without a value");
      }
      add(level.isDictionary ? PropertyListValue{std::move(level.content)}
                             : PropertyListValue{std::move(level.content.values)});
    } else {
      isDone_ = true;
    }
  }

  void fail(std::string_view words) {
    if (problem_.empty()) {
      problem_ = words;
      XML_StopParser(parser_, XML_FALSE);
    }
  }

  [[nodiscard]] const std::string& problem() const { return problem_; }
  [[nodiscard]] bool hasRoot() const { return hasRoot_; }
  [[nodiscard]] PropertyListValue takeRoot() { return std::move(root_); }

 private:
  /// An open dictionary, or an open array, which has values alone.
  struct Level {
    bool isDictionary = false;
    PropertyListValue::Dictionary content{};

    [[nodiscard]] bool awaitsValue() const {
      return isDictionary && content.keys.size() > content.values.size();
    }
  };

  bool mayHoldKey() {
    if (levels_.empty() || !levels_.back().isDictionary || levels_.back().awaitsValue()) {
      fail("a key out of place");
      return false;
    }
    return true;
  }

  bool mayHoldValue() {
    if (!levels_.empty() && levels_.back().isDictionary && !levels_.back().awaitsValue()) {
      fail("a value without a key");
      return false;
    }
    return true;
  }

  void endLeaf() {
    const std::string leaf = std::exchange(leaf_, {});
    if (leaf == "key") {
      levels_.back().content.keys.push_back(std::exchange(text_, {}));
    } else if (leaf == "string") {
      add(PropertyListValue{std::exchange(text_, {})});
    } else if (leaf == "integer") {
      add(integerValue(text_));
    } else if (leaf == "real") {
      add(realValue(text_));
    } else if (leaf == "date") {
      add(dateValue(text_));
    } else if (leaf == "data") {
      add({});
    } else {
      add(PropertyListValue{leaf == "true"});
    }
  }

  void add(PropertyListValue value) {
    if (++valueCount_ > mostPropertyListValues) {
      return fail("too many values");
    }
    if (levels_.empty()) {
      root_ = std::move(value);
      hasRoot_ = true;
      return;
    }
    levels_.back().content.values.push_back(std::move(value));
  }

  XML_Parser parser_;
  std::vector<Level> levels_;
  std::string leaf_;  ///< the open plain element; empty for none
  std::string text_;
  std::size_t valueCount_ = 0;
  PropertyListValue root_;
  bool isOpen_ = false;
  bool hasRoot_ = false;
  bool isDone_ = false;
  std::string problem_;
};

Builder& builder(void* userData) {
  return *static_cast<Builder*>(userData);
}

struct ParserDeleter {
  void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
};

}  // namespace

const PropertyListValue* PropertyListValue::find(std::string_view key) const {
  const auto* dictionary = std::get_if<Dictionary>(&storage_);
  if (dictionary == nullptr) {
    return nullptr;
  }
  const auto found = std::ranges::find(dictionary->keys, key);
  return found != dictionary->keys.end()
             ? &dictionary->values[static_cast<std::size_t>(found - dictionary->keys.begin())]
             : nullptr;
}

std::span<const PropertyListValue> PropertyListValue::items() const {
  const auto* array = std::get_if<Array>(&storage_);
  return array != nullptr ? std::span<const PropertyListValue>{*array}
                          : std::span<const PropertyListValue>{};
}

std::optional<std::int64_t> PropertyListValue::integer() const {
  const auto* integer = std::get_if<std::int64_t>(&storage_);
  return integer != nullptr ? std::optional{*integer} : std::nullopt;
}

std::optional<double> PropertyListValue::number() const {
  if (const auto whole = integer()) {
    return static_cast<double>(*whole);
  }
  const auto* number = std::get_if<double>(&storage_);
  return number != nullptr ? std::optional{*number} : std::nullopt;
}

std::optional<Date> PropertyListValue::date() const {
  const auto* date = std::get_if<Date>(&storage_);
  return date != nullptr ? std::optional{*date} : std::nullopt;
}

Result<PropertyListValue, PropertyListError> parsePropertyList(std::string_view xml) {
  if (xml.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    return PropertyListError{"too long"};
  }
  const std::unique_ptr<XML_ParserStruct, ParserDeleter> parser{XML_ParserCreate("UTF-8")};
  if (!parser) {
    return PropertyListError{"out of memory"};
  }
  Builder build{parser.get()};
  XML_SetUserData(parser.get(), &build);
  // No handler for external entities is set, and without one none is ever opened.
  XML_SetElementHandler(
      parser.get(),
      [](void* data, const XML_Char* name, const XML_Char**) noexcept {
        builder(data).begin(name);
      },
      [](void* data, const XML_Char*) noexcept { builder(data).end(); });
  XML_SetCharacterDataHandler(parser.get(),
                              [](void* data, const XML_Char* text, int length) noexcept {
                                builder(data).characters({text, static_cast<std::size_t>(length)});
                              });
  XML_SetEntityDeclHandler(
      parser.get(), [](void* data, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                       const XML_Char*, const XML_Char*,
                       const XML_Char*) noexcept { builder(data).fail("an entity declaration"); });
  XML_SetSkippedEntityHandler(parser.get(), [](void* data, const XML_Char*, int) noexcept {
    builder(data).fail("an unknown entity");
  });

  const XML_Status status =
      XML_Parse(parser.get(), xml.data(), static_cast<int>(xml.size()), XML_TRUE);
  if (status == XML_STATUS_OK && build.problem().empty() && build.hasRoot()) {
    return build.takeRoot();
  }
  std::string words = build.problem();
  if (words.empty()) {
    words = status == XML_STATUS_OK ? "no value" : XML_ErrorString(XML_GetErrorCode(parser.get()));
  }
  return PropertyListError{"line " + std::to_string(XML_GetCurrentLineNumber(parser.get())) + ": " +
                           words};
}

}  // namespace quorvex
