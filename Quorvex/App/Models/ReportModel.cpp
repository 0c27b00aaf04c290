#include "ReportModel.h"

#include <string>
#include <utility>

#include "AppSettings.h"
#include "LocalizedDate.h"
#include "SessionHistory.h"
#include "SessionReportRules.h"
#include "ShownHistory.h"
#include "ShownReport.h"
#include "ShownTrace.h"

namespace quorvex {

ReportModel::ReportModel(QuorvexApp& app, QObject* parent)
    : LiveModel(parent), app_(&app), reader_(app) {
  connect(&app.defaults(), &DefaultsModel::changed, this, &LiveModel::schedule);
}

void ReportModel::setSession(SessionPointer session) {
  session_ = std::move(session);
  const int request = ++requests_;
  setFailed(false);
  if (session_ == nullptr) {
    show(std::nullopt);
    return;
  }
  if (const auto found = finished_.find(session_->id()); found != finished_.end()) {
    show(found->second);
    return;
  }
  if (!report_ || report_->sessionID != session_->id()) {
    show(std::nullopt);
  }
  setLoading(true);
  asio::co_spawn(app_->context().mainThread, load(reader_, QPointer{this}, session_, request),
                 asio::detached);
}

QVariantMap ReportModel::failure() const {
  return hasFailed_ ? shownMap(unreadableReport()) : QVariantMap{};
}

QString ReportModel::sessionID() const {
  return report_ ? QString::fromStdString(report_->sessionID.text()) : QString{};
}

asio::awaitable<void> ReportModel::load(SessionReader reader, QPointer<ReportModel> self,
                                        SessionPointer session, int request) {
  // What is read while the session goes on is not its last word, even if it ends meanwhile.
  const bool hasEnded = session->status() != PowerSessionStatus::active;
  auto report = co_await reader.report(session);
  if (self == nullptr) {
    co_return;
  }
  if (report && hasEnded) {
    self->finished_.insert_or_assign(session->id(), *report);
  }
  if (self->requests_ == request) {
    self->setFailed(!report);
    self->show(std::move(report));
  }
}

void ReportModel::show(std::optional<PowerSessionReport> report) {
  report_ = std::move(report);
  refresh();
  setLoading(false);
}

void ReportModel::setLoading(bool isLoading) {
  if (isLoading != isLoading_) {
    isLoading_ = isLoading;
    emit loadingChanged();
  }
}

void ReportModel::setFailed(bool hasFailed) {
  if (hasFailed != hasFailed_) {
    hasFailed_ = hasFailed;
    emit failureChanged();
  }
}

QVariantMap ReportModel::makeContent() {
  if (!report_) {
    traces_.clear();
    return {};
  }
  const bool useFahrenheit = app_->defaults().useFahrenheit();
  const std::string locale = userLocaleForDates();
  const auto content = sessionReportContent(*report_, useFahrenheit, locale);
  traces_ = tracePlots(content.traces, *report_, useFahrenheit, ShortTimeFormat{locale});
  QVariantMap map = shownMap(content);
  map.insert(QStringLiteral("traces"), shown(traces_));
  return map;
}

QVariantMap ReportModel::readout(int trace, double position, int steps) const {
  if (trace < 0 || trace >= static_cast<int>(traces_.size())) {
    return {};
  }
  const auto nearest = nearestReadout(traces_[static_cast<std::size_t>(trace)], position, steps);
  return nearest ? shownMap(*nearest) : QVariantMap{};
}

}  // namespace quorvex
