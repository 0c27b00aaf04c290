#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvex {

/// Writes one JSON document straight into a string, with no tree in between.
///
/// Keys must come in ascending byte order within each object: the caller writes its fields in that
/// order, and a key that is out of order or repeated is a fatal error, so that a wrong field table
/// cannot go unnoticed. "/" is escaped as "\/", floats take their shortest round-trip form (5, not
/// 5.0). A non-finite number has no JSON form: `isValid()`
/// is false from then on and the text must not be used.
///
/// One writer, one document, one thread.
class JSONWriter {
 public:
  enum class Style {
    compact,  ///< no white space at all
    pretty,   ///< two blanks a level, `"key" : value`
  };

  explicit JSONWriter(Style style) : style_(style) {}

  void beginObject();
  void endObject();
  void beginArray();
  void endArray();
  void key(std::string_view name);

  void value(std::string_view text);
  void value(const char* text) { value(std::string_view{text}); }
  void value(bool flag);
  void value(double number);
  template <std::signed_integral Integer>
  void value(Integer number) {
    writeSigned(static_cast<std::int64_t>(number));
  }
  template <std::unsigned_integral Integer>
  requires(!std::same_as<Integer, bool>) void value(Integer number) {
    writeUnsigned(static_cast<std::uint64_t>(number));
  }

  /// A number with at most `decimals` places (1 to 9): the text of "%.{decimals}f" without trailing
  /// zeros, so that 12.30 is written 12.3, 5.00 as 5 and -0.00 as 0.
  void decimal(double number, int decimals);

  /// `key(name)` and `value(value)`.
  template <typename Value>
  void field(std::string_view name, const Value& fieldValue) {
    key(name);
    value(fieldValue);
  }

  void decimalField(std::string_view name, double number, int decimals) {
    key(name);
    decimal(number, decimals);
  }

  /// Whether every number so far was finite. A document with another number is not JSON.
  [[nodiscard]] bool isValid() const { return !hasNonFiniteNumber_; }

  /// The document's text. Valid only once every object and array is closed.
  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::string takeText() { return std::move(text_); }

 private:
  struct Level {
    bool isObject = false;
    bool isEmpty = true;
    std::string lastKey;
  };

  void begin(bool isObject, char opening);
  void end(char closing);
  void beforeValue();
  void newline();
  void writeSigned(std::int64_t number);
  void writeUnsigned(std::uint64_t number);
  void writeString(std::string_view text);

  Style style_;
  std::string text_;
  std::vector<Level> levels_;
  bool keyPending_ = false;
  bool hasNonFiniteNumber_ = false;
};

}  // namespace quorvex
