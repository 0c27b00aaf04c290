#pragma once

#include <QPointer>
#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "LiveModel.h"
#include "QuorvexApp.h"
#include "ReportModel.h"
#include "SessionHistory.h"
#include "SessionReader.h"

namespace quorvex {

/// The dashboard's stored sessions: the list, the search, the selection and its report. The figures
/// of the rows are read on a worker, once for a session that has ended, and appear as they come.
/// The list of rows is `sessions`; `selectedRow` of the content is the place of the selected one in
/// it, -1 without one. Main thread.
class HistoryModel : public LiveModel {
  Q_OBJECT
  Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
  Q_PROPERTY(quorvex::ReportModel* report READ report CONSTANT)

 public:
  /// The app outlives the model.
  explicit HistoryModel(QuorvexApp& app, QObject* parent = nullptr);

  [[nodiscard]] const QString& searchText() const { return searchText_; }
  void setSearchText(const QString& text);
  [[nodiscard]] ReportModel* report() { return &report_; }
  [[nodiscard]] std::size_t sessionCount() const { return sessions_.size(); }
  /// The selected session; null without one.
  [[nodiscard]] PowerSessionRecorder::SessionPointer selectedSession() const;

  /// Lists the sessions anew, keeping the selection if it can.
  Q_INVOKABLE void refreshSessions();
  Q_INVOKABLE void select(const QString& id);
  /// Selects the session that stands `steps` rows below the selected one, above it for negative
  /// ones; the last or the first where there are not as many.
  Q_INVOKABLE void selectNeighbour(int steps);
  Q_INVOKABLE void deleteSelected();
  Q_INVOKABLE void exportSelected();

 signals:
  void searchTextChanged();
  void sessionCountChanged();
  /// The user wants this session saved.
  void exportRequested();

 protected:
  QVariantMap makeContent() override;

 private:
  void setSelected(std::optional<UUID> selected);
  /// The session of the list with this identity; null without one.
  [[nodiscard]] PowerSessionRecorder::SessionPointer listedSession(
      const std::optional<UUID>& id) const;
  [[nodiscard]] SessionList filtered() const;
  [[nodiscard]] std::vector<SessionListRow> rows(const SessionList& list) const;
  void startReadingSummaries();
  /// The next session of the list whose figures are not known; null when all are.
  [[nodiscard]] PowerSessionRecorder::SessionPointer nextWithoutSummary() const;
  [[nodiscard]] bool isRecorded(const PowerSession& session) const;
  static asio::awaitable<void> readSummaries(SessionReader reader, QPointer<HistoryModel> self);

  QuorvexApp* app_;
  SessionReader reader_;
  ReportModel report_;
  QString searchText_;
  SessionList sessions_;
  std::optional<UUID> selected_;
  std::map<UUID, PowerSessionSummary> summaries_;
  std::set<UUID> unreadable_;  ///< not tried again before the next refresh
  bool isReading_ = false;
};

}  // namespace quorvex
