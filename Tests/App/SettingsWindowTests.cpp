#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ShownItems.h"
#include "WindowFixture.h"

// The settings window as it is seen, heard and worked by the keyboard.

namespace quorvex {
namespace {

using namespace testing;  // NOLINT(google-build-using-namespace): the helpers of windows' tests
using ::testing::ElementsAre;

class SettingsWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    settings = open(Scene::settings);
    ASSERT_NE(settings, nullptr);
    settings->requestActivate();
    ASSERT_TRUE(waitFor([this] { return settings->isActive(); }));
    settle();
  }

  void settle() { testing::settle(*settings); }

  [[nodiscard]] QQuickItem* page() const {
    for (QQuickItem* item : shownItems(*settings)) {
      if (item->inherits("QQuickFlickable")) {
        return item;
      }
    }
    return nullptr;
  }

  ScreenReader reader;
  QQuickWindow* settings = nullptr;
};

TEST_F(SettingsWindowTest, EveryTextIsSpoken) {
  expectEveryTextIsSpoken(*settings);
  expectNoComplaints();
}

TEST_F(SettingsWindowTest, EveryTextHasItsRoomDownToTheSmallestWindow) {
  expectEveryTextHasItsRoom(*settings);
  settings->resize(settings->minimumSize());
  settle();
  EXPECT_EQ(settings->size(), settings->minimumSize());
  expectEveryTextHasItsRoom(*settings);
  settings->resize(1000, 900);
  settle();
  expectEveryTextHasItsRoom(*settings);
}

TEST_F(SettingsWindowTest, TheTabulatorStopsAtEveryControlOnceWithARing) {
  settings->resize(settings->width(), 2000);  // nothing scrolls
  settle();
  EXPECT_THAT(tabStops(*settings),
              ElementsAre("Interval", "Low-impact mode", "Launch at Login", "Battery",
                          "Power Metrics", "Thermal", "Fans", "Temperature Sensors", "Network",
                          "Show temperatures in Fahrenheit", "Show 3-temperature highlights"));
}

TEST_F(SettingsWindowTest, TheKeyboardsPlaceIsInSightInASmallWindow) {
  settings->resize(settings->minimumSize());
  settle();
  focus(*settings, "Show 3-temperature highlights");
  settle();
  const QQuickItem* item = settings->activeFocusItem();
  const QRectF place = item->mapRectToScene(item->boundingRect());
  EXPECT_GE(place.top(), 0.0);
  EXPECT_LE(place.bottom(), settings->height());
}

TEST_F(SettingsWindowTest, TheWindowOpensAsHighAsItsSettings) {
  ASSERT_NE(page(), nullptr);
  EXPECT_LE(page()->property("contentHeight").toDouble(), page()->height());
  EXPECT_LT(page()->height() - page()->property("contentHeight").toDouble(), 1.0);
}

TEST_F(SettingsWindowTest, AHeightOfTheUsersStays) {
  settings->resize(settings->width(), 500);
  settle();
  app->defaults().setUseFahrenheit(true);
  settle();
  EXPECT_EQ(settings->height(), 500);
}

TEST_F(SettingsWindowTest, ASwitchIsSetByTheSpaceKeyAndByAssistiveTechnology) {
  focus(*settings, "Show temperatures in Fahrenheit");
  QTest::keyClick(settings, Qt::Key_Space);
  settle();
  EXPECT_TRUE(app->defaults().useFahrenheit());
  press(spokenNode(*settings, QAccessible::CheckBox, "Show temperatures in Fahrenheit"));
  settle();
  EXPECT_FALSE(app->defaults().useFahrenheit());
  EXPECT_FALSE(spokenNode(*settings, QAccessible::CheckBox, "Show temperatures in Fahrenheit")
                   .node->state()
                   .checked);
}

TEST_F(SettingsWindowTest, TheIntervalIsWordedInFullAndStepsByItsKeys) {
  spokenNode(*settings, QAccessible::StaticText, "2 seconds");
  focus(*settings, "Interval");
  QTest::keyClick(settings, Qt::Key_Down);
  settle();
  QTest::keyClick(settings, Qt::Key_Down);
  settle();
  spokenNode(*settings, QAccessible::StaticText, "1 second");
  EXPECT_EQ(app->defaults().refreshInterval(), 1.0);
}

}  // namespace
}  // namespace quorvex
