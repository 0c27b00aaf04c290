#include "Shell.h"

#include <asio/post.hpp>

#include <QApplication>
#include <QFontDatabase>
#include <QStringList>

#include "DashboardModel.h"
#include "DropdownModel.h"
#include "FileSavePanel.h"
#include "IdleMemory.h"
#include "SettingsModel.h"
#include "WindowsModule.h"

namespace quorvex {

Shell::Shell(QuorvexApp& app, QObject* parent)
    : QObject(parent), app_(&app), commands_(app), savePanel_(fileSavePanel()) {
  QApplication::setQuitOnLastWindowClosed(false);
  // Looking for the system's fonts for the first time takes longer than most of what the first
  // window waits for.
  asio::post(app.context().workers, [] { static_cast<void>(QFontDatabase::families()); });
  auto& defaults = app.defaults();
  connect(&defaults, &DefaultsModel::refreshIntervalChanged, this,
          [this] { commands_.applyRefreshInterval(app_->defaults().refreshInterval()); });
  connect(&defaults, &DefaultsModel::lowImpactModeChanged, &commands_,
          &AppCommands::applyLowImpactMode);
  connect(&commands_, &AppCommands::dashboardRequested, this, [this] { open(Scene::dashboard); });
  connect(&commands_, &AppCommands::settingsRequested, this, [this] { open(Scene::settings); });
  connect(&commands_, &AppCommands::quitRequested, qApp, &QCoreApplication::quit,
          Qt::QueuedConnection);
  connect(&tray_, &TrayItem::clicked, this, [this] {
    if (auto* host = windows()) {
      host->openPopover(tray_.geometry());
    }
  });
}

void Shell::show() {
  // A menu bar that comes up after the app, as at login, still takes the item.
  tray_.show();
  if (!TrayItem::isAvailable()) {
    open(Scene::dropdown);
  }
}

WindowHost* Shell::windows() {
  if (windows_ == nullptr) {
    windows_ = loadWindows([this](Scene scene) { return makeModel(scene); });
    if (windows_ != nullptr) {
      windows_->whenLastWindowCloses([] {
        releaseIdleMemory();
        if (!TrayItem::isAvailable()) {
          QCoreApplication::quit();
        }
      });
    }
  }
  return windows_.get();
}

void Shell::open(Scene scene) {
  if (auto* host = windows()) {
    host->open(scene);
  }
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
