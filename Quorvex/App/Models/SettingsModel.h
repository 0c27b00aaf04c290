#pragma once

#include "AppCommands.h"
#include "LaunchAtLoginModel.h"
#include "LiveModel.h"
#include "QuorvexApp.h"

namespace quorvex {

/// What the settings window shows. `content` has the sections under `refresh`, `sampling`,
/// `launch`, `dashboardSections` and `display`; the lists are `dashboardToggles` and
/// `displayToggles`. Main thread.
class SettingsModel : public LiveModel {
  Q_OBJECT
  Q_PROPERTY(quorvex::LaunchAtLoginModel* launchAtLogin READ launchAtLogin CONSTANT)
  Q_PROPERTY(quorvex::AppCommands* commands READ commands CONSTANT)
  Q_PROPERTY(quorvex::DefaultsModel* defaults READ defaults CONSTANT)

 public:
  /// The app and its commands outlive the model. Applies the interval and the low-impact mode.
  SettingsModel(QuorvexApp& app, AppCommands& commands, QObject* parent = nullptr);

  [[nodiscard]] LaunchAtLoginModel* launchAtLogin() { return &launchAtLogin_; }
  [[nodiscard]] AppCommands* commands() const { return commands_; }
  [[nodiscard]] DefaultsModel* defaults() const { return &app_->defaults(); }

 protected:
  QVariantMap makeContent() override;

 private:
  QuorvexApp* app_;
  AppCommands* commands_;
  LaunchAtLoginModel launchAtLogin_;
};

}  // namespace quorvex
