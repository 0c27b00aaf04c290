#include "TrayItem.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QString>
#include <initializer_list>
#include <string_view>

#include "AppScenes.h"
#include "SymbolImage.h"

namespace quorvex {

namespace {

QString text(std::string_view words) {
  return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

QIcon menuBarIcon() {
  QSvgRenderer symbol(symbolFile(text(AppScenes::menuBarSymbol)));
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
  icon_.setToolTip(text(AppScenes::menuBarTitle));
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
