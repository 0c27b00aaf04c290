#pragma once

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

/// What is wrong with a JSON document: "{JSON path}: {problem}". Thrown while a document is read
/// and caught by the reader of the whole document; it never leaves that reader.
struct StrictJSONError {
  std::string message;
};

/// One value of a JSON document together with its place, read front to back in a single pass.
///
/// Nothing passes silently: a value of another type, a number out of range, a repeated key and text
/// that is not JSON throw StrictJSONError with the path of the place ("$.frames[2].at"). Each value
/// is read exactly once, by one of the functions below, before its neighbour is touched; a child
/// lives only during the call that hands it out.
class StrictJSON {
 public:
  enum class Type { null, boolean, number, string, array, object };
  using Visitor = std::function<void(std::string_view key, StrictJSON& child)>;

  /// Reads a document whose top level is an object. Text after it is an error.
  static void readDocument(std::string_view text, const Visitor& onField);

  [[nodiscard]] Type type();
  /// Whether the value is null; a null is read thereby.
  [[nodiscard]] bool isNull();
  [[nodiscard]] bool boolean();
  [[nodiscard]] std::string string();
  /// A finite number; one too large for a float is an error.
  [[nodiscard]] double number();
  /// A number that is written without fraction and exponent and lies within the bounds.
  [[nodiscard]] std::int64_t integer(std::int64_t least, std::int64_t greatest);
  /// A number that is written without fraction and exponent and fits 64 bits with a sign; none,
  /// with the value still unread, for every other number.
  [[nodiscard]] std::optional<std::int64_t> integerIfWritten();
  /// A whole number from 0 to 2^64-1.
  [[nodiscard]] std::uint64_t wholeNumber();

  /// Visits the fields in their order; the visitor reads every child.
  void forEachField(const Visitor& onField);
  /// Visits the elements in their order; the visitor reads every one.
  void forEachElement(const std::function<void(std::size_t index, StrictJSON& child)>& onElement);

  [[noreturn]] void fail(std::string_view problem) const;
  /// `fail` at the place of a key of this object that is not there.
  [[noreturn]] void failMissing(std::string_view key) const;

 private:
  struct Place {
    const Place* parent = nullptr;
    std::string_view key;
    std::optional<std::size_t> index;
    int depth = 0;

    [[nodiscard]] std::string path() const;
  };

  StrictJSON(simdjson::ondemand::value value, const Place& place) : value_(value), place_(place) {}

  static void visitFields(simdjson::ondemand::object& object, const Place& place,
                          const Visitor& onField);
  void require(simdjson::error_code error, std::string_view problem) const;

  simdjson::ondemand::value value_;
  Place place_;
};

}  // namespace quorvex
