#pragma once

#include <optional>
#include <utility>
#include <variant>

namespace quorvex {

/// The value of an operation, or the error that stands in its place. Asking for the one that is not
/// there is a programming error and throws `std::bad_variant_access`.
template <typename Value, typename Error>
class [[nodiscard]] Result {
 public:
  // Both conversions are wanted, so that an operation returns either by its plain name.
  Result(Value value)  // NOLINT(google-explicit-constructor)
      : content_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error)  // NOLINT(google-explicit-constructor)
      : content_(std::in_place_index<1>, std::move(error)) {}

  explicit operator bool() const { return content_.index() == 0; }
  [[nodiscard]] bool hasValue() const { return content_.index() == 0; }

  [[nodiscard]] Value& operator*() & { return std::get<0>(content_); }
  [[nodiscard]] const Value& operator*() const& { return std::get<0>(content_); }
  /// By value, so that a loop over the value of a temporary does not outlive it.
  [[nodiscard]] Value operator*() && { return std::get<0>(std::move(content_)); }
  [[nodiscard]] Value* operator->() { return &std::get<0>(content_); }
  [[nodiscard]] const Value* operator->() const { return &std::get<0>(content_); }

  [[nodiscard]] const Error& error() const { return std::get<1>(content_); }

 private:
  std::variant<Value, Error> content_;
};

/// Success without a value, or an error.
template <typename Error>
class [[nodiscard]] Result<void, Error> {
 public:
  Result() = default;
  Result(Error error)  // NOLINT(google-explicit-constructor)
      : error_(std::move(error)) {}

  explicit operator bool() const { return !error_; }
  [[nodiscard]] bool hasValue() const { return !error_; }

  [[nodiscard]] const Error& error() const { return error_.value(); }

 private:
  std::optional<Error> error_;
};

}  // namespace quorvex
