#pragma once

#include <rapidcheck.h>

#include <chrono>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>

#include "Date.h"
#include "RecordFields.h"
#include "Text.h"
#include "UUID.h"

/// Any record that has a field table, for properties of coding. Only within a property.
namespace quorvex::samples {

/// Text as records carry it: well-formed UTF-8, with all that needs an escape.
inline rc::Gen<std::string> anyText() {
  return rc::gen::map(
      rc::gen::container<std::string>(rc::gen::oneOf(
          rc::gen::arbitrary<char>(), rc::gen::elementOf(std::string{"/\"\\\n\t\x01 aZ"}))),
      [](const std::string& bytes) { return text::repairedUTF8(bytes); });
}

inline rc::Gen<double> anyNumber() {
  return rc::gen::suchThat(rc::gen::oneOf(rc::gen::arbitrary<double>(),
                                          rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                                                       [](std::uint64_t bits) {
                                                         double number = 0.0;
                                                         std::memcpy(&number, &bits, sizeof number);
                                                         return number;
                                                       }),
                                          rc::gen::element(0.0, 5.0, -0.5, 1e300, -1e-300, 0.1)),
                           [](double number) { return std::isfinite(number); });
}

/// Whole seconds of the years that the text form can tell.
inline rc::Gen<Date> anyDate() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(-9'000'000'000, 9'000'000'000),
                      [](std::int64_t seconds) { return Date{std::chrono::seconds{seconds}}; });
}

template <typename Value>
Value any();

template <typename Record>
Record anyRecord() {
  Record record;
  std::apply(
      [&](const auto&... field) {
        ((record.*field.member = any<std::remove_cvref_t<decltype(record.*field.member)>>()), ...);
      },
      RecordFields<Record>::values);
  return record;
}

template <typename Value>
Value any() {
  if constexpr (CodedRecord<Value>) {
    return anyRecord<Value>();
  } else if constexpr (isOptionalValue<Value>) {
    return *rc::gen::arbitrary<bool>() ? Value{any<typename Value::value_type>()} : Value{};
  } else if constexpr (std::same_as<Value, std::string>) {
    return *anyText();
  } else if constexpr (std::same_as<Value, double>) {
    return *anyNumber();
  } else if constexpr (std::same_as<Value, Date>) {
    return *anyDate();
  } else if constexpr (std::same_as<Value, UUID>) {
    UUID::Bytes bytes{};
    for (auto& byte : bytes) {
      byte = *rc::gen::arbitrary<std::uint8_t>();
    }
    return UUID{bytes};
  } else if constexpr (requires { typename Value::allocator_type; }) {
    Value values(*rc::gen::inRange<std::size_t>(0, 4));
    for (auto& value : values) {
      value = any<typename Value::value_type>();
    }
    return values;
  } else {
    return *rc::gen::arbitrary<Value>();
  }
}

}  // namespace quorvex::samples
