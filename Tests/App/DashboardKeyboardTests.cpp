#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "DashboardWindowFixture.h"

// The dashboard without a pointer.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::focus;
using testing::focusedName;
using ::testing::IsSupersetOf;
using testing::SeenText;
using testing::tabStops;
using testing::waitFor;

using DashboardKeyboardTest = testing::DashboardWindowTest;

TEST_F(DashboardKeyboardTest, TabGoesThroughTheLiveTabFromTopToBottom) {
  openDashboard();
  EXPECT_THAT(tabStops(*window),
              ElementsAre("Copy as JSON", "Live", "°C", "3 Temps", "Show Advanced Metrics",
                          "Launch at Login", "Live", "Helper is not installed", "Install Helper",
                          "Refresh", "Optional session name", "Start", "View History"));
  expectNoComplaints();
}

TEST_F(DashboardKeyboardTest, TabGoesThroughTheHistoryFromTheListToTheReport) {
  openDashboard();
  storeSession("Idle test");
  showHistory();
  const auto names = tabStops(*window);
  const auto isTrace = [](const std::string& name) {
    return name.find(": from ") != std::string::npos ||
           name.find("Download from") != std::string::npos;
  };
  EXPECT_EQ(std::ranges::count_if(names, isTrace), 4);
  EXPECT_THAT(names, IsSupersetOf({"Search sessions", "Refresh", "1 session", "Export", "Delete"}));
  const auto placeOf = [&](const char* name) { return std::ranges::find(names, name); };
  EXPECT_LT(placeOf("Search sessions"), placeOf("Refresh"));
  EXPECT_LT(placeOf("Refresh"), placeOf("1 session"));
  EXPECT_LT(placeOf("1 session"), placeOf("Export"));
  EXPECT_LT(placeOf("Export"), placeOf("Delete"));
  EXPECT_LT(placeOf("Delete"), std::ranges::find_if(names, isTrace));
  expectNoComplaints();
}

TEST_F(DashboardKeyboardTest, TheArrowKeysChooseATabAndKeepTheKeyboardThere) {
  openDashboard();
  storeSession("Idle test");
  focus(*window, "Live");
  press(Qt::Key_Right);
  EXPECT_EQ(model()->property("tab").toInt(), 1);
  settle();
  EXPECT_EQ(focusedName(*window), "History");
  press(Qt::Key_Right);
  EXPECT_EQ(model()->property("tab").toInt(), 1);
  press(Qt::Key_Left);
  settle();
  EXPECT_EQ(model()->property("tab").toInt(), 0);
  EXPECT_EQ(focusedName(*window), "Live");
}

TEST_F(DashboardKeyboardTest, TheArrowKeysChooseTheUnit) {
  openDashboard();
  focus(*window, "°C");
  press(Qt::Key_Right);
  EXPECT_TRUE(app->defaults().useFahrenheit());
  settle();
  EXPECT_EQ(focusedName(*window), "°F");
  press(Qt::Key_Left);
  EXPECT_FALSE(app->defaults().useFahrenheit());
}

TEST_F(DashboardKeyboardTest, SpaceTurnsASwitch) {
  openDashboard();
  focus(*window, "3 Temps");
  press(Qt::Key_Space);
  EXPECT_FALSE(app->defaults().showTemperatureHighlights());
  press(Qt::Key_Space);
  EXPECT_TRUE(app->defaults().showTemperatureHighlights());
}

TEST_F(DashboardKeyboardTest, ReturnInTheNameStartsASessionAndNeverStopsOne) {
  openDashboard();
  focus(*window, "Optional session name");
  type("Video call");
  press(Qt::Key_Return);
  const auto& active = app->sessionRecorder().activeSession().value();
  ASSERT_NE(active, nullptr);
  EXPECT_EQ(active->title(), "Video call");
  EXPECT_EQ(focusedText(), QString{});
  type("The next");
  press(Qt::Key_Return);
  EXPECT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_EQ(focusedText(), QStringLiteral("The next"));
}

TEST_F(DashboardKeyboardTest, TheNextSessionsNameIsStillThereAfterTheOtherTab) {
  openDashboard();
  storeSession("Idle test");
  focus(*window, "Optional session name");
  type("Video call");
  showHistory();
  model()->setProperty("tab", 0);
  settle();
  focus(*window, "Optional session name");
  EXPECT_EQ(focusedText(), QStringLiteral("Video call"));
}

TEST_F(DashboardKeyboardTest, TheArrowKeysChooseASession) {
  openDashboard();
  for (const char* title : {"first", "second", "third"}) {
    storeSession(title);
  }
  showHistory();
  auto* history = part(model(), "history");
  const auto selectedRow = [&] {
    settle();
    return history->property("content").toMap().value(QStringLiteral("selectedRow")).toInt();
  };
  focus(*window, "3 sessions");
  EXPECT_EQ(selectedRow(), 0);
  press(Qt::Key_Down);
  EXPECT_EQ(selectedRow(), 1);
  press(Qt::Key_End);
  EXPECT_EQ(selectedRow(), 2);
  press(Qt::Key_Home);
  EXPECT_EQ(selectedRow(), 0);
  press(Qt::Key_Up);
  EXPECT_EQ(selectedRow(), 0);
  expectNoComplaints();
}

TEST_F(DashboardKeyboardTest, TheArrowKeysReadATrace) {
  openDashboard();
  storeSession("Idle test");
  showHistory();
  resize(1000, 3000);
  focus(*window, "Battery: from 61% to 99% in 41 values");
  const auto shows = [this](const char* text) {
    settle();
    const auto texts = seenTexts();
    return std::ranges::any_of(
        texts, [&](const SeenText& seen) { return seen.text.find(text) != std::string::npos; });
  };
  EXPECT_TRUE(shows(" · 99%")) << "the last value";
  press(Qt::Key_Left);
  press(Qt::Key_Left);
  EXPECT_TRUE(shows(" · 98%"));
  press(Qt::Key_Right);
  press(Qt::Key_Right);
  press(Qt::Key_Right);
  EXPECT_TRUE(shows(" · 99%"));
  expectNoComplaints();
}

TEST_F(DashboardKeyboardTest, ASearchWithoutResultAndADeletedSessionLeaveNoComplaint) {
  openDashboard();
  storeSession("first");
  storeSession("second");
  showHistory();
  auto* history = part(model(), "history");
  history->setProperty("searchText", QStringLiteral("nothing like it"));
  settle();
  const auto isSeen = [this](const char* text) {
    const auto texts = seenTexts();
    return std::ranges::any_of(texts, [&](const SeenText& seen) { return seen.text == text; });
  };
  EXPECT_TRUE(isSeen("No sessions match that search."));
  EXPECT_TRUE(isSeen("0 matches"));
  EXPECT_TRUE(isSeen("Select a Session"));
  EXPECT_TRUE(isSeen("Choose a recorded benchmark to inspect."));
  history->setProperty("searchText", QString{});
  QMetaObject::invokeMethod(history, "deleteSelected");
  settle();
  QMetaObject::invokeMethod(history, "deleteSelected");
  settle();
  EXPECT_TRUE(isSeen("No Sessions"));
  EXPECT_TRUE(isSeen("Recorded sessions will appear here."));
  EXPECT_TRUE(isSeen("0 sessions"));
  expectNoComplaints();
}

TEST_F(DashboardKeyboardTest, AReportIsScrolledByTheKeyboardAndBeginsAtItsTop) {
  openDashboard();
  storeSession("first");
  storeSession("second");
  showHistory();
  focus(*window, "Export");
  const auto page = [this] {
    const auto items = testing::shownItems(*window);
    const auto found = std::ranges::find_if(items, [](const QQuickItem* item) {
      return item->inherits("QQuickFlickable") && !item->inherits("QQuickListView");
    });
    return found != items.end() ? *found : nullptr;
  };
  const auto position = [&] {
    settle();
    return page() != nullptr ? page()->property("contentY").toDouble() : -1.0;
  };
  press(Qt::Key_PageDown);
  const double onePage = position();
  EXPECT_GT(onePage, 50.0);
  press(Qt::Key_Up);
  EXPECT_LT(position(), onePage);
  press(Qt::Key_End);
  EXPECT_DOUBLE_EQ(position(), page()->property("contentHeight").toDouble() - page()->height());
  auto* history = part(model(), "history");
  auto* report = part(history, "report");
  QMetaObject::invokeMethod(history, "selectNeighbour", Q_ARG(int, 1));
  ASSERT_TRUE(waitFor([&] { return report->property("hasReport").toBool(); }));
  EXPECT_EQ(position(), 0.0);
  focus(*window, "Export");
  press(Qt::Key_End);
  EXPECT_GT(position(), 50.0);
  // This report is known and stands there at once.
  QMetaObject::invokeMethod(history, "selectNeighbour", Q_ARG(int, -1));
  EXPECT_EQ(position(), 0.0);
  expectNoComplaints();
}

}  // namespace
}  // namespace quorvex
