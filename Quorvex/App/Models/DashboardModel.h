#pragma once

#include "AppCommands.h"
#include "DashboardRules.h"
#include "HelperModel.h"
#include "HistoryModel.h"
#include "LaunchAtLoginModel.h"
#include "LiveModel.h"
#include "LiveTabModel.h"
#include "LocalizedDate.h"
#include "QuorvexApp.h"
#include "SavePanel.h"
#include "SessionSectionModel.h"

namespace quorvex {

/// The dashboard window: its header, and the models of what stands below. Only those of the tab
/// that is seen make anything. All of it is view state and goes with the window. Main thread.
class DashboardModel : public LiveModel {
  Q_OBJECT
  /// The place of the tab among the header's.
  Q_PROPERTY(int tab READ tab WRITE setTab NOTIFY tabChanged)
  Q_PROPERTY(quorvex::AppCommands* commands READ commands CONSTANT)
  Q_PROPERTY(quorvex::DefaultsModel* defaults READ defaults CONSTANT)
  Q_PROPERTY(quorvex::LaunchAtLoginModel* launchAtLogin READ launchAtLogin CONSTANT)
  Q_PROPERTY(quorvex::HelperModel* helper READ helper CONSTANT)
  Q_PROPERTY(quorvex::SessionSectionModel* session READ session CONSTANT)
  Q_PROPERTY(quorvex::LiveTabModel* live READ live CONSTANT)
  Q_PROPERTY(quorvex::HistoryModel* history READ history CONSTANT)

 public:
  /// The app and its commands outlive the model. Starts an engine that rests, asks for the helper
  /// tool's status and lists the sessions.
  DashboardModel(QuorvexApp& app, AppCommands& commands, SavePanel savePanel,
                 QObject* parent = nullptr);

  [[nodiscard]] int tab() const { return static_cast<int>(tab_); }
  void setTab(int tab);
  [[nodiscard]] AppCommands* commands() const { return commands_; }
  [[nodiscard]] DefaultsModel* defaults() const { return &app_->defaults(); }
  [[nodiscard]] LaunchAtLoginModel* launchAtLogin() { return &launchAtLogin_; }
  [[nodiscard]] HelperModel* helper() { return &helper_; }
  [[nodiscard]] SessionSectionModel* session() { return &session_; }
  [[nodiscard]] LiveTabModel* live() { return &live_; }
  [[nodiscard]] HistoryModel* history() { return &history_; }

  /// Starts a session of the name that the user wrote, which is then used up.
  Q_INVOKABLE void startSession();
  Q_INVOKABLE void stopSession();
  /// Lists the sessions anew and turns to them.
  Q_INVOKABLE void viewHistory();

 signals:
  void tabChanged();

 protected:
  QVariantMap makeContent() override;

 private:
  void showParts();
  void exportSession(const PowerSessionRecorder::SessionPointer& session);

  QuorvexApp* app_;
  AppCommands* commands_;
  SavePanel savePanel_;
  DashboardTab tab_ = DashboardTab::live;
  ShortTimeFormat times_;
  LaunchAtLoginModel launchAtLogin_;
  HelperModel helper_;
  SessionSectionModel session_;
  LiveTabModel live_;
  HistoryModel history_;
};

}  // namespace quorvex
