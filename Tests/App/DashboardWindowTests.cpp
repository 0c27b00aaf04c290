#include <gtest/gtest.h>

#include <QByteArray>
#include <algorithm>
#include <cstddef>
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

class DashboardHistoryTest : public DashboardWindowTest {
 protected:
  void SetUp() override {
    openDashboard();
    storeSession("With phases");
    auto& store = app->sessionRecorder().store();
    const Date now = app->engine().currentState().value().timestamp;
    const auto empty = store.startSession("Without samples", PowerSessionSource::cli, 2.0, now);
    ASSERT_TRUE(empty);
    ASSERT_TRUE(store.stopSession(**empty, now));
    showHistory();
  }

  [[nodiscard]] QString idOf(const char* title) const {
    for (const auto& session : app->sessionRecorder().sessions()) {
      if (session->title() == title) {
        return QString::fromStdString(session->id().text());
      }
    }
    return {};
  }
  void select(const QString& id) {
    auto* history = part(model(), "history");
    QMetaObject::invokeMethod(history, "select", Q_ARG(QString, id));
    ASSERT_TRUE(waitFor([&] { return !part(history, "report")->property("isLoading").toBool(); }));
    settle();
  }
  /// In the header, and with its legend below.
  [[nodiscard]] std::ptrdiff_t shownStrips() const {
    return std::ranges::count_if(testing::shownItems(*window), [](const QQuickItem* item) {
      return QByteArray(item->metaObject()->className()).startsWith("PhaseStrip_");
    });
  }
};

TEST_F(DashboardHistoryTest, ThePhasesAreShownAfterASessionWithoutAny) {
  select(idOf("Without samples"));
  EXPECT_EQ(shownStrips(), 0);
  select(idOf("With phases"));
  EXPECT_EQ(shownStrips(), 2);
  select(idOf("Without samples"));
  EXPECT_EQ(shownStrips(), 0);
  select(idOf("With phases"));
  EXPECT_EQ(shownStrips(), 2);
  expectNoComplaints();
}

TEST_F(DashboardHistoryTest, ThePhasesAreShownAfterTheOtherTab) {
  select(idOf("With phases"));
  model()->setProperty("tab", 0);
  settle();
  model()->setProperty("tab", 1);
  settle();
  EXPECT_EQ(shownStrips(), 2);
  expectNoComplaints();
}

TEST_F(DashboardHistoryTest, ASessionThatIsGoneSaysSoInItsPlace) {
  const auto isTold = [this] {
    return std::ranges::any_of(seenTexts(),
                               [](const auto& text) { return text.text == "Session Unavailable"; });
  };
  storeSession("Never seen");
  QMetaObject::invokeMethod(part(model(), "history"), "refreshSessions");
  settle();
  EXPECT_FALSE(isTold());
  const QString id = idOf("Never seen");
  const auto elsewhere = PowerSessionStore::open(
      {.appVersion = "0.14.0", .storeURL = *app->storeFile()}, app->machine().clock());
  ASSERT_TRUE(elsewhere);
  for (const auto& session : *(*elsewhere)->sessions()) {
    if (QString::fromStdString(session->id().text()) == id) {
      ASSERT_TRUE((*elsewhere)->deleteSession(*session));
    }
  }
  select(id);
  EXPECT_TRUE(isTold());
  select(idOf("Without samples"));
  EXPECT_FALSE(isTold());
  expectNoComplaints();
}

}  // namespace
}  // namespace quorvex
