#include "SessionSectionModel.h"

#include <optional>

#include "DashboardRules.h"
#include "ShownDashboard.h"

namespace quorvex {

SessionSectionModel::SessionSectionModel(QuorvexApp& app, QObject* parent)
    : LiveModel(parent), app_(&app) {
  observe(app.sessionRecorder().activeSession());
  observe(app.sessionRecorder().activeSummary());
  observe(app.sessionRecorder().lastError());
  refresh();
}

void SessionSectionModel::setSessionName(const QString& name) {
  if (name != sessionName_) {
    sessionName_ = name;
    emit sessionNameChanged();
  }
}

void SessionSectionModel::setSessionCount(std::size_t count) {
  if (count != sessionCount_) {
    sessionCount_ = count;
    schedule();
  }
}

QVariantMap SessionSectionModel::makeContent() {
  const auto& recorder = app_->sessionRecorder();
  const auto& session = recorder.activeSession().value();
  std::optional<SessionCard> card;
  if (session != nullptr) {
    card = sessionCard(session->title(), recorder.activeSummary().value());
  }
  return shownMap(sessionSection(std::move(card), sessionCount_, recorder.lastError().value()));
}

}  // namespace quorvex
