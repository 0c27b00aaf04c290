#pragma once

#include <QObject>
#include <memory>

#include "AppCommands.h"
#include "QuorvexApp.h"
#include "SavePanel.h"
#include "TrayItem.h"
#include "WindowHost.h"

namespace quorvex {

/// The menu-bar item and the windows that it leads to. The app goes on without windows, except
/// where there is no menu bar to come back by: there the dropdown opens as a window, and closing
/// the last window quits. A recording that runs then stays active in the store. Main thread.
class Shell : public QObject {
  Q_OBJECT

 public:
  /// The app outlives the shell.
  explicit Shell(QuorvexApp& app, QObject* parent = nullptr);

  /// Shows the menu-bar item, or the dropdown where there can be none.
  void show();

  /// The windows, whose module is loaded when it is first needed. Null when it cannot be.
  [[nodiscard]] WindowHost* windows();
  [[nodiscard]] AppCommands& commands() { return commands_; }

 private:
  [[nodiscard]] std::unique_ptr<QObject> makeModel(Scene scene);
  void open(Scene scene);

  QuorvexApp* app_;
  AppCommands commands_;
  SavePanel savePanel_;
  std::unique_ptr<WindowHost> windows_;
  TrayItem tray_;
};

}  // namespace quorvex
