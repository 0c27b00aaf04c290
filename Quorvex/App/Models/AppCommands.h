#pragma once

#include <QObject>
#include <QString>

#include "QuorvexApp.h"

namespace quorvex {

/// What the user can tell the app to do from any of its windows. Main thread.
class AppCommands : public QObject {
  Q_OBJECT

 public:
  explicit AppCommands(QuorvexApp& app, QObject* parent = nullptr);

  Q_INVOKABLE void openDashboard() { emit dashboardRequested(); }
  Q_INVOKABLE void openSettings() { emit settingsRequested(); }
  Q_INVOKABLE void quit() { emit quitRequested(); }

  /// Takes one reading now.
  Q_INVOKABLE void refresh();
  /// Makes the setting a multiple of half a second within its limits, and the engine follow it.
  Q_INVOKABLE void applyRefreshInterval(double seconds);
  /// Makes the engine follow the setting.
  Q_INVOKABLE void applyLowImpactMode();

  /// Starts a session; an empty title becomes one of date and time.
  Q_INVOKABLE void startSession(const QString& title);
  Q_INVOKABLE void stopSession();

  /// Puts the full report on the pasteboard about a third of a second later. The report is of then,
  /// with the privileged sample, or of the moment of the call without it.
  Q_INVOKABLE void copyJSONReport() { copyReport(ReportMoment::afterSampling); }
  Q_INVOKABLE void copyJSONReportOfNow() { copyReport(ReportMoment::now); }

 signals:
  void dashboardRequested();
  void settingsRequested();
  void quitRequested();
  /// A session was started, stopped or joined.
  void sessionsChanged();
  void reportCopied();

 private:
  enum class ReportMoment { now, afterSampling };
  void copyReport(ReportMoment moment);

  QuorvexApp* app_;
};

}  // namespace quorvex
