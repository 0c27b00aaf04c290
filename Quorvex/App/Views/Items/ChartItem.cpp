#include "ChartItem.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace quorvex {

namespace {

constexpr double strongestTint = 0.22;
constexpr double faintestTint = 0.02;

QColor withAlpha(QColor color, double alpha) {
  color.setAlphaF(static_cast<float>(color.alphaF() * alpha));
  return color;
}

/// Points of the ground `area`, from points of 0 to 1.
QPolygonF placed(const QPolygonF& points, const QRectF& area) {
  QPolygonF result;
  result.reserve(points.size());
  for (const QPointF& point : points) {
    result.push_back(
        {area.left() + point.x() * area.width(), area.bottom() - point.y() * area.height()});
  }
  return result;
}

void fillBelow(QPainter& painter, const QPolygonF& line, const QRectF& area, const QColor& color) {
  QPolygonF shape = line;
  shape.push_back({line.constLast().x(), area.bottom()});
  shape.push_back({line.constFirst().x(), area.bottom()});
  QLinearGradient tint(area.topLeft(), area.bottomLeft());
  tint.setColorAt(0, withAlpha(color, strongestTint));
  tint.setColorAt(1, withAlpha(color, faintestTint));
  painter.setPen(Qt::NoPen);
  painter.setBrush(tint);
  painter.drawPolygon(shape);
}

}  // namespace

ChartItem::ChartItem(QQuickItem* parent) : PixelItem(parent) {}

void ChartItem::setSeries(const QVariantList& series) {
  if (series == series_) {
    return;
  }
  series_ = series;
  update();
  emit seriesChanged();
}

void ChartItem::setColors(const QVariantMap& colors) {
  if (colors == colors_) {
    return;
  }
  colors_ = colors;
  update();
  emit colorsChanged();
}

void ChartItem::setFilled(bool isFilled) {
  if (isFilled == isFilled_) {
    return;
  }
  isFilled_ = isFilled;
  update();
  emit filledChanged();
}

void ChartItem::paint(QPainter& painter) {
  // Half a line's width of room, so that a line at the edge is not cut.
  const double room = lineWidth();
  const QRectF area = boundingRect().adjusted(room, room, -room, -room);
  for (const QVariant& entry : series_) {
    const QVariantMap one = entry.toMap();
    const auto color = colors_.value(one.value(QStringLiteral("color")).toString()).value<QColor>();
    for (const QVariant& run : one.value(QStringLiteral("runs")).toList()) {
      const QPolygonF line = placed(run.value<QPolygonF>(), area);
      if (line.isEmpty()) {
        continue;
      }
      if (isFilled_) {
        fillBelow(painter, line, area, color);
      }
      painter.setBrush(Qt::NoBrush);
      painter.setPen(QPen(color, lineWidth(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      if (line.size() == 1) {
        // Without neighbours a dot of the line's width would go unseen.
        painter.setPen(QPen(color, 2 * lineWidth(), Qt::SolidLine, Qt::RoundCap));
        painter.drawPoint(line.constFirst());
      } else {
        painter.drawPolyline(line);
      }
    }
  }
}

}  // namespace quorvex
