#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>
#include <QSvgRenderer>

namespace quorvex {

/// Where a symbol of the program's own set lies among its resources.
[[nodiscard]] QString symbolFile(const QString& name);

/// A symbol in one colour. `size` is in the units of the screen, of which `scale` pixels make one.
[[nodiscard]] QImage symbolImage(QSvgRenderer& symbol, QSize size, double scale,
                                 const QColor& color);

}  // namespace quorvex
