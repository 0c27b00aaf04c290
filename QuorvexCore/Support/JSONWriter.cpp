#include "JSONWriter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "FatalError.h"

namespace quorvex {

namespace {

/// Whether a byte stands for itself within a string.
constexpr std::array<bool, 256> isPlain = [] {
  std::array<bool, 256> plain{};
  for (std::size_t code = 0x20; code < plain.size(); ++code) {
    plain[code] = code != '"' && code != '\\' && code != '/';
  }
  return plain;
}();

}  // namespace

void JSONWriter::beginObject() {
  begin(true, '{');
}

void JSONWriter::endObject() {
  end('}');
}

void JSONWriter::beginArray() {
  begin(false, '[');
}

void JSONWriter::endArray() {
  end(']');
}

void JSONWriter::key(std::string_view name) {
  if (levels_.empty() || !levels_.back().isObject || keyPending_) {
    fatalError("JSON key outside an object");
  }
  Level& level = levels_.back();
  if (!level.isEmpty) {
    if (level.lastKey >= name) {
      fatalError("JSON keys out of order");
    }
    text_.push_back(',');
  }
  level.isEmpty = false;
  level.lastKey.assign(name);
  newline();
  writeString(name);
  text_.append(style_ == Style::pretty ? " : " : ":");
  keyPending_ = true;
}

void JSONWriter::value(std::string_view text) {
  beforeValue();
  writeString(text);
}

void JSONWriter::value(bool flag) {
  beforeValue();
  text_.append(flag ? "true" : "false");
}

void JSONWriter::value(double number) {
  beforeValue();
  if (!std::isfinite(number)) {
    hasNonFiniteNumber_ = true;
    return;
  }
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  text_.append(buffer.data(), end);
}

void JSONWriter::decimal(double number, int decimals) {
  beforeValue();
  if (!std::isfinite(number)) {
    hasNonFiniteNumber_ = true;
    return;
  }
  // The largest finite number has 309 digits before its point.
  std::array<char, 336> buffer{};
  char* const begin = buffer.data();
  char* end =
      std::to_chars(begin, begin + buffer.size(), number, std::chars_format::fixed, decimals).ptr;
  while (end[-1] == '0') {
    --end;
  }
  if (end[-1] == '.') {
    --end;
  }
  const std::string_view digits{begin, static_cast<std::size_t>(end - begin)};
  text_.append(digits == "-0" ? std::string_view{"0"} : digits);
}

void JSONWriter::begin(bool isObject, char opening) {
  beforeValue();
  text_.push_back(opening);
  levels_.push_back(Level{.isObject = isObject, .isEmpty = true, .lastKey = {}});
}

void JSONWriter::end(char closing) {
  if (levels_.empty() || keyPending_ || levels_.back().isObject != (closing == '}')) {
    fatalError("JSON structure closed out of order");
  }
  const bool isEmpty = levels_.back().isEmpty;
  levels_.pop_back();
  if (!isEmpty) {
    newline();
  }
  text_.push_back(closing);
}

void JSONWriter::beforeValue() {
  if (keyPending_) {
    keyPending_ = false;
    return;
  }
  if (levels_.empty()) {
    if (!text_.empty()) {
      fatalError("more than one JSON value in a document");
    }
    return;
  }
  Level& level = levels_.back();
  if (level.isObject) {
    fatalError("JSON value without a key");
  }
  if (!level.isEmpty) {
    text_.push_back(',');
  }
  level.isEmpty = false;
  newline();
}

void JSONWriter::newline() {
  if (style_ == Style::pretty) {
    text_.push_back('\n');
    text_.append(levels_.size() * 2, ' ');
  }
}

void JSONWriter::writeSigned(std::int64_t number) {
  beforeValue();
  std::array<char, 24> buffer{};
  text_.append(buffer.data(),
               std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr);
}

void JSONWriter::writeUnsigned(std::uint64_t number) {
  beforeValue();
  std::array<char, 24> buffer{};
  text_.append(buffer.data(),
               std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr);
}

void JSONWriter::writeString(std::string_view text) {
  text_.push_back('"');
  std::size_t plainFrom = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const auto code = static_cast<unsigned char>(c);
    if (isPlain[code]) {
      continue;
    }
    text_.append(text, plainFrom, i - plainFrom);
    plainFrom = i + 1;
    text_.push_back('\\');
    switch (c) {
      case '\b':
        text_.push_back('b');
        break;
      case '\t':
        text_.push_back('t');
        break;
      case '\n':
        text_.push_back('n');
        break;
      case '\f':
        text_.push_back('f');
        break;
      case '\r':
        text_.push_back('r');
        break;
      case '"':
      case '\\':
      case '/':
        text_.push_back(c);
        break;
      default: {
        constexpr std::string_view digits = "0123456789abcdef";
        text_.append("u00");
        text_.push_back(digits[code >> 4U]);
        text_.push_back(digits[code & 0xFU]);
      }
    }
  }
  text_.append(text, plainFrom, text.size() - plainFrom);
  text_.push_back('"');
}

}  // namespace quorvex
