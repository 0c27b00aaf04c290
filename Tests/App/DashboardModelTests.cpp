#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "AppFixture.h"
#include "DashboardModel.h"

// The dashboard's models: sections of the moment, sessions, their report and export, the helper
// tool.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DashboardModelTest : public testing::AppTest {
 protected:
  DashboardModelTest() {
    startApp();
    makeDashboard();
  }
  ~DashboardModelTest() override { dashboard.reset(); }

  void makeDashboard() {
    dashboard = std::make_unique<DashboardModel>(*app, *commands,
                                                 [this](const SaveRequest& request, auto chosen) {
                                                   request_ = request;
                                                   chosen_ = chosen;
                                                   if (!saveTo.isEmpty()) {
                                                     chosen(saveTo);
                                                   }
                                                 });
    dashboard->setShown(true);
    settle();
  }

  /// Records a session of about `seconds`.
  void record(const char* title, double seconds = 6.0) {
    commands->startSession(QString::fromLatin1(title));
    advance(seconds);
    commands->stopSession();
    settle();
  }
  void openHistory() {
    dashboard->viewHistory();
    settle();
  }

  /// As another process does.
  void deleteElsewhere(const PowerSession& session) {
    const auto store = PowerSessionStore::open(
        {.appVersion = "0.14.0", .storeURL = *app->storeFile()}, machine.time);
    ASSERT_TRUE(store);
    const auto found = (*store)->session(session.id());
    ASSERT_TRUE(found);
    ASSERT_TRUE((*store)->deleteSession(**found));
  }

  [[nodiscard]] HistoryModel& history() { return *dashboard->history(); }
  [[nodiscard]] QStringList titles() {
    QStringList list;
    auto* rows = history().list(QStringLiteral("sessions"));
    for (int i = 0; i < rows->count(); ++i) {
      list.push_back(rows->value(i, QStringLiteral("title")).toString());
    }
    return list;
  }
  [[nodiscard]] QString selectedTitle() {
    const auto session = history().selectedSession();
    return session != nullptr ? QString::fromStdString(session->title()) : QString{};
  }

  QString saveTo;
  SaveRequest request_;
  std::function<void(const QString&)> chosen_;
  std::unique_ptr<DashboardModel> dashboard;
};

TEST_F(DashboardModelTest, TheLiveTabShowsItsSectionsInOrder) {
  EXPECT_EQ(dashboard->live()->content().value(QStringLiteral("sections")).toStringList(),
            (QStringList{QStringLiteral("proTelemetry"), QStringLiteral("measurementSessions"),
                         QStringLiteral("battery"), QStringLiteral("powerBreakdown"),
                         QStringLiteral("thermal")}));
  EXPECT_EQ(dashboard->live()
                ->content()
                .value(QStringLiteral("breakdown"))
                .toMap()
                .value(QStringLiteral("total"))
                .toMap()
                .value(QStringLiteral("text")),
            QStringLiteral("18.0W"));
}

TEST_F(DashboardModelTest, OnlyTheTabThatIsSeenMakesAnything) {
  EXPECT_TRUE(dashboard->live()->isShown());
  EXPECT_FALSE(history().isShown());
  openHistory();
  EXPECT_FALSE(dashboard->live()->isShown());
  EXPECT_TRUE(history().isShown());
  dashboard->setShown(false);
  EXPECT_FALSE(history().isShown());
}

TEST_F(DashboardModelTest, ASessionIsRecordedStoppedAndFoundInTheHistory) {
  record("Idle test");
  openHistory();
  EXPECT_EQ(titles(), QStringList{QStringLiteral("Idle test")});
  EXPECT_EQ(selectedTitle(), QStringLiteral("Idle test"));
  EXPECT_TRUE(history().report()->hasReport());
  EXPECT_FALSE(history().report()->isLoading());
  const QVariantMap header = history().report()->content().value(QStringLiteral("header")).toMap();
  EXPECT_EQ(header.value(QStringLiteral("title")), QStringLiteral("Idle test"));
}

TEST_F(DashboardModelTest, TheReportReadOnAWorkerIsTheRecordersOwn) {
  record("Idle test", 30.0);
  openHistory();
  ASSERT_TRUE(history().report()->report().has_value());
  EXPECT_EQ(*history().report()->report(),
            app->sessionRecorder().report(*history().selectedSession()));
}

TEST_F(DashboardModelTest, ARowsFiguresAppearOnceTheyAreRead) {
  record("Idle test");
  dashboard->viewHistory();
  auto* rows = history().list(QStringLiteral("sessions"));
  EXPECT_THAT(rows->value(0, QStringLiteral("values")).toList(), IsEmpty());
  settle();
  EXPECT_EQ(rows->value(0, QStringLiteral("values")).toList().size(), 3);
}

TEST_F(DashboardModelTest, TheSearchLeavesMatchesAndSelectsTheFirst) {
  record("foo run");
  record("bar run");
  openHistory();
  EXPECT_EQ(selectedTitle(), QStringLiteral("foo run"));
  history().setSearchText(QStringLiteral("BAR"));
  settle();
  EXPECT_EQ(titles(), QStringList{QStringLiteral("bar run")});
  EXPECT_EQ(selectedTitle(), QStringLiteral("bar run"));
  history().setSearchText(QStringLiteral("nothing like it"));
  settle();
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_EQ(history().selectedSession(), nullptr);
  EXPECT_FALSE(history().report()->hasReport());
}

TEST_F(DashboardModelTest, TheSearchEndsWithTheTabAndTheSelectionStays) {
  record("foo run");
  record("bar run");
  record("new run");
  openHistory();
  history().setSearchText(QStringLiteral("run"));
  history().selectNeighbour(-1);
  ASSERT_EQ(selectedTitle(), QStringLiteral("bar run"));
  history().setSearchText(QStringLiteral("bar"));
  dashboard->setTab(0);
  EXPECT_EQ(history().searchText(), QString{});
  openHistory();
  EXPECT_EQ(titles().size(), 3);
  EXPECT_EQ(selectedTitle(), QStringLiteral("bar run"));
}

TEST_F(DashboardModelTest, TheNeighboursOfTheSelectionAreChosenUpToBothEnds) {
  record("first");
  record("second");
  record("third");
  openHistory();
  const auto row = [this] {
    settle();
    return history().content().value(QStringLiteral("selectedRow")).toInt();
  };
  // The first one was selected when it was the only one.
  EXPECT_EQ(row(), 2);
  history().selectNeighbour(-100);
  EXPECT_EQ(row(), 0);
  history().selectNeighbour(1);
  EXPECT_EQ(row(), 1);
  EXPECT_EQ(selectedTitle(), QStringLiteral("second"));
  history().selectNeighbour(100);
  EXPECT_EQ(row(), 2);
  history().setSearchText(QStringLiteral("nothing like it"));
  EXPECT_EQ(row(), -1);
  history().selectNeighbour(1);
  EXPECT_EQ(history().selectedSession(), nullptr);
}

TEST_F(DashboardModelTest, TheNextSessionsNameSurvivesTheOtherTabAndIsUsedUpByItsStart) {
  dashboard->session()->setSessionName(QStringLiteral("Video call"));
  openHistory();
  dashboard->setTab(0);
  EXPECT_EQ(dashboard->session()->sessionName(), QStringLiteral("Video call"));
  dashboard->startSession();
  EXPECT_EQ(dashboard->session()->sessionName(), QString{});
  settle();
  ASSERT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_EQ(app->sessionRecorder().activeSession().value()->title(), "Video call");
  EXPECT_EQ(app->sessionRecorder().activeSession().value()->source(), PowerSessionSource::app);
  EXPECT_EQ(history().sessionCount(), 1U);
  dashboard->stopSession();
  settle();
  EXPECT_EQ(app->sessionRecorder().activeSession().value(), nullptr);
}

TEST_F(DashboardModelTest, ASessionSamplesAtTheEnginesInterval) {
  commands->applyRefreshInterval(5.0);
  dashboard->startSession();
  EXPECT_EQ(app->sessionRecorder().activeSession().value()->sampleInterval(), 5.0);
}

TEST_F(DashboardModelTest, FiguresReadWhileTheirSessionEndedAreReadAgain) {
  auto& store = app->sessionRecorder().store();
  const auto session =
      store.startSession("From elsewhere", PowerSessionSource::cli, 2.0, machine.time.now());
  ASSERT_TRUE(session);
  SystemPowerState state = app->engine().currentState().value();
  ASSERT_TRUE(store.appendSample(**session, state, {}, std::nullopt, machine.time.now()));
  dashboard->viewHistory();
  stepped.runMainThread();
  while (stepped.stepWorkers()) {
  }
  // Both have been read, and nobody has heard of it yet.
  machine.time.advance(60.0);
  ASSERT_TRUE(store.appendSample(**session, state, {}, std::nullopt, machine.time.now()));
  ASSERT_TRUE(store.stopSession(**session, machine.time.now()));
  history().refreshSessions();
  settle();
  const auto values =
      history().list(QStringLiteral("sessions"))->value(0, QStringLiteral("values")).toList();
  ASSERT_EQ(values.size(), 3);
  EXPECT_EQ(values.at(0).toMap().value(QStringLiteral("value")), QStringLiteral("1m 0s"));
  EXPECT_EQ(history().report()->report()->summary.sampleCount, 2);
}

TEST_F(DashboardModelTest, TheReportTellsWhoseItIs) {
  record("Idle test");
  EXPECT_EQ(history().report()->sessionID(), QString{});
  openHistory();
  EXPECT_EQ(history().report()->sessionID().toStdString(),
            history().selectedSession()->id().text());
}

TEST_F(DashboardModelTest, DeletingTheSelectedSessionSelectsTheNewestRemaining) {
  record("first");
  record("second");
  record("third");
  openHistory();
  history().select(QString::fromStdString(app->sessionRecorder().sessions().at(1)->id().text()));
  ASSERT_EQ(selectedTitle(), QStringLiteral("second"));
  history().deleteSelected();
  settle();
  EXPECT_EQ(titles(), (QStringList{QStringLiteral("third"), QStringLiteral("first")}));
  EXPECT_EQ(selectedTitle(), QStringLiteral("third"));
}

TEST_F(DashboardModelTest, ASessionWithoutSamplesHasAReportThatSaysSo) {
  auto& store = app->sessionRecorder().store();
  ASSERT_TRUE(store.startSession("Empty", PowerSessionSource::cli, 2.0, machine.time.now()));
  ASSERT_TRUE(store.stopSession(**store.activeSession(), machine.time.now()));
  openHistory();
  EXPECT_TRUE(history().report()->hasReport());
  EXPECT_EQ(history().report()->report()->summary.sampleCount, 0);
}

TEST_F(DashboardModelTest, AReportThatCannotBeReadSaysSoUntilAnotherIsShown) {
  record("first");
  record("second");
  record("third");
  openHistory();
  EXPECT_EQ(history().report()->failure(), QVariantMap{});
  const auto sessions = app->sessionRecorder().sessions();
  deleteElsewhere(*sessions.at(1));
  history().select(QString::fromStdString(sessions.at(1)->id().text()));
  settle();
  EXPECT_FALSE(history().report()->hasReport());
  EXPECT_FALSE(history().report()->isLoading());
  EXPECT_EQ(history().report()->failure().value(QStringLiteral("title")),
            QStringLiteral("Session Unavailable"));
  EXPECT_EQ(history().report()->failure().value(QStringLiteral("message")),
            QStringLiteral("It was deleted, or the session store cannot be read."));
  history().select(QString::fromStdString(sessions.at(2)->id().text()));
  settle();
  EXPECT_TRUE(history().report()->hasReport());
  EXPECT_EQ(history().report()->failure(), QVariantMap{});
}

TEST_F(DashboardModelTest, AReadThatALaterOneReplacesIsNotShown) {
  record("Idle test");
  dashboard->viewHistory();
  history().refreshSessions();  // asks for the report again while it is being read
  const QSignalSpy loading(history().report(), &ReportModel::loadingChanged);
  std::vector<bool> hadReport;
  do {
    stepped.runMainThread();
    hadReport.push_back(history().report()->hasReport());
  } while (stepped.stepWorkers());
  EXPECT_TRUE(history().report()->hasReport());
  // The end of the first read changed nothing.
  EXPECT_EQ(std::ranges::count(hadReport, true), 1);
  EXPECT_EQ(loading.count(), 1);
}

TEST_F(DashboardModelTest, TheActiveSessionsRowShowsTheRunningSummary) {
  commands->startSession(QStringLiteral("Running"));
  advance(10.0);
  openHistory();
  const auto values =
      history().list(QStringLiteral("sessions"))->value(0, QStringLiteral("values")).toList();
  ASSERT_EQ(values.size(), 3);
  EXPECT_EQ(values.at(2).toMap().value(QStringLiteral("value")), QStringLiteral("18.0W"));
}

TEST_F(DashboardModelTest, ASessionIsExportedWhereTheUserSays) {
  record("Idle: test");
  openHistory();
  saveTo = QString::fromStdString((home.path() / "export.jsonl").string());
  history().exportSelected();
  EXPECT_EQ(request_.proposedName, QStringLiteral("Idle- test.jsonl"));
  EXPECT_EQ(request_.fileExtension, QStringLiteral("jsonl"));
  QFile file(saveTo);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_GT(file.readAll().count('\n'), 1);
  EXPECT_FALSE(dashboard->helper()->content().value(QStringLiteral("message")).isValid());
}

TEST_F(DashboardModelTest, AnExportThatFailsSaysWhyBelowTheHelpersControls) {
  record("Idle test");
  openHistory();
  saveTo = QString::fromStdString((home.path() / "no such folder" / "export.jsonl").string());
  history().exportSelected();
  dashboard->setTab(0);
  settle();
  const QVariantMap message =
      dashboard->helper()->content().value(QStringLiteral("message")).toMap();
  EXPECT_TRUE(message.value(QStringLiteral("text"))
                  .toString()
                  .startsWith(QStringLiteral("Session export failed: ")));
  EXPECT_EQ(message.value(QStringLiteral("color")), QStringLiteral("orange"));
}

TEST_F(DashboardModelTest, APanelThatIsDismissedExportsNothingAndSaysNothing) {
  record("Idle test");
  openHistory();
  history().exportSelected();
  dashboard->setTab(0);
  settle();
  EXPECT_FALSE(dashboard->helper()->content().value(QStringLiteral("message")).isValid());
}

TEST_F(DashboardModelTest, AnExportThatIsConfirmedAfterTheDashboardClosedIsWritten) {
  record("Idle test");
  openHistory();
  history().exportSelected();
  dashboard.reset();
  const QString file = QString::fromStdString((home.path() / "later.jsonl").string());
  chosen_(file);
  EXPECT_TRUE(QFile::exists(file));
}

TEST_F(DashboardModelTest, ARowWhoseFiguresCannotBeReadStaysWithoutThemUntilARefresh) {
  record("Idle test");
  const std::filesystem::path file = *app->storeFile();
  const std::filesystem::path away = file.string() + ".away";
  std::filesystem::rename(file, away);
  std::filesystem::create_directory(file);
  openHistory();
  const auto values = [this] {
    return history().list(QStringLiteral("sessions"))->value(0, QStringLiteral("values")).toList();
  };
  EXPECT_EQ(values().size(), 0);
  std::filesystem::remove_all(file);
  std::filesystem::rename(away, file);
  history().refreshSessions();
  settle();
  EXPECT_EQ(values().size(), 3);
}

TEST_F(DashboardModelTest, ReadingAStoreThatIsGoneMakesNoNewOne) {
  record("Idle test");
  std::filesystem::remove(*app->storeFile());
  openHistory();
  EXPECT_EQ(history().report()->failure().value(QStringLiteral("title")),
            QStringLiteral("Session Unavailable"));
  EXPECT_FALSE(std::filesystem::exists(*app->storeFile()));
}

TEST_F(DashboardModelTest, AMissingHelperTurnsTheSettingOff) {
  app->defaults().setProTelemetryEnabled(true);
  makeDashboard();
  EXPECT_FALSE(app->defaults().proTelemetryEnabled());
  EXPECT_EQ(dashboard->helper()->content().value(QStringLiteral("canSwitch")), false);
  EXPECT_EQ(dashboard->helper()->content().value(QStringLiteral("title")),
            QStringLiteral("Helper not installed"));
}

TEST_F(DashboardModelTest, TheProcessesAreSampledOnlyWhileAdvancedMetricsAreSeen) {
  const auto walks = [this] { return machine.time.sleeps().size(); };
  advance(1.0);
  const auto before = walks();
  machine.processes.setProcess(7, "worker", {});
  app->defaults().setShowAdvancedMetrics(true);
  settle();
  EXPECT_GT(walks(), before);
  dashboard->setTab(1);
  settle();
  const auto hidden = walks();
  settle();
  EXPECT_EQ(walks(), hidden);
}

TEST_F(DashboardModelTest, ClosingTheWindowEndsNeitherRecordingNorPendingWork) {
  commands->startSession(QStringLiteral("Goes on"));
  dashboard->viewHistory();
  dashboard.reset();
  advance(10.0);
  EXPECT_GE(app->sessionRecorder().activeSummary().value().sampleCount, 4);
}

}  // namespace
}  // namespace quorvex
