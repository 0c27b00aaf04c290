#pragma once

#include <QString>
#include <QVariant>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "Appearance.h"
#include "RawEnum.h"
#include "RecordFields.h"
#include "RowListModel.h"
#include "UUID.h"

namespace quorvex {

/// The fields of a rule's result under the names by which views find them. A result specialises it
/// as `template <> struct ShownFields<R> { static constexpr std::tuple values{
///    RecordField{"name", &R::member}, …}; };`.
template <typename Record>
struct ShownFields;

template <typename Record>
concept ShownRecord = requires {
  ShownFields<Record>::values;
};

template <typename Enum>
concept TextEnum = std::is_enum_v<Enum> && requires {
  RawTexts<Enum>::values;
};

/// Values as views get them: a record is a map, a list a list, an enum its text, and what is absent
/// is undefined; an enum without texts is its number.
inline QVariant shown(bool value) {
  return value;
}
inline QVariant shown(int value) {
  return value;
}
inline QVariant shown(std::int64_t value) {
  return QVariant::fromValue<qlonglong>(value);
}
inline QVariant shown(std::size_t value) {
  return QVariant::fromValue<qulonglong>(value);
}
inline QVariant shown(double value) {
  return value;
}
inline QVariant shown(const std::string& value) {
  return QString::fromStdString(value);
}
inline QVariant shown(std::string_view value) {
  return QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
}
inline QVariant shown(const UUID& value) {
  return shown(value.text());
}
inline QVariant shown(ColorName value) {
  return shown(rawValue(value));
}
template <TextEnum Enum>
QVariant shown(Enum value) {
  return shown(rawValue(value));
}
template <typename Enum>
requires(std::is_enum_v<Enum> && !TextEnum<Enum>) QVariant shown(Enum value) {
  return static_cast<int>(value);
}
template <typename Value>
QVariant shown(const std::optional<Value>& value);
template <typename Value>
QVariant shown(const std::vector<Value>& values);
template <ShownRecord Record>
QVariant shown(const Record& record);

/// A record's values in the order of its fields.
template <ShownRecord Record>
[[nodiscard]] QVariantList shownValues(const Record& record) {
  return std::apply(
      [&record](const auto&... field) { return QVariantList{shown(record.*(field.member))...}; },
      ShownFields<Record>::values);
}

/// The names of a record's fields.
template <ShownRecord Record>
[[nodiscard]] QStringList shownNames() {
  return std::apply(
      [](const auto&... field) {
        return QStringList{
            QString::fromUtf8(field.key.data(), static_cast<qsizetype>(field.key.size()))...};
      },
      ShownFields<Record>::values);
}

template <ShownRecord Record>
[[nodiscard]] QVariantMap shownMap(const Record& record) {
  const QStringList names = shownNames<Record>();
  const QVariantList values = shownValues(record);
  QVariantMap map;
  for (qsizetype i = 0; i < names.size(); ++i) {
    map.insert(names.at(i), values.at(i));
  }
  return map;
}

template <typename Value>
QVariant shown(const std::optional<Value>& value) {
  return value ? shown(*value) : QVariant{};
}

template <typename Value>
QVariant shown(const std::vector<Value>& values) {
  QVariantList list;
  list.reserve(static_cast<qsizetype>(values.size()));
  for (const auto& value : values) {
    list.push_back(shown(value));
  }
  return list;
}

template <ShownRecord Record>
QVariant shown(const Record& record) {
  return shownMap(record);
}

/// Records as rows of a list; `keyOf` says which row each is.
template <ShownRecord Record, typename KeyOf>
[[nodiscard]] std::vector<ListRow> shownRows(const std::vector<Record>& records, KeyOf&& keyOf) {
  std::vector<ListRow> rows;
  rows.reserve(records.size());
  for (const auto& record : records) {
    rows.push_back({QString::fromStdString(std::invoke(keyOf, record)), shownValues(record)});
  }
  return rows;
}

}  // namespace quorvex
