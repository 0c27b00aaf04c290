#include "DashboardModel.h"

#include <QPointer>
#include <string>
#include <utility>

#include "AppScenes.h"
#include "AtomicFile.h"
#include "SafeFilename.h"
#include "ShownDashboard.h"

namespace quorvex {

DashboardModel::DashboardModel(QuorvexApp& app, AppCommands& commands, SavePanel savePanel,
                               QObject* parent)
    : LiveModel(parent),
      app_(&app),
      commands_(&commands),
      savePanel_(std::move(savePanel)),
      times_(userLocaleForDates()),
      launchAtLogin_(app.machine().loginItem(), false),
      helper_(app),
      session_(app),
      live_(app),
      history_(app) {
  observe(app.engine().currentState());
  connect(&app.defaults(), &DefaultsModel::changed, this, &LiveModel::schedule);
  connect(&commands, &AppCommands::sessionsChanged, &history_, &HistoryModel::refreshSessions);
  connect(&history_, &HistoryModel::sessionCountChanged, this,
          [this] { session_.setSessionCount(history_.sessionCount()); });
  connect(&history_, &HistoryModel::exportRequested, this,
          [this] { exportSession(history_.selectedSession()); });
  connect(this, &LiveModel::shownChanged, this, &DashboardModel::showParts);
  session_.setSessionCount(history_.sessionCount());
  app.engine().start();
  refresh();
}

void DashboardModel::setTab(int tab) {
  const auto next =
      tab == static_cast<int>(DashboardTab::history) ? DashboardTab::history : DashboardTab::live;
  if (next == tab_) {
    return;
  }
  tab_ = next;
  if (tab_ == DashboardTab::history) {
    history_.refreshSessions();
  } else {
    // The search belongs to the view that goes; the selection stays.
    history_.setSearchText({});
  }
  showParts();
  refresh();
  emit tabChanged();
}

void DashboardModel::startSession() {
  const QString name = session_.sessionName();
  session_.setSessionName({});
  commands_->startSession(name);
}

void DashboardModel::stopSession() {
  commands_->stopSession();
}

void DashboardModel::viewHistory() {
  history_.refreshSessions();
  setTab(static_cast<int>(DashboardTab::history));
}

void DashboardModel::showParts() {
  const bool isLive = isShown() && tab_ == DashboardTab::live;
  launchAtLogin_.setShown(isShown());
  helper_.setShown(isLive);
  session_.setShown(isLive);
  live_.setShown(isLive);
  history_.setShown(isShown() && tab_ == DashboardTab::history);
}

void DashboardModel::exportSession(const PowerSessionRecorder::SessionPointer& session) {
  using namespace SessionExportPanel;
  const auto textOf = [](std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  };
  savePanel_({.title = textOf(title),
              .proposedName = textOf(proposedName(session->title())),
              .fileExtension = textOf(fileExtension),
              .fileTypeName = textOf(fileTypeName)},
             // The panel may outlive the dashboard.
             [self = QPointer{this}, app = app_, session](const QString& file) {
               const auto text = app->sessionRecorder().exportJSONL(*session);
               const auto error = text ? writeAtomically(file.toStdString(), *text)
                                       : std::optional{text.error().description};
               if (error && self != nullptr) {
                 self->helper_.tellExportFailure(*error);
               }
             });
}

QVariantMap DashboardModel::makeContent() {
  QVariantMap content =
      shownMap(dashboardHeader(app_->engine().currentState().value(), tab_,
                               appSettings(app_->machine().userDefaults()), times_));
  content.insert(QStringLiteral("width"), AppScenes::dashboardDefaultWidth);
  content.insert(QStringLiteral("height"), AppScenes::dashboardDefaultHeight);
  return content;
}

}  // namespace quorvex
