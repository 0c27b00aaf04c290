#include "SystemAppearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace quorvex {

namespace {

/// The toolkit of this age tells the system's appearance by its palette only.
bool hasDarkPalette() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::WindowText).lightness() >
         palette.color(QPalette::Window).lightness();
}

}  // namespace

SystemAppearance::SystemAppearance(QObject* parent) : QObject(parent), isDark_(hasDarkPalette()) {
  QGuiApplication::instance()->installEventFilter(this);
}

bool SystemAppearance::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && isDark_ != hasDarkPalette()) {
    isDark_ = !isDark_;
    emit isDarkChanged();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quorvex
