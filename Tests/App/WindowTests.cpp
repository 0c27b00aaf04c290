#include <gtest/gtest.h>

#include <QPointer>
#include <algorithm>
#include <string>

#include "WindowFixture.h"

// The real windows over recorded machines, drawn off screen: they open without a complaint of the
// views' language, show what is measured, and leave nothing behind.

namespace quorvex {
namespace {

using testing::waitFor;
using testing::WindowTest;

TEST_P(WindowTest, EveryWindowOpensAndIsDrawnWithoutAComplaint) {
  app->defaults().setShowAdvancedMetrics(true);
  for (const Scene scene : {Scene::dropdown, Scene::dashboard, Scene::settings}) {
    QQuickWindow* window = open(scene);
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->title().isEmpty());
  }
  ASSERT_TRUE(waitForReading());
  for (const Scene scene : {Scene::dropdown, Scene::dashboard, Scene::settings}) {
    EXPECT_FALSE(shell->windows()->window(scene)->grabWindow().isNull());
  }
  expectNoComplaints();
}

TEST_P(WindowTest, ASessionIsRecordedAndShownInTheHistoryWithoutAComplaint) {
  QQuickWindow* window = open(Scene::dashboard);
  shell->commands().startSession(QStringLiteral("Test"));
  ASSERT_TRUE(
      waitFor([this] { return app->sessionRecorder().activeSummary().value().sampleCount > 0; }));
  shell->commands().stopSession();
  auto* model = window->property("model").value<QObject*>();
  QMetaObject::invokeMethod(model, "viewHistory");
  auto* report = model->property("history").value<QObject*>()->property("report").value<QObject*>();
  EXPECT_TRUE(waitFor([&] { return report->property("hasReport").toBool(); }));
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->grabWindow().isNull());
  window->resize(1000, 700);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->grabWindow().isNull());
  expectNoComplaints();
}

INSTANTIATE_TEST_SUITE_P(Machines, WindowTest,
                         ::testing::Values("laptop-unplugged", "laptop-charging", "desktop-fans",
                                           "helper-installed", "no-energy-library"),
                         [](const auto& machine) {
                           std::string name = machine.param;
                           std::erase(name, '-');
                           return name;
                         });

using WindowLifeTest = WindowTest;

TEST_F(WindowLifeTest, NoViewsLanguageExistsUntilAWindowOpensAndNoneAfterTheLastCloses) {
  EXPECT_FALSE(shell->windows()->hasEngine());
  open(Scene::dropdown);
  open(Scene::settings);
  EXPECT_TRUE(shell->windows()->hasEngine());
  shell->windows()->close(Scene::dropdown);
  EXPECT_TRUE(waitFor([this] { return !shell->windows()->isOpen(Scene::dropdown); }));
  EXPECT_TRUE(shell->windows()->hasEngine());
  shell->windows()->close(Scene::settings);
  EXPECT_TRUE(waitFor([this] { return !shell->windows()->hasEngine(); }));
  expectNoComplaints();
}

TEST_F(WindowLifeTest, AWindowIsOpenedOnceAndItsModelGoesWithIt) {
  QQuickWindow* first = open(Scene::dashboard);
  EXPECT_EQ(open(Scene::dashboard), first);
  const QPointer<QObject> model = first->property("model").value<QObject*>();
  shell->windows()->close(Scene::dashboard);
  EXPECT_TRUE(waitFor([&] { return model == nullptr; }));
  QQuickWindow* second = open(Scene::dashboard);
  EXPECT_NE(second, nullptr);
  EXPECT_TRUE(waitForReading());
  expectNoComplaints();
}

TEST_F(WindowLifeTest, TheDashboardHasItsSizeOnceAndKeepsTheUsers) {
  QQuickWindow* window = open(Scene::dashboard);
  EXPECT_EQ(window->size(), QSize(480, 700));
  window->resize(900, 800);
  ASSERT_TRUE(waitForReading());
  QCoreApplication::processEvents();
  EXPECT_EQ(window->size(), QSize(900, 800));
}

TEST_F(WindowLifeTest, WithoutAMenuBarTheDropdownOpensAsAWindow) {
  ASSERT_FALSE(TrayItem::isAvailable());
  shell->show();
  ASSERT_TRUE(shell->windows()->isOpen(Scene::dropdown));
  EXPECT_FALSE(shell->windows()->window(Scene::dropdown)->flags() & Qt::FramelessWindowHint);
}

TEST_F(WindowLifeTest, ThePopoverHasNoFrameAndASecondClickClosesIt) {
  shell->windows()->openPopover(QRect{100, 0, 20, 20});
  QQuickWindow* popover = shell->windows()->window(Scene::dropdown);
  ASSERT_NE(popover, nullptr);
  EXPECT_TRUE(popover->flags() & Qt::FramelessWindowHint);
  EXPECT_GT(popover->y(), 20);
  shell->windows()->openPopover(QRect{100, 0, 20, 20});
  EXPECT_TRUE(waitFor([this] { return !shell->windows()->isOpen(Scene::dropdown); }));
  expectNoComplaints();
}

}  // namespace
}  // namespace quorvex
