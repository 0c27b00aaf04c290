#pragma once

#include <QPolygonF>
#include <QVariant>
#include <tuple>

#include "Shown.h"
#include "TracePlot.h"

namespace quorvex {

/// One line of a trace as `ChartItem` takes it.
inline QVariant shown(const TracePlot::Line& line) {
  QVariantList runs;
  for (const auto& run : line.runs) {
    QPolygonF points;
    points.reserve(static_cast<qsizetype>(run.size()));
    for (const auto& point : run) {
      points.push_back({point.position, point.height});
    }
    runs.push_back(QVariant::fromValue(points));
  }
  return QVariantMap{{QStringLiteral("label"), shown(line.label)},
                     {QStringLiteral("color"), shown(line.color)},
                     {QStringLiteral("runs"), runs}};
}

template <>
struct ShownFields<TraceReadout> {
  static constexpr std::tuple values{RecordField{"position", &TraceReadout::position},
                                     RecordField{"heights", &TraceReadout::heights},
                                     RecordField{"text", &TraceReadout::text}};
};

/// All but the readouts, which a view asks for one at a time.
template <>
struct ShownFields<TracePlot> {
  static constexpr std::tuple values{
      RecordField{"title", &TracePlot::title},
      RecordField{"value", &TracePlot::value},
      RecordField{"accessibilityText", &TracePlot::accessibilityText},
      RecordField{"emptyText", &TracePlot::emptyText},
      RecordField{"lines", &TracePlot::lines},
      RecordField{"topText", &TracePlot::topText},
      RecordField{"bottomText", &TracePlot::bottomText},
      RecordField{"startText", &TracePlot::startText},
      RecordField{"endText", &TracePlot::endText}};
};

}  // namespace quorvex
