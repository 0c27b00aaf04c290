#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <vector>

namespace quorvex {

/// One row for a view: what it is about, and its values in the order of the model's roles.
struct ListRow {
  QString key;  ///< which row it is; one of its own within the list
  QVariantList values;

  bool operator==(const ListRow&) const = default;
};

/// A list of rows with fixed roles. A new list is taken over by its difference to the old one: rows
/// of a known key stay where views have them and tell the roles that changed only, so that nothing
/// flickers and no scroll position is lost. Main thread.
class RowListModel : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  /// `roles` are the names under which delegates find the values.
  explicit RowListModel(const QStringList& roles, QObject* parent = nullptr);

  /// Makes `rows` the list. Each has as many values as the model has roles; a key that stands in an
  /// earlier row too counts as another one for each time.
  void setRows(std::vector<ListRow> rows);

  [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] const std::vector<ListRow>& rows() const { return rows_; }
  /// The value of a role in a row, by their names; invalid without such a role or row.
  Q_INVOKABLE [[nodiscard]] QVariant value(int row, const QString& role) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  void update(int row, QVariantList values);

  QStringList roles_;
  std::vector<ListRow> rows_;
};

}  // namespace quorvex
