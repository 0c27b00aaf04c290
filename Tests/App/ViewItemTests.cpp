#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPolygonF>
#include <QQuickWindow>
#include <memory>

#include "ChartItem.h"
#include "FiguresItem.h"
#include "PixelItem.h"

// The items that the views are drawn with, on a screen whose scale lies between whole ones.

namespace quorvex {
namespace {

constexpr double scale = 1.25;

/// Every second pixel of the screen is black.
class Stripes : public PixelItem {
 protected:
  void paint(QPainter& painter) override {
    painter.resetTransform();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int x = 0; x < painter.device()->width(); x += 2) {
      painter.fillRect(x, 0, 1, painter.device()->height(), Qt::black);
    }
  }
};

class ViewItemTest : public ::testing::Test {
 protected:
  ViewItemTest() {
    window_.setColor(Qt::white);
    window_.resize(400, 100);
    window_.show();
  }

  template <typename Item>
  Item& add(std::unique_ptr<Item> item) {
    Item& added = *item.release();
    added.setParentItem(window_.contentItem());
    return added;
  }
  QImage picture() {
    QCoreApplication::processEvents();
    return window_.grabWindow();
  }
  /// Whether anything is painted in that part of the picture.
  static int paintedPixels(const QImage& image, const QRect& part) {
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) {
        count += image.pixelColor(x, y).lightness() < 128 ? 1 : 0;
      }
    }
    return count;
  }

 private:
  QQuickWindow window_;
};

TEST_F(ViewItemTest, OnePaintedPixelIsOneOfTheScreen) {
  auto& stripes = add(std::make_unique<Stripes>());
  // 30 * 1.25 = 37.5 pixels, beginning at 9 * 1.25 = 11.25.
  stripes.setPosition({9, 9});
  stripes.setSize({30, 14});
  const QImage image = picture();
  ASSERT_EQ(image.width(), static_cast<int>(400 * scale));
  for (int x = 0; x < 36; ++x) {
    EXPECT_EQ(image.pixelColor(11 + x, 20), x % 2 == 0 ? Qt::black : Qt::white) << x;
  }
}

TEST_F(ViewItemTest, AnItemWithoutSizePaintsNothing) {
  auto& stripes = add(std::make_unique<Stripes>());
  stripes.setSize({30, 14});
  static_cast<void>(picture());
  stripes.setSize({0, 14});
  const QImage image = picture();
  EXPECT_EQ(paintedPixels(image, image.rect()), 0);
}

class FiguresItemTest : public ViewItemTest {
 protected:
  FiguresItem& figures(const QString& text) {
    auto item = std::make_unique<FiguresItem>();
    QFont font;
    font.setPixelSize(20);
    item->setFont(font);
    item->setText(text);
    FiguresItem& added = add(std::move(item));
    complete(added);
    return added;
  }

 private:
  /// As the views' language does once all properties are set.
  static void complete(QQuickItem& item) {
    static_cast<QQmlParserStatus&>(item).classBegin();
    static_cast<QQmlParserStatus&>(item).componentComplete();
  }
};

TEST_F(FiguresItemTest, EveryDigitIsAsWideAsTheWidest) {
  EXPECT_EQ(figures(QStringLiteral("1111.1 W")).implicitWidth(),
            figures(QStringLiteral("8888.8 W")).implicitWidth());
}

TEST_F(FiguresItemTest, ATextWithRoomIsPaintedWhole) {
  auto& item = figures(QStringLiteral("12345"));
  item.setSize({item.implicitWidth(), item.implicitHeight()});
  const QImage image = picture();
  const int width = static_cast<int>(item.width() * scale);
  const int height = static_cast<int>(item.height() * scale);
  EXPECT_GT(paintedPixels(image, {width - width / 5, 0, width / 5, height}), 5) << "the 5";
}

TEST_F(FiguresItemTest, ATextWithoutRoomEndsInAnEllipsisWithinTheItem) {
  auto& item = figures(QStringLiteral("8888888888"));
  const double whole = item.implicitWidth();
  item.setSize({whole / 2, item.implicitHeight()});
  const QImage image = picture();
  const int width = static_cast<int>(whole / 2 * scale);
  const int height = static_cast<int>(item.height() * scale);
  EXPECT_EQ(paintedPixels(image, {width + 1, 0, width, height}), 0) << "beside the item";
  // The dots of an ellipsis stand on the line; a digit would reach the upper half.
  const int digit = static_cast<int>(whole / 10 * scale);
  const QRect end{width - digit, 0, digit, height / 2};
  EXPECT_LT(paintedPixels(image, end), paintedPixels(image, end.translated(-3 * digit, 0)));
}

TEST_F(ViewItemTest, AValueWithoutNeighboursIsADotThatIsSeen) {
  auto& chart = add(std::make_unique<ChartItem>());
  chart.setSize({80, 40});
  chart.setFilled(false);
  chart.setColors({{QStringLiteral("blue"), QColor(Qt::black)}});
  chart.setSeries({QVariantMap{
      {QStringLiteral("color"), QStringLiteral("blue")},
      {QStringLiteral("runs"), QVariantList{QVariant::fromValue(QPolygonF{{0.5, 0.5}})}}}});
  const QImage image = picture();
  // A dot 3 wide: more than 3 * 1.25 pixels squared times a half.
  EXPECT_GT(paintedPixels(image, image.rect()), 6);
}

}  // namespace
}  // namespace quorvex

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", QByteArray::number(quorvex::scale));
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  testing::InitGoogleTest(&argumentCount, arguments);
  const QGuiApplication application(argumentCount, arguments);
  return RUN_ALL_TESTS();
}
