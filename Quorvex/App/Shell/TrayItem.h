#pragma once

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

namespace quorvex {

/// The item in the menu bar: a fixed icon that shows no live figures. Main thread.
class TrayItem : public QObject {
  Q_OBJECT

 public:
  explicit TrayItem(QObject* parent = nullptr);

  /// Whether the system has a place for it.
  [[nodiscard]] static bool isAvailable();

  void show() { icon_.show(); }
  /// Where the item is on the screen; empty when the system does not say.
  [[nodiscard]] QRect geometry() const { return icon_.geometry(); }

 signals:
  void clicked();

 private:
  QSystemTrayIcon icon_;
};

}  // namespace quorvex
