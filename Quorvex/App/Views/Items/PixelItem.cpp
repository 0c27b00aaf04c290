#include "PixelItem.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>
#include <cmath>

namespace quorvex {

PixelItem::PixelItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents);
}

QSGNode* PixelItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
  const double scale = window()->effectiveDevicePixelRatio();
  const QSize pixels(static_cast<int>(std::ceil(width() * scale)),
                     static_cast<int>(std::ceil(height() * scale)));
  if (pixels.isEmpty()) {
    delete node;
    return nullptr;
  }
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  paint(painter);
  painter.end();

  auto* picture = static_cast<QSGImageNode*>(node);
  if (picture == nullptr) {
    picture = window()->createImageNode();
    picture->setOwnsTexture(true);
    picture->setFiltering(QSGTexture::Nearest);
  }
  picture->setTexture(
      window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
  picture->setSourceRect(QRectF{QPointF{}, QSizeF{pixels}});
  // One pixel of the image is one of the screen, wherever the item ends between two of them.
  picture->setRect(QRectF{QPointF{}, QSizeF{pixels} / scale});
  return picture;
}

void PixelItem::geometryChange(const QRectF& geometry, const QRectF& before) {
  QQuickItem::geometryChange(geometry, before);
  if (geometry.size() != before.size()) {
    update();
  }
}

void PixelItem::itemChange(ItemChange change, const ItemChangeData& data) {
  if (change == ItemDevicePixelRatioHasChanged) {
    update();
  }
  QQuickItem::itemChange(change, data);
}

}  // namespace quorvex
