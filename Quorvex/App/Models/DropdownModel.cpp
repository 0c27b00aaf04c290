#include "DropdownModel.h"

#include <chrono>
#include <string>

#include "AppScenes.h"
#include "ShownDropdown.h"
#include "ThermalSection.h"

namespace quorvex {

DropdownModel::DropdownModel(QuorvexApp& app, AppCommands& commands, QObject* parent)
    : LiveModel(parent), app_(&app), commands_(&commands) {
  observe(app.engine().currentState());
  observe(app.engine().history());
  observe(app.engine().lastPollDuration());
  observe(app.engine().totalBytesInSinceStart());
  observe(app.engine().totalBytesOutSinceStart());
  observe(app.sessionRecorder().activeSession());
  observe(app.sessionRecorder().activeSummary());
  connect(&app.defaults(), &DefaultsModel::changed, this, &LiveModel::schedule);
  second_.setInterval(std::chrono::seconds{1});
  connect(&second_, &QTimer::timeout, this, &LiveModel::schedule);
  connect(this, &LiveModel::shownChanged, this, &DropdownModel::updateClock);
  connect(this, &LiveModel::contentChanged, this, &DropdownModel::updateClock);
  app.engine().start();
  refresh();
}

QVariantMap DropdownModel::makeContent() {
  const auto& engine = app_->engine();
  const SystemPowerState& state = engine.currentState().value();
  const auto& history = engine.history().value();
  const AppSettings settings = appSettings(app_->machine().userDefaults());
  const GraphMode mode = settings.menuGraphMode;

  const HeroMetric hero = heroMetric(mode, state, settings.useFahrenheit);
  setRows("heroLines", hero.lines, &HeroLine::symbol);
  setRows("stats", statsRow(state, settings),
          [](const StatCell& cell) { return std::to_string(static_cast<int>(cell.kind)); });
  setRows("highlights", temperatureHighlights(state, settings), &LabelledValue::label);
  return {
      {QStringLiteral("title"), shown(std::string{AppScenes::menuBarTitle})},
      {QStringLiteral("hero"), shown(hero)},
      {QStringLiteral("context"), shown(heroContext(mode, state))},
      {QStringLiteral("selector"), shown(graphSelector(mode))},
      {QStringLiteral("selectedGraph"), static_cast<int>(mode)},
      {QStringLiteral("graph"), shown(dropdownGraph(mode, state, history, settings.useFahrenheit))},
      {QStringLiteral("dataUsed"), shown(dataUsedRow(state, engine.totalBytesInSinceStart().value(),
                                                     engine.totalBytesOutSinceStart().value()))},
      {QStringLiteral("session"), sessionContent()},
      {QStringLiteral("controls"),
       shown(dropdownControls(settings, state.thermal, engine.pollUtilizationFraction()))},
      {QStringLiteral("menu"), shown(commandRow())},
  };
}

QVariantMap DropdownModel::sessionContent() {
  const auto& recorder = app_->sessionRecorder();
  const auto& session = recorder.activeSession().value();
  return shownMap(session == nullptr ? idleSessionControls()
                                     : activeSessionControls(session->startedAt(),
                                                             recorder.activeSummary().value(),
                                                             app_->machine().clock().now()));
}

void DropdownModel::updateClock() {
  const bool isNeeded = isShown() && app_->sessionRecorder().activeSession().value() != nullptr;
  if (isNeeded != second_.isActive()) {
    isNeeded ? second_.start() : second_.stop();
  }
}

}  // namespace quorvex
