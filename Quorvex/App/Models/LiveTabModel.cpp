#include "LiveTabModel.h"

#include <string>
#include <utility>

#include "DashboardRules.h"
#include "DetachedWork.h"
#include "ProcessActivityService.h"
#include "ShownSections.h"

namespace quorvex {

namespace {

std::string nameOf(LiveSection section) {
  switch (section) {
    case LiveSection::proTelemetry:
      return "proTelemetry";
    case LiveSection::measurementSessions:
      return "measurementSessions";
    case LiveSection::battery:
      return "battery";
    case LiveSection::powerBreakdown:
      return "powerBreakdown";
    case LiveSection::network:
      return "network";
    case LiveSection::thermal:
      return "thermal";
  }
  return {};
}

QStringList sectionNames(const std::vector<LiveSection>& sections) {
  QStringList names;
  for (const LiveSection section : sections) {
    names.push_back(QString::fromStdString(nameOf(section)));
  }
  return names;
}

}  // namespace

LiveTabModel::LiveTabModel(QuorvexApp& app, QObject* parent) : LiveModel(parent), app_(&app) {
  observe(app.engine().currentState());
  observe(app.engine().history());
  observe(app.engine().totalBytesInSinceStart());
  observe(app.engine().totalBytesOutSinceStart());
  observe(app.sessionRecordingCoordinator().latestProTelemetry());
  connect(&app.defaults(), &DefaultsModel::changed, this, &LiveModel::schedule);
  connect(&app.defaults(), &DefaultsModel::showAdvancedMetricsChanged, this,
          &LiveTabModel::restartSampler);
  connect(this, &LiveModel::shownChanged, this, &LiveTabModel::restartSampler);
  refresh();
}

LiveTabModel::~LiveTabModel() {
  if (samplerTask_ != nullptr) {
    samplerTask_->cancel();
  }
}

QVariantMap LiveTabModel::makeContent() {
  const SystemPowerState& state = app_->engine().currentState().value();
  const AppSettings settings = appSettings(app_->machine().userDefaults());
  QVariantMap content{
      {QStringLiteral("sections"), sectionNames(liveSections(state, settings))},
      {QStringLiteral("breakdown"), breakdownContent(state)},
      {QStringLiteral("network"), networkContent(state)},
      {QStringLiteral("thermal"), thermalContent(state, settings)},
  };
  if (settings.showAdvancedMetrics) {
    content.insert(QStringLiteral("advanced"), advancedContent(state));
  }
  if (state.battery) {
    const BatteryGauge gauge = batteryGauge(*state.battery);
    setRows("batteryRows", gauge.rows, &BatteryGaugeRow::label);
    content.insert(QStringLiteral("battery"), shown(gauge));
  }
  return content;
}

QVariantMap LiveTabModel::breakdownContent(const SystemPowerState& state) {
  const PowerBreakdown breakdown =
      powerBreakdown(state, app_->engine().history().value(),
                     app_->sessionRecordingCoordinator().latestProTelemetry().value(),
                     app_->machine().clock().now());
  setRows("components", breakdown.components, &PowerBar::label);
  return shownMap(breakdown);
}

QVariant LiveTabModel::advancedContent(const SystemPowerState& state) {
  const AdvancedMetrics metrics =
      advancedMetrics(state, app_->engine().history().value(),
                      app_->sessionRecordingCoordinator().latestProTelemetry().value(), sampler_,
                      app_->machine().clock().now());
  setRows("advancedRows", metrics.rows, &LabelledValue::label);
  setRows("activities", metrics.activities, &ProcessFiguresRow::name);
  const ProTelemetrySection none;
  const ProTelemetrySection& pro = metrics.proTelemetry ? *metrics.proTelemetry : none;
  setRows("proRows", pro.rows, &LabelledValue::label);
  setRows("proProcesses", pro.processes, &ProcessFiguresRow::name);
  return shown(metrics);
}

QVariantMap LiveTabModel::networkContent(const SystemPowerState& state) {
  const auto& engine = app_->engine();
  const NetworkSection section =
      networkSection(state, engine.history().value(), engine.totalBytesInSinceStart().value(),
                     engine.totalBytesOutSinceStart().value());
  setRows("topProcesses", section.topProcesses, &NetworkRow::name);
  setRows("interfaces", section.interfaces, &NetworkRow::name);
  return shownMap(section);
}

QVariantMap LiveTabModel::thermalContent(const SystemPowerState& state,
                                         const AppSettings& settings) {
  const ThermalSection section = thermalSection(state, settings);
  setRows("thermalRows", section.rows, &LabelledValue::label);
  setRows("highlights", section.highlights, &LabelledValue::label);
  setRows("sensors", section.sensors, &LabelledValue::label);
  const FanSection fans = fanSection(state.fans);
  setRows("fans", fans.rows, &FanRow::name);
  QVariantMap content = shownMap(section);
  content.insert(QStringLiteral("fans"), shown(fans));
  return content;
}

void LiveTabModel::restartSampler() {
  if (samplerTask_ != nullptr) {
    samplerTask_->cancel();
    samplerTask_.reset();
  }
  if (!isShown() || !app_->defaults().showAdvancedMetrics()) {
    return;
  }
  samplerTask_ = std::make_shared<TaskHandle>();
  asio::co_spawn(app_->context().mainThread, sampleProcesses(*app_, QPointer{this}, samplerTask_),
                 asio::detached);
}

asio::awaitable<void> LiveTabModel::sampleProcesses(QuorvexApp& app, QPointer<LiveTabModel> self,
                                                    std::shared_ptr<TaskHandle> task) {
  while (!task->isCancelled()) {
    if (self != nullptr) {
      self->sampler_.status = ProcessSampler::samplingStatus;
      self->schedule();
    }
    Machine& machine = app.machine();
    auto work = [&machine] {
      return ProcessActivityService{machine.processTable(), machine.clock()}.sampleTopProcesses(
          ProcessActivityService::usualLimit, ProcessActivityService::usualInterval);
    };
    auto activities = co_await runDetached(app.context().workers, std::move(work));
    if (self != nullptr) {
      auto& sampler = self->sampler_;
      sampler.activities = std::move(activities);
      sampler.status = ProcessSampler::statusAfterSampling(sampler.activities);
      self->schedule();
    }
    co_await TaskHandle::sleep(task, *app.context().sleeper,
                               ProcessSampler::sleepSeconds(app.defaults().refreshInterval()));
  }
}

}  // namespace quorvex
