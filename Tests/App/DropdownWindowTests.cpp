#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "RowListModel.h"
#include "ShownItems.h"
#include "WindowFixture.h"

// The dropdown as it is seen, heard and worked by the keyboard.

namespace quorvex {
namespace {

using namespace testing;  // NOLINT(google-build-using-namespace): the helpers of windows' tests
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

const std::vector<const char*> graphModes{"power", "temperature", "network"};

class DropdownWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    dropdown = open(Scene::dropdown);
    ASSERT_NE(dropdown, nullptr);
    dropdown->requestActivate();
    ASSERT_TRUE(waitFor([this] { return dropdown->isActive(); }));
    ASSERT_TRUE(waitForReading());
    settle();
  }

  void settle() { testing::settle(*dropdown); }

  [[nodiscard]] QObject* model() const { return dropdown->property("model").value<QObject*>(); }

  [[nodiscard]] std::vector<std::string> namesOf(QAccessible::Role role) const {
    std::vector<std::string> names;
    for (const SpokenNode& node : spokenNodes(*dropdown)) {
      if (node.role == role) {
        names.push_back(node.name);
      }
    }
    return names;
  }

  ScreenReader reader;
  QQuickWindow* dropdown = nullptr;
};

TEST_P(DropdownWindowTest, EveryTextIsSpokenInEveryGraphMode) {
  for (const char* mode : graphModes) {
    SCOPED_TRACE(mode);
    app->defaults().setMenuGraphMode(QString::fromLatin1(mode));
    settle();
    expectEveryTextIsSpoken(*dropdown);
  }
  expectNoComplaints();
}

TEST_P(DropdownWindowTest, EveryTextHasItsRoomInEveryGraphMode) {
  for (const bool isRecording : {false, true}) {
    if (isRecording) {
      shell->commands().startSession(QString{});
    }
    for (const char* mode : graphModes) {
      SCOPED_TRACE(mode);
      app->defaults().setMenuGraphMode(QString::fromLatin1(mode));
      app->defaults().setUseFahrenheit(isRecording);
      settle();
      expectEveryTextHasItsRoom(*dropdown);
    }
  }
  expectNoComplaints();
}

INSTANTIATE_TEST_SUITE_P(Machines, DropdownWindowTest,
                         ::testing::Values("laptop-unplugged", "laptop-charging",
                                           "laptop-draining-on-ac", "laptop-full-on-ac",
                                           "laptop-hot", "desktop-fans", "laptop-fanless-hid",
                                           "network-busy", "no-energy-library"),
                         [](const auto& machine) {
                           std::string name = machine.param;
                           std::erase(name, '-');
                           return name;
                         });

using DropdownTest = DropdownWindowTest;

TEST_F(DropdownTest, TheTabulatorStopsAtEveryControlOnceWithARing) {
  EXPECT_THAT(tabStops(*dropdown),
              ElementsAre("Energy", "Start", "Refresh", "Refresh interval", "Low-impact mode",
                          "Open Dashboard", "Copy JSON Report", "Settings", "Quit Quorvex"));
}

TEST_F(DropdownTest, EveryControlIsInTheTreeWithItsRoleAndName) {
  EXPECT_THAT(namesOf(QAccessible::RadioButton), ElementsAre("Energy", "Temp", "Network"));
  EXPECT_THAT(namesOf(QAccessible::PushButton),
              ElementsAre("Start", "Refresh", "Shorter refresh interval", "Longer refresh interval",
                          "Open Dashboard", "Copy JSON Report", "Settings", "Quit Quorvex"));
  EXPECT_THAT(namesOf(QAccessible::SpinBox), ElementsAre("Refresh interval"));
  EXPECT_THAT(namesOf(QAccessible::CheckBox), ElementsAre("Low-impact mode"));
  EXPECT_THAT(namesOf(QAccessible::Grouping), ::testing::Contains("Graph mode"));
}

TEST_F(DropdownTest, ControlsSayWhatTheyAreFor) {
  EXPECT_EQ(spokenNode(*dropdown, QAccessible::RadioButton, "Energy").description,
            "Show energy graph");
  EXPECT_EQ(spokenNode(*dropdown, QAccessible::RadioButton, "Temp").description,
            "Show temperature graph");
  EXPECT_EQ(spokenNode(*dropdown, QAccessible::RadioButton, "Network").description,
            "Show network graph");
  EXPECT_EQ(spokenNode(*dropdown, QAccessible::PushButton, "Start").description,
            "Quick-start a named benchmark from the dashboard, or start now with an automatic "
            "title.");
}

TEST_F(DropdownTest, TheArrowKeysChooseTheGraphAndTakeTheKeyboardAlong) {
  focus(*dropdown, "Energy");
  QTest::keyClick(dropdown, Qt::Key_Right);
  settle();
  EXPECT_EQ(app->defaults().menuGraphMode(), QStringLiteral("temperature"));
  EXPECT_EQ(focusedName(*dropdown), "Temp");
  EXPECT_TRUE(hasRingAroundFocus(*dropdown));
  EXPECT_TRUE(spokenNode(*dropdown, QAccessible::RadioButton, "Temp").node->state().checked);
  EXPECT_FALSE(spokenNode(*dropdown, QAccessible::RadioButton, "Energy").node->state().checked);
}

TEST_F(DropdownTest, PressingAGraphChoosesIt) {
  press(spokenNode(*dropdown, QAccessible::RadioButton, "Network"));
  EXPECT_EQ(app->defaults().menuGraphMode(), QStringLiteral("network"));
}

TEST_F(DropdownTest, WhatStandsBesideTheNumberEndsAtTheMargin) {
  for (const char* mode : graphModes) {
    app->defaults().setMenuGraphMode(QString::fromLatin1(mode));
    settle();
    double rightmost = 0.0;
    for (const QQuickItem* text : shownTexts(*dropdown)) {
      const QRectF place = text->mapRectToScene(text->boundingRect());
      if (place.top() < 64.0) {
        rightmost = std::max(rightmost, place.right());
      }
    }
    EXPECT_EQ(rightmost, dropdown->width() - 16) << mode;
  }
}

TEST_F(DropdownTest, FiguresStandOnTheLineOfTheTextBesideThem) {
  double ofLabel = 0.0;
  double ofPeak = 0.0;
  for (const QQuickItem* text : shownTexts(*dropdown)) {
    const double line = text->mapToScene({0.0, text->baselineOffset()}).y();
    ofLabel = textOf(*text) == "Total" ? line : ofLabel;
    ofPeak = textOf(*text).ends_with(" peak") ? line : ofPeak;
  }
  EXPECT_GT(ofLabel, 0.0);
  EXPECT_NEAR(ofPeak, ofLabel, 0.25);
}

TEST_F(DropdownTest, TheGraphIsOnePictureWithItsPeak) {
  EXPECT_THAT(namesOf(QAccessible::Graphic),
              ElementsAre(::testing::MatchesRegex("Total graph, [0-9.]+W peak")));
}

TEST_F(DropdownTest, TheIntervalStepsByItsKeysAndButtons) {
  const double before = app->defaults().refreshInterval();
  focus(*dropdown, "Refresh interval");
  QTest::keyClick(dropdown, Qt::Key_Up);
  settle();
  EXPECT_EQ(app->defaults().refreshInterval(), before + 0.5);
  QTest::keyClick(dropdown, Qt::Key_Down);
  settle();
  EXPECT_EQ(app->defaults().refreshInterval(), before);
  press(spokenNode(*dropdown, QAccessible::PushButton, "Longer refresh interval"));
  settle();
  EXPECT_EQ(app->defaults().refreshInterval(), before + 0.5);
  EXPECT_EQ(app->engine().interval().value(), before + 0.5);
  press(spokenNode(*dropdown, QAccessible::PushButton, "Shorter refresh interval"));
  settle();
  EXPECT_EQ(app->defaults().refreshInterval(), before);
}

TEST_F(DropdownTest, AStepOfTheIntervalIsOneReadingMore) {
  shell->commands().applyRefreshInterval(59.0);
  std::size_t readings = 0;
  const auto counting = app->engine().currentState().subscribe(
      [&readings](const SystemPowerState& /*state*/) { ++readings; });
  ASSERT_TRUE(waitFor([&] { return readings > 0; }));
  readings = 0;
  press(spokenNode(*dropdown, QAccessible::PushButton, "Longer refresh interval"));
  ASSERT_TRUE(waitFor([&] { return readings > 0; }));
  EXPECT_EQ(app->engine().interval().value(), 59.5);
  // A second one would come as soon as the first.
  QTest::qWait(400);
  EXPECT_EQ(readings, 1U);
}

TEST_F(DropdownTest, TheIntervalIsAValueThatCanBeSet) {
  auto* value =
      spokenNode(*dropdown, QAccessible::SpinBox, "Refresh interval").node->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue().toDouble(), 2.0);
  EXPECT_EQ(value->minimumValue().toDouble(), 0.5);
  EXPECT_EQ(value->maximumValue().toDouble(), 60.0);
  EXPECT_EQ(value->minimumStepSize().toDouble(), 0.5);
  value->setCurrentValue(5.3);
  settle();
  EXPECT_EQ(app->defaults().refreshInterval(), 5.5);
  EXPECT_EQ(app->engine().interval().value(), 5.5);
  EXPECT_EQ(value->currentValue().toDouble(), 5.5);
  spokenNode(*dropdown, QAccessible::StaticText, "5.5s");
  // What comes to the same is shown as it is, and later changes are followed.
  value->setCurrentValue(5.4);
  settle();
  EXPECT_EQ(value->currentValue().toDouble(), 5.5);
  shell->commands().applyRefreshInterval(2.0);
  settle();
  EXPECT_EQ(value->currentValue().toDouble(), 2.0);
}

TEST_F(DropdownTest, ASessionIsStartedAndStoppedByItsButton) {
  press(spokenNode(*dropdown, QAccessible::PushButton, "Start"));
  ASSERT_TRUE(
      waitFor([this] { return app->sessionRecorder().activeSession().value() != nullptr; }));
  settle();
  EXPECT_THAT(namesOf(QAccessible::Grouping), ::testing::Contains(HasSubstr("Recording: ")));
  EXPECT_THAT(namesOf(QAccessible::PushButton), Not(::testing::Contains("Start")));
  press(spokenNode(*dropdown, QAccessible::PushButton, "Stop"));
  settle();
  EXPECT_EQ(app->sessionRecorder().activeSession().value(), nullptr);
  spokenNode(*dropdown, QAccessible::PushButton, "Start");
}

TEST_F(DropdownTest, TheLowImpactModeIsSwitchedByTheSpaceKey) {
  focus(*dropdown, "Low-impact mode");
  QTest::keyClick(dropdown, Qt::Key_Space);
  settle();
  EXPECT_TRUE(app->defaults().lowImpactMode());
  EXPECT_TRUE(app->engine().lowImpactMode().value());
  EXPECT_TRUE(
      spokenNode(*dropdown, QAccessible::CheckBox, "Low-impact mode").node->state().checked);
}

TEST_F(DropdownTest, TheThreeTemperaturesFollowTheirSetting) {
  auto* highlights = [this] {
    RowListModel* list = nullptr;
    QMetaObject::invokeMethod(model(), "list", Q_RETURN_ARG(quorvex::RowListModel*, list),
                              Q_ARG(QString, QStringLiteral("highlights")));
    return list;
  }();
  ASSERT_NE(highlights, nullptr);
  EXPECT_EQ(highlights->count(), 3);
  const std::string storage =
      highlights->value(1, QStringLiteral("value")).toString().toStdString();
  spokenNode(*dropdown, QAccessible::StaticText, storage);
  spokenNode(*dropdown, QAccessible::StaticText, "Storage");
  app->defaults().setShowTemperatureHighlights(false);
  settle();
  EXPECT_THAT(namesOf(QAccessible::StaticText), Not(::testing::Contains("Storage")));
}

TEST_F(DropdownTest, ManyFansTakeMoreThanOneLine) {
  RowListModel* cells = nullptr;
  QMetaObject::invokeMethod(model(), "list", Q_RETURN_ARG(quorvex::RowListModel*, cells),
                            Q_ARG(QString, QStringLiteral("stats")));
  ASSERT_NE(cells, nullptr);
  std::vector<ListRow> rows = cells->rows();
  for (QVariant& value : rows.back().values) {
    if (value == cells->value(cells->count() - 1, QStringLiteral("text"))) {
      value = QStringLiteral("1200 / 1210 / 1220 / 1230 / 1240 / 1250 / 1260 / 1270");
    }
  }
  cells->setRows(rows);
  settle();
  expectEveryTextHasItsRoom(*dropdown);
}

TEST_F(DropdownTest, TheWindowIsAsHighAsWhatItShows) {
  for (const QQuickItem* item : shownItems(*dropdown)) {
    if (item->inherits("QQuickFlickable")) {
      EXPECT_LE(item->property("contentHeight").toDouble(), item->height());
      EXPECT_LT(item->height() - item->property("contentHeight").toDouble(), 1.0);
    }
  }
}

}  // namespace
}  // namespace quorvex
