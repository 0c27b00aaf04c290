#include "Shell.h"

#include <QApplication>

#include "DashboardModel.h"
#include "DropdownModel.h"
#include "FileSavePanel.h"
#include "SettingsModel.h"

namespace quorvex {

Shell::Shell(QuorvexApp& app, QObject* parent)
    : QObject(parent),
      app_(&app),
      commands_(app),
      savePanel_(fileSavePanel()),
      windows_([this](Scene scene) { return makeModel(scene); }) {
  QApplication::setQuitOnLastWindowClosed(false);
  auto& defaults = app.defaults();
  connect(&defaults, &DefaultsModel::refreshIntervalChanged, this,
          [this] { commands_.applyRefreshInterval(app_->defaults().refreshInterval()); });
  connect(&defaults, &DefaultsModel::lowImpactModeChanged, &commands_,
          &AppCommands::applyLowImpactMode);
  connect(&commands_, &AppCommands::dashboardRequested, this,
          [this] { windows_.open(Scene::dashboard); });
  connect(&commands_, &AppCommands::settingsRequested, this,
          [this] { windows_.open(Scene::settings); });
  connect(&commands_, &AppCommands::quitRequested, qApp, &QCoreApplication::quit,
          Qt::QueuedConnection);
  connect(&tray_, &TrayItem::clicked, this, &Shell::toggleDropdown);
  connect(&windows_, &WindowHost::lastWindowClosed, this, [] {
    if (!TrayItem::isAvailable()) {
      QCoreApplication::quit();
    }
  });
}

void Shell::show() {
  // A menu bar that comes up after the app, as at login, still takes the item.
  tray_.show();
  if (!TrayItem::isAvailable()) {
    windows_.open(Scene::dropdown);
  }
}

void Shell::toggleDropdown() {
  windows_.openPopover(tray_.geometry());
}

std::unique_ptr<QObject> Shell::makeModel(Scene scene) {
  switch (scene) {
    case Scene::dropdown:
      return std::make_unique<DropdownModel>(*app_, commands_);
    case Scene::dashboard:
      return std::make_unique<DashboardModel>(*app_, commands_, savePanel_);
    case Scene::settings:
      return std::make_unique<SettingsModel>(*app_, commands_);
  }
  return nullptr;
}

}  // namespace quorvex
