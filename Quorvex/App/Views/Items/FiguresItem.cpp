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

FiguresItem::FiguresItem(QQuickItem* parent) : PixelItem(parent) {}

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

double FiguresItem::widthOf(const QString& text) const {
  const QFontMetricsF metrics(font_);
  double width = 0.0;
  forEachPiece(text, [&](const QString& piece, bool isDigit) {
    width += isDigit ? digitWidth_ : metrics.horizontalAdvance(piece);
  });
  return width;
}

QString FiguresItem::shownText() const {
  if (textWidth_ <= width()) {
    return text_;
  }
  QString ellipsis(QChar(0x2026));
  for (qsizetype length = text_.size() - 1; length > 0; --length) {
    QString shortened = text_.left(length) + ellipsis;
    if (widthOf(shortened) <= width()) {
      return shortened;
    }
  }
  return ellipsis;
}

void FiguresItem::componentComplete() {
  PixelItem::componentComplete();
  measure();
}

void FiguresItem::measure() {
  // Before all properties are set it would be in vain, and in a font that nothing else uses.
  if (!isComponentComplete()) {
    return;
  }
  const QFontMetricsF metrics(font_);
  digitWidth_ = 0.0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    digitWidth_ = std::max(digitWidth_, metrics.horizontalAdvance(QLatin1Char(digit)));
  }
  textWidth_ = widthOf(text_);
  setImplicitSize(std::ceil(textWidth_), std::ceil(metrics.height()));
  setBaselineOffset(metrics.ascent());
  update();
}

void FiguresItem::paint(QPainter& painter) {
  painter.setFont(font_);
  painter.setPen(color_);
  const QFontMetricsF metrics(font_);
  const QString shown = shownText();
  double x = alignRight_ ? width() - widthOf(shown) : 0.0;
  forEachPiece(shown, [&](const QString& piece, bool isDigit) {
    const double width = metrics.horizontalAdvance(piece);
    const double cell = isDigit ? digitWidth_ : width;
    painter.drawText(QPointF{x + (cell - width) / 2, baselineOffset()}, piece);
    x += cell;
  });
}

}  // namespace quorvex
