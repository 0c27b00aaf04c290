#include <gtest/gtest.h>

#include <QPoint>
#include <string>
#include <vector>

#include "ShownItems.h"
#include "WindowFixture.h"

// The windows as they are worked by the pointer.

namespace quorvex {
namespace {

using namespace testing;  // NOLINT(google-build-using-namespace): the helpers of windows' tests

class PointerTest : public WindowTest {
 protected:
  void openWindow(Scene scene) {
    window = open(scene);
    ASSERT_NE(window, nullptr);
    window->requestActivate();
    ASSERT_TRUE(waitFor([this] { return window->isActive(); }));
    settle(*window);
  }

  /// What it shows has its place once there is a reading.
  void openDropdown() {
    openWindow(Scene::dropdown);
    ASSERT_TRUE(waitForReading());
    settle(*window);
  }

  [[nodiscard]] QPoint middleOf(const std::string& button) const {
    const SpokenNode node = spokenNode(*window, QAccessible::PushButton, button);
    return node.node == nullptr ? QPoint{} : window->mapFromGlobal(node.node->rect().center());
  }

  [[nodiscard]] bool isRecording() const {
    return app->sessionRecorder().activeSession().value() != nullptr;
  }

  [[nodiscard]] std::vector<QQuickItem*> shown(const char* className) const {
    std::vector<QQuickItem*> items = shownItems(*window);
    std::erase_if(items, [&](const QQuickItem* item) { return !item->inherits(className); });
    return items;
  }

  ScreenReader reader;
  QQuickWindow* window = nullptr;
};

TEST_F(PointerTest, AClickPressesAButtonAndGivesItTheKeyboardWithoutARing) {
  openDropdown();
  QTest::mouseClick(window, Qt::LeftButton, {}, middleOf("Start"));
  ASSERT_TRUE(waitFor([this] { return isRecording(); }));
  settle(*window);
  EXPECT_EQ(focusedName(*window), "Stop");
  EXPECT_FALSE(hasRingAroundFocus(*window));
  QTest::keyClick(window, Qt::Key_Space);
  EXPECT_TRUE(waitFor([this] { return !isRecording(); }));
  settle(*window);
  EXPECT_TRUE(hasRingAroundFocus(*window));
  expectNoComplaints();
}

TEST_F(PointerTest, APressThatEndsBesideTheButtonIsNoClick) {
  openDropdown();
  const QPoint start = middleOf("Start");
  QTest::mousePress(window, Qt::LeftButton, {}, start);
  QTest::mouseMove(window, start + QPoint{0, 200});
  QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint{0, 200});
  settle(*window);
  EXPECT_FALSE(isRecording());
}

TEST_F(PointerTest, AHeldArrowStepsOnUntilItIsReleased) {
  openDropdown();
  const double before = app->defaults().refreshInterval();
  const QPoint arrow = middleOf("Longer refresh interval");
  QTest::mousePress(window, Qt::LeftButton, {}, arrow);
  EXPECT_EQ(app->defaults().refreshInterval(), before);
  ASSERT_TRUE(waitFor([&] { return app->defaults().refreshInterval() >= before + 1.5; }));
  const double reached = app->defaults().refreshInterval();
  QTest::mouseRelease(window, Qt::LeftButton, {}, arrow);
  settle(*window);
  EXPECT_EQ(app->defaults().refreshInterval(), reached);
  QTest::mouseClick(window, Qt::LeftButton, {}, arrow);
  settle(*window);
  EXPECT_EQ(app->defaults().refreshInterval(), reached + 0.5);
}

TEST_F(PointerTest, AnArrowWithoutAFurtherStepDoesNothing) {
  openDropdown();
  shell->commands().applyRefreshInterval(0.5);
  settle(*window);
  const SpokenNode arrow = spokenNode(*window, QAccessible::PushButton, "Shorter refresh interval");
  EXPECT_FALSE(qobject_cast<QQuickItem*>(arrow.node->object())->isEnabled());
  QTest::mouseClick(window, Qt::LeftButton, {}, middleOf("Shorter refresh interval"));
  press(arrow);
  settle(*window);
  EXPECT_EQ(app->defaults().refreshInterval(), 0.5);
}

TEST_F(PointerTest, AHelpTextStandsWhileThePointerRests) {
  openDropdown();
  const auto hasHelp = [this] {
    return std::ranges::any_of(shownTexts(*window), [](const QQuickItem* text) {
      return textOf(*text).starts_with("Quick-start a named benchmark");
    });
  };
  EXPECT_FALSE(hasHelp());
  QTest::mouseMove(window, middleOf("Start"));
  EXPECT_TRUE(waitFor(hasHelp));
  QTest::mouseMove(window, QPoint{1, 1});
  EXPECT_TRUE(waitFor([&] { return !hasHelp(); }));
  expectNoComplaints();
}

TEST_F(PointerTest, APageThatFitsItsWindowHasNoBar) {
  openDropdown();
  EXPECT_TRUE(shown("QQuickScrollBar").empty());
  openWindow(Scene::settings);
  EXPECT_TRUE(shown("QQuickScrollBar").empty());
}

TEST_F(PointerTest, ABarComesAndGoesWithTheWindowsHeight) {
  openWindow(Scene::settings);
  const QSize fitting = window->size();
  for (int i = 0; i < 2; ++i) {
    window->resize(window->minimumSize());
    settle(*window);
    EXPECT_EQ(shown("QQuickScrollBar").size(), 1U);
    window->resize(fitting);
    settle(*window);
    EXPECT_TRUE(shown("QQuickScrollBar").empty());
  }
  expectNoComplaints();
}

TEST_F(PointerTest, AWindowThatComesBackShowsNoRingWhereThePointerWas) {
  openDropdown();
  const QPoint refresh = middleOf("Refresh");
  QTest::mouseClick(window, Qt::LeftButton, {}, refresh);
  ASSERT_EQ(focusedName(*window), "Refresh");
  QQuickWindow* dropdown = window;
  openWindow(Scene::settings);
  ASSERT_FALSE(dropdown->isActive());
  dropdown->requestActivate();
  ASSERT_TRUE(waitFor([&] { return dropdown->isActive(); }));
  settle(*dropdown);
  EXPECT_EQ(focusedName(*dropdown), "Refresh");
  EXPECT_FALSE(hasRingAroundFocus(*dropdown));
}

TEST_F(PointerTest, APageStaysWhereItIsWhileAControlAtItsEdgeIsClicked) {
  openWindow(Scene::settings);
  const SpokenNode thermal = spokenNode(*window, QAccessible::CheckBox, "Thermal");
  const auto* toggle = qobject_cast<QQuickItem*>(thermal.node->object());
  const QPoint top = toggle->mapToScene(QPointF{toggle->width() / 2, 0}).toPoint();
  window->resize(window->width(), top.y() + 10);
  settle(*window);
  const QQuickItem* page = shown("QQuickFlickable").front();
  QTest::mouseClick(window, Qt::LeftButton, {}, top + QPoint{0, 5});
  settle(*window);
  EXPECT_EQ(focusedName(*window), "Thermal");
  EXPECT_FALSE(thermal.node->state().checked);
  EXPECT_EQ(page->property("contentY").toDouble(), 0.0);
}

TEST_F(PointerTest, ALongPagesBarShowsItsPlaceAndDragsIt) {
  openWindow(Scene::settings);
  window->resize(window->minimumSize());
  settle(*window);
  ASSERT_EQ(shown("QQuickScrollBar").size(), 1U);
  const QQuickItem* bar = shown("QQuickScrollBar").front();
  const QQuickItem* page = shown("QQuickFlickable").front();
  EXPECT_EQ(bar->height(), page->height());
  EXPECT_EQ(bar->mapToScene(QPointF{bar->width(), 0}).x(), window->width());
  EXPECT_NEAR(bar->property("size").toDouble(),
              page->height() / page->property("contentHeight").toDouble(), 1e-9);
  EXPECT_EQ(page->property("contentY").toDouble(), 0.0);
  const QPoint top = bar->mapToScene(QPointF{bar->width() / 2, 10}).toPoint();
  const QPoint bottom{top.x(), window->height() - 1};
  QTest::mousePress(window, Qt::LeftButton, {}, top);
  QTest::mouseMove(window, (top + bottom) / 2);
  QTest::mouseMove(window, bottom);
  settle(*window);
  EXPECT_NEAR(page->property("contentY").toDouble(),
              page->property("contentHeight").toDouble() - page->height(), 1.0);
  QTest::mouseRelease(window, Qt::LeftButton, {}, bottom);
  const double end = bar->property("position").toDouble();
  focus(*window, "Interval");
  settle(*window);
  EXPECT_LT(bar->property("position").toDouble(), end);
  EXPECT_NEAR(bar->property("position").toDouble(),
              page->property("contentY").toDouble() / page->property("contentHeight").toDouble(),
              1e-9);
  expectNoComplaints();
}

}  // namespace
}  // namespace quorvex
