#include "SymbolImage.h"

#include <QPainter>

namespace quorvex {

QString symbolFile(const QString& name) {
  return QStringLiteral(":/symbols/") + name + QStringLiteral(".svg");
}

QImage symbolImage(QSvgRenderer& symbol, QSize size, double scale, const QColor& color) {
  QImage image((QSizeF{size} * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  symbol.render(&painter, QRectF{QPointF{}, QSizeF{image.size()}});
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  painter.end();
  image.setDevicePixelRatio(scale);
  return image;
}

}  // namespace quorvex
