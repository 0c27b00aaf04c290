#include "FiguresItem.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quorvex {

namespace {

/// Pieces that are drawn as a whole: each digit alone, and what stands between digits.
template <typename Visit>
void forEachPiece(const QString& text, Visit&& visit) {
  qsizetype start = 0;
  while (start < text.size()) {
    const bool isDigit = text.at(start).isDigit();
    qsizetype end = start + 1;
    while (!isDigit && end < text.size() && !text.at(end).isDigit()) {
      ++end;
    }
    visit(text.mid(start, end - start), isDigit);
    start = end;
  }
}

}  // namespace

FiguresItem::FiguresItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  measure();
}

void FiguresItem::setText(const QString& text) {
  if (text == text_) {
    return;
  }
  text_ = text;
  measure();
  emit textChanged();
}

void FiguresItem::setFont(const QFont& font) {
  if (font == font_) {
    return;
  }
  font_ = font;
  measure();
  emit fontChanged();
}

void FiguresItem::setColor(const QColor& color) {
  if (color == color_) {
    return;
  }
  color_ = color;
  update();
  emit colorChanged();
}

void FiguresItem::setAlignRight(bool alignRight) {
  if (alignRight == alignRight_) {
    return;
  }
  alignRight_ = alignRight;
  update();
  emit alignRightChanged();
}

void FiguresItem::measure() {
  const QFontMetricsF metrics(font_);
  digitWidth_ = 0.0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    digitWidth_ = std::max(digitWidth_, metrics.horizontalAdvance(QLatin1Char(digit)));
  }
  textWidth_ = 0.0;
  forEachPiece(text_, [&](const QString& piece, bool isDigit) {
    textWidth_ += isDigit ? digitWidth_ : metrics.horizontalAdvance(piece);
  });
  setImplicitSize(std::ceil(textWidth_), std::ceil(metrics.height()));
  setBaselineOffset(std::round(metrics.ascent()));
  update();
}

void FiguresItem::paint(QPainter* painter) {
  painter->setFont(font_);
  painter->setPen(color_);
  const QFontMetricsF metrics(font_);
  double x = alignRight_ ? width() - textWidth_ : 0.0;
  forEachPiece(text_, [&](const QString& piece, bool isDigit) {
    const double width = metrics.horizontalAdvance(piece);
    const double cell = isDigit ? digitWidth_ : width;
    painter->drawText(QPointF{x + (cell - width) / 2, baselineOffset()}, piece);
    x += cell;
  });
}

}  // namespace quorvex
