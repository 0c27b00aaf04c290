#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace quorvex {

/// What a reader does when a key is missing or null and the field's type is not `std::optional`.
enum class MissingKey {
  isAnError,     ///< the whole record does not decode
  keepsDefault,  ///< the field keeps the value that a new record has
};

/// One coded field of a record: the JSON key and the member that it stands for.
template <typename Record, typename Value>
struct RecordField {
  std::string_view key;
  Value Record::*member;
  MissingKey missing = MissingKey::isAnError;
};

template <typename Record, typename Value>
RecordField(const char*, Value Record::*) -> RecordField<Record, Value>;
template <typename Record, typename Value>
RecordField(const char*, Value Record::*, MissingKey) -> RecordField<Record, Value>;

/// A field that a partial reader demands and checks as strictly as any other, but does not keep.
/// Records with such a field can be read only.
template <typename Value>
struct CheckedField {
  std::string_view key;
};

/// The coded fields of a record, in ascending byte order of their keys: the one table from which it
/// is both written and read. A record specialises it as
/// `template <> struct RecordFields<R> { static constexpr std::tuple values{
///    RecordField{"key", &R::key}, …}; };`.
/// A field of type `std::optional` is left out when absent, and may be missing or null in what is
/// read; every other field must be there unless it says `MissingKey::keepsDefault`. A second record
/// with fewer members, or with checked fields, over the same keys is a partial reader.
/// A table may also have `static void complete(R&, isMissing)`: called when a record has been read,
/// it sets those values that follow from others where their own key was missing.
template <typename Record>
struct RecordFields;

/// Whether a type has a table of coded fields.
template <typename Record>
concept CodedRecord = requires {
  RecordFields<Record>::values;
};

template <typename Value>
inline constexpr bool isOptionalValue = false;
template <typename Value>
inline constexpr bool isOptionalValue<std::optional<Value>> = true;

template <CodedRecord Record>
inline constexpr std::size_t recordFieldCount =
    std::tuple_size_v<std::remove_cvref_t<decltype(RecordFields<Record>::values)>>;

template <CodedRecord Record>
[[nodiscard]] constexpr std::array<std::string_view, recordFieldCount<Record>> recordKeys() {
  return std::apply([](const auto&... field) { return std::array{field.key...}; },
                    RecordFields<Record>::values);
}

/// Whether the keys of the table ascend, as writing and reading need it.
template <CodedRecord Record>
[[nodiscard]] constexpr bool recordKeysAscend() {
  const auto keys = recordKeys<Record>();
  for (std::size_t i = 1; i < keys.size(); ++i) {
    if (!(keys[i - 1] < keys[i])) {
      return false;
    }
  }
  return true;
}

}  // namespace quorvex
