#pragma once

#include <QHash>
#include <QObject>
#include <QVariantMap>
#include <utility>
#include <vector>

#include "Observable.h"
#include "RowListModel.h"
#include "Shown.h"

namespace quorvex {

/// What one window or section shows, made anew when something that it observes changes; while
/// nobody can see it, nothing is made. Changes of one turn are one. Main thread.
class LiveModel : public QObject {
  Q_OBJECT
  /// The section's words and figures, by the names of the rules' fields.
  Q_PROPERTY(QVariantMap content READ content NOTIFY contentChanged)

 public:
  explicit LiveModel(QObject* parent = nullptr) : QObject(parent) {}

  [[nodiscard]] const QVariantMap& content() const { return content_; }
  [[nodiscard]] bool isShown() const { return isShown_; }

  /// The rows that change while they are seen, by the list's name; null for an unknown one.
  Q_INVOKABLE quorvex::RowListModel* list(const QString& name) const {
    return lists_.value(name, nullptr);
  }

  /// Whether anyone can see it.
  Q_INVOKABLE void setShown(bool isShown);

  /// Makes the content anew in the next turn, or when it is next seen.
  void schedule();

 signals:
  void contentChanged();
  void shownChanged(bool isShown);

 protected:
  /// Makes what is shown now.
  virtual QVariantMap makeContent() = 0;

  /// Makes the content at once. Constructors end with it.
  void refresh();

  /// Takes records over into the list of that name; `keyOf` says which row each is.
  template <typename Record, typename KeyOf>
  void setRows(const char* name, const std::vector<Record>& records, KeyOf&& keyOf) {
    RowListModel*& list = lists_[QString::fromLatin1(name)];
    if (list == nullptr) {
      list = new RowListModel(shownNames<Record>(), this);
    }
    list->setRows(shownRows(records, std::forward<KeyOf>(keyOf)));
  }

  template <typename Value>
  void observe(const Observable<Value>& observable) {
    subscriptions_.push_back(observable.subscribe([this](const Value&) { schedule(); }));
  }

 private:
  QVariantMap content_;
  QHash<QString, RowListModel*> lists_;
  std::vector<Subscription> subscriptions_;
  bool isShown_ = false;
  bool isScheduled_ = false;
  bool isStale_ = false;
};

}  // namespace quorvex
