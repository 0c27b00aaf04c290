#include "RowListModel.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quorvex {

namespace {

constexpr int firstRole = Qt::UserRole + 1;

/// Tells rows of one key apart by their order.
void makeKeysDistinct(std::vector<ListRow>& rows) {
  std::set<QString> seen;
  for (auto& row : rows) {
    const QString key = row.key;
    for (int i = 2; !seen.insert(row.key).second; ++i) {
      row.key = key + QLatin1Char('\n') + QString::number(i);
    }
  }
}

}  // namespace

RowListModel::RowListModel(const QStringList& roles, QObject* parent)
    : QAbstractListModel(parent), roles_(roles) {}

void RowListModel::setRows(std::vector<ListRow> rows) {
  makeKeysDistinct(rows);
  const int countBefore = count();
  std::set<QString> wanted;
  for (const auto& row : rows) {
    wanted.insert(row.key);
  }
  for (int i = count() - 1; i >= 0; --i) {
    if (!wanted.contains(rows_[static_cast<std::size_t>(i)].key)) {
      beginRemoveRows({}, i, i);
      rows_.erase(rows_.begin() + i);
      endRemoveRows();
    }
  }
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    auto& row = rows[static_cast<std::size_t>(i)];
    const auto found = std::ranges::find(rows_.begin() + i, rows_.end(), row.key, &ListRow::key);
    if (found == rows_.end()) {
      beginInsertRows({}, i, i);
      rows_.insert(rows_.begin() + i, std::move(row));
      endInsertRows();
      continue;
    }
    if (const int at = static_cast<int>(found - rows_.begin()); at != i) {
      beginMoveRows({}, at, at, {}, i);
      std::rotate(rows_.begin() + i, found, found + 1);
      endMoveRows();
    }
    update(i, std::move(row.values));
  }
  if (count() != countBefore) {
    emit countChanged();
  }
}

void RowListModel::update(int row, QVariantList values) {
  auto& present = rows_[static_cast<std::size_t>(row)].values;
  QList<int> changed;
  for (int i = 0; i < static_cast<int>(values.size()); ++i) {
    if (present.value(i) != values.at(i)) {
      changed.push_back(firstRole + i);
    }
  }
  if (changed.isEmpty()) {
    return;
  }
  present = std::move(values);
  emit dataChanged(index(row), index(row), changed);
}

QVariant RowListModel::value(int row, const QString& role) const {
  const auto place = roles_.indexOf(role);
  const bool exists = place >= 0 && row >= 0 && row < count();
  return exists ? data(index(row), firstRole + static_cast<int>(place)) : QVariant{};
}

int RowListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant RowListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
    return {};
  }
  const auto& values = rows_[static_cast<std::size_t>(index.row())].values;
  return role >= firstRole ? values.value(role - firstRole) : QVariant{};
}

QHash<int, QByteArray> RowListModel::roleNames() const {
  QHash<int, QByteArray> names;
  for (int i = 0; i < static_cast<int>(roles_.size()); ++i) {
    names.insert(firstRole + i, roles_.at(i).toUtf8());
  }
  return names;
}

}  // namespace quorvex
