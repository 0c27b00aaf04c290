#include "SymbolItem.h"

#include <QPainter>
#include <QQuickWindow>

#include "SymbolImage.h"

namespace quorvex {

SymbolItem::SymbolItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
}

void SymbolItem::setName(const QString& name) {
  if (name == name_) {
    return;
  }
  name_ = name;
  if (name_.isEmpty() || !renderer_.load(symbolFile(name_))) {
    renderer_.load(QByteArray{});
  }
  update();
  emit nameChanged();
}

void SymbolItem::setColor(const QColor& color) {
  if (color == color_) {
    return;
  }
  color_ = color;
  update();
  emit colorChanged();
}

void SymbolItem::paint(QPainter* painter) {
  if (!renderer_.isValid()) {
    return;
  }
  const double scale = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1.0;
  painter->drawImage(boundingRect(), symbolImage(renderer_, size().toSize(), scale, color_));
}

}  // namespace quorvex
