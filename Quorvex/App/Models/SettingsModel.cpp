#include "SettingsModel.h"

#include <string>

#include "AppScenes.h"
#include "ShownSettings.h"

namespace quorvex {

SettingsModel::SettingsModel(QuorvexApp& app, AppCommands& commands, QObject* parent)
    : LiveModel(parent),
      app_(&app),
      commands_(&commands),
      launchAtLogin_(app.machine().loginItem(), true, this) {
  observe(app.engine().interval());
  observe(app.engine().lastPollDuration());
  connect(&app.defaults(), &DefaultsModel::changed, this, &LiveModel::schedule);
  connect(this, &LiveModel::shownChanged, &launchAtLogin_, &LiveModel::setShown);
  commands.applyRefreshInterval(app.defaults().refreshInterval());
  commands.applyLowImpactMode();
  refresh();
}

QVariantMap SettingsModel::makeContent() {
  const SettingsContent content = settingsContent(appSettings(app_->machine().userDefaults()),
                                                  app_->engine().pollUtilizationFraction());
  setRows("dashboardToggles", content.dashboardSections.toggles, &ToggleControl::key);
  setRows("displayToggles", content.display.toggles, &ToggleControl::key);
  QVariantMap map = shownMap(content);
  map.insert(QStringLiteral("title"), shown(std::string{AppScenes::settingsTitle}));
  return map;
}

}  // namespace quorvex
