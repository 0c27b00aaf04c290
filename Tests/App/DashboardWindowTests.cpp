#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "DashboardWindowFixture.h"

// The dashboard's window as it is laid out and as a screen reader finds it.

namespace quorvex {
namespace {

using testing::DashboardWindowTest;
using testing::expectEveryTextIsSpoken;
using testing::waitFor;

TEST_P(DashboardWindowTest, NoTextIsCutOrCoveredAtAnySize) {
  app->defaults().setShowAdvancedMetrics(true);
  openDashboard();
  storeSession("A day of work");
  QMetaObject::invokeMethod(part(model(), "history"), "refreshSessions");
  const QSize smallest = window->minimumSize();
  for (const QSize size : {smallest, QSize{480, 2600}, QSize{760, 2600}, QSize{1280, 2600}}) {
    const std::string name = std::to_string(size.width()) + "x" + std::to_string(size.height());
    model()->setProperty("tab", 0);
    resize(size.width(), size.height());
    expectReadable("live " + name);
    resize(size.width(), 4000);
    expectReadable("whole live " + name);
    showHistory();
    resize(size.width(), 5000);
    expectReadable("whole history " + name);
    resize(size.width(), size.height());
    expectReadable("history " + name);
  }
  expectNoComplaints();
}

TEST_P(DashboardWindowTest, EveryTextIsSpoken) {
  const testing::ScreenReader reader;
  app->defaults().setShowAdvancedMetrics(true);
  openDashboard();
  expectEveryTextIsSpoken(*window);
  shell->commands().startSession(QStringLiteral("Running"));
  ASSERT_TRUE(
      waitFor([this] { return app->sessionRecorder().activeSummary().value().sampleCount > 0; }));
  settle();
  expectEveryTextIsSpoken(*window);
  shell->commands().stopSession();
  storeSession("A day of work");
  showHistory();
  expectEveryTextIsSpoken(*window);
  auto* history = part(model(), "history");
  history->setProperty("searchText", QStringLiteral("nothing like it"));
  settle();
  expectEveryTextIsSpoken(*window);
  expectNoComplaints();
}

INSTANTIATE_TEST_SUITE_P(Machines, DashboardWindowTest,
                         ::testing::Values("laptop-hot", "desktop-fans", "helper-installed",
                                           "network-busy"),
                         [](const auto& machine) {
                           std::string name = machine.param;
                           std::erase(name, '-');
                           return name;
                         });

using DashboardScreenReaderTest = DashboardWindowTest;

TEST_F(DashboardScreenReaderTest, EveryControlDoesOncePressedWhatItSays) {
  const testing::ScreenReader reader;
  openDashboard();
  const auto pressNode = [this](QAccessible::Role role, const char* name) {
    testing::press(testing::spokenNode(*window, role, name));
    settle();
  };
  pressNode(QAccessible::CheckBox, "3 Temps");
  EXPECT_FALSE(app->defaults().showTemperatureHighlights());
  pressNode(QAccessible::CheckBox, "3 Temps");
  EXPECT_TRUE(app->defaults().showTemperatureHighlights());
  EXPECT_TRUE(testing::spokenNode(*window, QAccessible::CheckBox, "3 Temps").node->state().checked);
  pressNode(QAccessible::CheckBox, "Show Advanced Metrics");
  EXPECT_TRUE(app->defaults().showAdvancedMetrics());
  pressNode(QAccessible::RadioButton, "°F");
  EXPECT_TRUE(app->defaults().useFahrenheit());
  pressNode(QAccessible::Button, "Start");
  EXPECT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  ASSERT_TRUE(
      waitFor([this] { return app->sessionRecorder().activeSummary().value().sampleCount > 0; }));
  settle();
  pressNode(QAccessible::Button, "Stop");
  EXPECT_EQ(app->sessionRecorder().activeSession().value(), nullptr);
  storeSession("second");
  pressNode(QAccessible::RadioButton, "History");
  EXPECT_EQ(model()->property("tab").toInt(), 1);
  pressNode(QAccessible::RadioButton, "Live");
  pressNode(QAccessible::Button, "View History (2)");
  EXPECT_EQ(model()->property("tab").toInt(), 1);
  auto* report = part(part(model(), "history"), "report");
  ASSERT_TRUE(waitFor([&] { return report->property("hasReport").toBool(); }));
  settle();
  std::vector<testing::SpokenNode> rows = testing::spokenNodes(*window);
  std::erase_if(rows, [](const auto& node) { return node.role != QAccessible::ListItem; });
  ASSERT_EQ(rows.size(), 2U);
  const bool isSecondSelected = rows[1].node->state().selected;
  EXPECT_NE(rows[0].node->state().selected, isSecondSelected);
  testing::press(rows[isSecondSelected ? 0 : 1]);
  ASSERT_TRUE(waitFor([&] { return report->property("hasReport").toBool(); }));
  settle();
  EXPECT_EQ(rows[isSecondSelected ? 0 : 1].node->state().selected, true);
  pressNode(QAccessible::Button, "Delete");
  EXPECT_EQ(app->sessionRecorder().sessions().size(), 1U);
  expectNoComplaints();
}

}  // namespace
}  // namespace quorvex
