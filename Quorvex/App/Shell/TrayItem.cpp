#include "TrayItem.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <initializer_list>

#include "SymbolImage.h"

namespace quorvex {

namespace {

QIcon menuBarIcon() {
  QSvgRenderer symbol(symbolFile(QStringLiteral("bolt.fill")));
  const QColor color = QGuiApplication::palette().color(QPalette::WindowText);
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 44, 48}) {
    icon.addPixmap(QPixmap::fromImage(symbolImage(symbol, {size, size}, 1.0, color)));
  }
  // macOS then draws it in the menu bar's own colour.
  icon.setIsMask(true);
  return icon;
}

}  // namespace

TrayItem::TrayItem(QObject* parent) : QObject(parent) {
  icon_.setIcon(menuBarIcon());
  icon_.setToolTip(QStringLiteral("Quorvex"));
  connect(&icon_, &QSystemTrayIcon::activated, this, [this](auto reason) {
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context) {
      emit clicked();
    }
  });
}

bool TrayItem::isAvailable() {
  return QSystemTrayIcon::isSystemTrayAvailable();
}

}  // namespace quorvex
