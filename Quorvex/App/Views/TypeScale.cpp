#include "TypeScale.h"

#include <QFontMetricsF>
#include <QGuiApplication>

namespace quorvex {

namespace {

/// A family that is not installed gives way to the system's own.
QFont textFont(int pixelSize, QFont::Weight weight) {
#ifdef Q_OS_MACOS
  QFont font(QGuiApplication::font().family());
#else
  QFont font(QStringLiteral("Inter"));
#endif
  font.setPixelSize(pixelSize);
  font.setWeight(weight);
  return font;
}

}  // namespace

TypeScale::TypeScale(QObject* parent)
    : QObject(parent),
      caption(textFont(11, QFont::Normal)),
      captionStrong(textFont(11, QFont::DemiBold)),
      body(textFont(13, QFont::Normal)),
      bodyStrong(textFont(13, QFont::DemiBold)),
      title(textFont(15, QFont::DemiBold)),
      headline(textFont(20, QFont::DemiBold)),
      hero(textFont(44, QFont::DemiBold)) {
  hero.setLetterSpacing(QFont::AbsoluteSpacing, -1);
}

void TypeScale::read() const {
  for (const QFont& font : {caption, captionStrong, body, bodyStrong, headline, hero}) {
    static_cast<void>(QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')));
  }
}

}  // namespace quorvex
