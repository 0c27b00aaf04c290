#include "SymbolItem.h"

#include <QPainter>

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
  painter->drawImage(boundingRect(), symbolImage(renderer_, size().toSize(),
                                                 painter->device()->devicePixelRatio(), color_));
}

}  // namespace quorvex
