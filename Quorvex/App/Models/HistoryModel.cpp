#include "HistoryModel.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "LocalizedSearch.h"
#include "ShownHistory.h"

namespace quorvex {

HistoryModel::HistoryModel(QuorvexApp& app, QObject* parent)
    : LiveModel(parent), app_(&app), reader_(app), report_(app, this) {
  observe(app.sessionRecorder().activeSession());
  observe(app.sessionRecorder().activeSummary());
  connect(this, &LiveModel::shownChanged, this, [this](bool isShown) {
    report_.setShown(isShown);
    if (isShown) {
      report_.setSession(selectedSession());
    }
  });
  refreshSessions();
  refresh();
}

void HistoryModel::setSearchText(const QString& text) {
  if (text == searchText_) {
    return;
  }
  searchText_ = text;
  emit searchTextChanged();
  setSelected(selectDefaultSession(filtered(), selected_));
  schedule();
}

PowerSessionRecorder::SessionPointer HistoryModel::listedSession(
    const std::optional<UUID>& id) const {
  const auto found =
      std::ranges::find_if(sessions_, [&id](const auto& session) { return id == session->id(); });
  return found != sessions_.end() ? *found : nullptr;
}

PowerSessionRecorder::SessionPointer HistoryModel::selectedSession() const {
  return listedSession(selected_);
}

void HistoryModel::refreshSessions() {
  sessions_ = app_->sessionRecorder().sessions();
  std::erase_if(summaries_, [this](const auto& entry) {
    const auto session = listedSession(entry.first);
    return session == nullptr || session->status() == PowerSessionStatus::active;
  });
  unreadable_.clear();
  selected_ = selectDefaultSession(sessions_, selected_);
  setSelected(selectDefaultSession(filtered(), selected_));
  if (isShown()) {
    report_.setSession(selectedSession());
  }
  emit sessionCountChanged();
  schedule();
}

void HistoryModel::select(const QString& id) {
  setSelected(UUID::fromText(id.toStdString()));
}

void HistoryModel::selectNeighbour(int steps) {
  const SessionList list = filtered();
  const auto found = std::ranges::find_if(
      list, [this](const auto& session) { return session->id() == selected_; });
  if (found == list.end()) {
    return;
  }
  const auto last = static_cast<std::ptrdiff_t>(list.size()) - 1;
  const auto place = std::clamp<std::ptrdiff_t>(found - list.begin() + steps, 0, last);
  setSelected(list.at(static_cast<std::size_t>(place))->id());
}

void HistoryModel::setSelected(std::optional<UUID> selected) {
  if (selected == selected_) {
    return;
  }
  selected_ = selected;
  if (isShown()) {
    report_.setSession(selectedSession());
  }
  schedule();
}

void HistoryModel::deleteSelected() {
  if (const auto session = selectedSession()) {
    app_->sessionRecorder().deleteSession(session);
    refreshSessions();
  }
}

void HistoryModel::exportSelected() {
  if (selectedSession() != nullptr) {
    emit exportRequested();
  }
}

SessionList HistoryModel::filtered() const {
  return filteredSessions(sessions_, searchText_.toStdString(), userLocaleForSearching());
}

bool HistoryModel::isRecorded(const PowerSession& session) const {
  const auto& active = app_->sessionRecorder().activeSession().value();
  return showsRunningSummary(session,
                             active != nullptr ? std::optional{active->id()} : std::nullopt);
}

std::vector<SessionListRow> HistoryModel::rows(const SessionList& list) const {
  std::vector<SessionListRow> rows;
  for (const auto& session : list) {
    const bool isSelected = session->id() == selected_;
    const auto known = summaries_.find(session->id());
    if (isRecorded(*session)) {
      rows.push_back(
          sessionListRow(*session, app_->sessionRecorder().activeSummary().value(), isSelected));
    } else if (known != summaries_.end()) {
      rows.push_back(sessionListRow(*session, known->second, isSelected));
    } else {
      rows.push_back(pendingSessionListRow(*session, isSelected));
    }
  }
  return rows;
}

QVariantMap HistoryModel::makeContent() {
  const SessionList list = filtered();
  setRows("sessions", rows(list), [](const SessionListRow& row) { return row.id.text(); });
  const auto selected = std::ranges::find_if(
      list, [this](const auto& session) { return session->id() == selected_; });
  startReadingSummaries();
  QVariantMap content =
      shownMap(sessionHistory(searchText_.toStdString(), sessions_.size(), list.size(), selected_));
  content.insert(QStringLiteral("selectedRow"),
                 selected != list.end() ? static_cast<int>(selected - list.begin()) : -1);
  return content;
}

PowerSessionRecorder::SessionPointer HistoryModel::nextWithoutSummary() const {
  const auto found = std::ranges::find_if(sessions_, [this](const auto& session) {
    return !summaries_.contains(session->id()) && !unreadable_.contains(session->id()) &&
           !isRecorded(*session);
  });
  return found != sessions_.end() ? *found : nullptr;
}

void HistoryModel::startReadingSummaries() {
  if (isReading_ || !isShown() || nextWithoutSummary() == nullptr) {
    return;
  }
  isReading_ = true;
  asio::co_spawn(app_->context().mainThread, readSummaries(reader_, QPointer{this}),
                 asio::detached);
}

asio::awaitable<void> HistoryModel::readSummaries(SessionReader reader,
                                                  QPointer<HistoryModel> self) {
  while (self != nullptr && self->isShown()) {
    const auto session = self->nextWithoutSummary();
    if (session == nullptr) {
      break;
    }
    const bool hadEnded = session->status() != PowerSessionStatus::active;
    auto summary = co_await reader.summary(session);
    if (self == nullptr) {
      co_return;
    }
    if (!summary) {
      self->unreadable_.insert(session->id());
      continue;
    }
    const auto listed = self->listedSession(session->id());
    // A session that ended while its figures were read is read again.
    if (listed != nullptr && (hadEnded || listed->status() == PowerSessionStatus::active)) {
      self->summaries_.insert_or_assign(session->id(), *summary);
    }
    self->schedule();
  }
  if (self != nullptr) {
    self->isReading_ = false;
  }
}

}  // namespace quorvex
