#pragma once

#include <QVariantList>
#include <QVariantMap>

#include "PixelItem.h"

namespace quorvex {

/// Lines over a common ground, drawn from values that are already placed: 0 to 1 from left to right
/// and from bottom to top. Each series is a map of `color` (a name among `colors`) and `runs`
/// (lists of points; a line does not cross from one to the next). Main thread.
class ChartItem : public PixelItem {
  Q_OBJECT
  Q_PROPERTY(QVariantList series READ series WRITE setSeries NOTIFY seriesChanged)
  Q_PROPERTY(QVariantMap colors READ colors WRITE setColors NOTIFY colorsChanged)
  /// In the units of the item.
  Q_PROPERTY(double lineWidth READ lineWidth CONSTANT)
  /// Whether the ground below a line is tinted.
  Q_PROPERTY(bool isFilled READ isFilled WRITE setFilled NOTIFY filledChanged)

 public:
  explicit ChartItem(QQuickItem* parent = nullptr);

  [[nodiscard]] const QVariantList& series() const { return series_; }
  [[nodiscard]] const QVariantMap& colors() const { return colors_; }
  [[nodiscard]] static double lineWidth() { return 1.5; }
  [[nodiscard]] bool isFilled() const { return isFilled_; }
  void setSeries(const QVariantList& series);
  void setColors(const QVariantMap& colors);
  void setFilled(bool isFilled);

 signals:
  void seriesChanged();
  void colorsChanged();
  void filledChanged();

 protected:
  void paint(QPainter& painter) override;

 private:
  QVariantList series_;
  QVariantMap colors_;
  bool isFilled_ = true;
};

}  // namespace quorvex
