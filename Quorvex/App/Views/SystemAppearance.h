#pragma once

#include <QObject>

namespace quorvex {

/// Whether the system shows dark windows, observed. Main thread.
class SystemAppearance : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

 public:
  explicit SystemAppearance(QObject* parent = nullptr);

  [[nodiscard]] bool isDark() const { return isDark_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  void isDarkChanged();

 private:
  bool isDark_ = false;
};

}  // namespace quorvex
