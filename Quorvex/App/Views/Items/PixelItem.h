#pragma once

#include <QPainter>
#include <QQuickItem>

namespace quorvex {

/// An item that is painted for the very pixels of its screen: at a scale between whole ones nothing
/// is stretched, and letters and lines stay crisp. Main thread.
class PixelItem : public QQuickItem {
  Q_OBJECT

 public:
  explicit PixelItem(QQuickItem* parent = nullptr);

 protected:
  /// Paints the item in its own coordinates, from (0, 0) to (width, height). To be asked for by
  /// `update()`.
  virtual void paint(QPainter& painter) = 0;

  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
  void geometryChange(const QRectF& geometry, const QRectF& before) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;
};

}  // namespace quorvex
