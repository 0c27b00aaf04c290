#include <gtest/gtest.h>

#include "SymbolImage.h"

namespace quorvex {
namespace {

QImage bolt(QSize size, double scale) {
  QSvgRenderer symbol(symbolFile(QStringLiteral("bolt.fill")));
  return symbolImage(symbol, size, scale, QColor(255, 0, 0));
}

TEST(SymbolImage, HasThePixelsOfTheScreensScale) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const QImage image = bolt({16, 16}, scale);
    EXPECT_EQ(image.size(), (QSizeF{16.0, 16.0} * scale).toSize());
    EXPECT_EQ(image.devicePixelRatio(), scale);
  }
}

TEST(SymbolImage, IsDrawnAtTheScaleAndNotEnlarged) {
  QImage fine = bolt({16, 16}, 2.0);
  fine.setDevicePixelRatio(1.0);
  EXPECT_EQ(fine, bolt({32, 32}, 1.0));
  EXPECT_NE(fine, bolt({16, 16}, 1.0).scaled(32, 32));
}

TEST(SymbolImage, IsOfOneColour) {
  const QImage image = bolt({32, 32}, 1.0);
  bool isDrawn = false;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      isDrawn = isDrawn || pixel.alpha() == 255;
      EXPECT_TRUE(pixel.alpha() == 0 || (pixel.green() == 0 && pixel.blue() == 0));
    }
  }
  EXPECT_TRUE(isDrawn);
}

}  // namespace
}  // namespace quorvex
