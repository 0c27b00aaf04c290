#pragma once

#include <QPolygonF>
#include <QVariant>

#include "Shown.h"
#include "Sparkline.h"

namespace quorvex {

/// One line of a graph as `ChartItem` takes it.
inline QVariant shown(const SparklineContent::Line& line) {
  QPolygonF points;
  points.reserve(static_cast<qsizetype>(line.points.size()));
  for (const auto& point : line.points) {
    points.push_back({point.position, point.height});
  }
  return QVariantMap{
      {QStringLiteral("label"), shown(line.label)},
      {QStringLiteral("color"), shown(line.color)},
      {QStringLiteral("runs"), QVariantList{QVariant::fromValue(points)}},
  };
}

template <>
struct ShownFields<SparklineContent> {
  static constexpr std::tuple values{
      RecordField{"label", &SparklineContent::label},
      RecordField{"lines", &SparklineContent::lines},
      RecordField{"emptyText", &SparklineContent::emptyText},
      RecordField{"accessibilityLabel", &SparklineContent::accessibilityLabel}};
};

}  // namespace quorvex
