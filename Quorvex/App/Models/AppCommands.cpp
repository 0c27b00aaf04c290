#include "AppCommands.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "DetachedWork.h"
#include "JSONFormatter.h"
#include "ProcessActivityService.h"
#include "RefreshInterval.h"

namespace quorvex {

namespace {

/// What a report is made of, as values, so that it can be made on a worker.
struct ReportMaterial {
  SystemPowerState state;
  std::vector<SystemPowerState> history;
  double refreshInterval = 0.0;
  std::optional<ProTelemetrySnapshot> proTelemetry;
};

ReportMaterial materialOf(QuorvexApp& app, bool withProTelemetry) {
  ReportMaterial material{.state = app.engine().currentState().value(),
                          .history = app.engine().history().value(),
                          .refreshInterval = app.defaults().refreshInterval(),
                          .proTelemetry = std::nullopt};
  if (withProTelemetry) {
    material.proTelemetry = app.sessionRecordingCoordinator().latestProTelemetry().value();
  }
  return material;
}

asio::awaitable<void> copyWhenSampled(QuorvexApp& app, QPointer<AppCommands> commands,
                                      std::optional<ReportMaterial> material) {
  Machine& machine = app.machine();
  auto activities = co_await runDetached(app.context().workers, [&machine] {
    return ProcessActivityService{machine.processTable(), machine.clock()}.sampleTopProcesses(
        ProcessActivityService::usualLimit, ProcessActivityService::usualInterval);
  });
  if (!material) {
    material = materialOf(app, true);
  }
  auto format = [&machine, contents = std::move(*material), rows = std::move(activities)] {
    return JSONFormatter::formatSystemReport(contents.state,
                                             {.history = contents.history,
                                              .refreshInterval = contents.refreshInterval,
                                              .processActivities = rows,
                                              .proTelemetry = contents.proTelemetry,
                                              .generatedAt = machine.clock().now()});
  };
  const std::string text = co_await runDetached(app.context().workers, std::move(format));
  auto* pasteboard = QGuiApplication::clipboard();
  pasteboard->clear();
  pasteboard->setText(QString::fromStdString(text));
  if (commands != nullptr) {
    emit commands->reportCopied();
  }
}

}  // namespace

AppCommands::AppCommands(QuorvexApp& app, QObject* parent) : QObject(parent), app_(&app) {}

void AppCommands::refresh() {
  // Assigning its own interval makes a running engine poll at once; a resting one begins.
  auto& engine = app_->engine();
  if (engine.isRunning().value()) {
    engine.setInterval(engine.interval().value());
  } else {
    engine.start();
  }
}

void AppCommands::applyRefreshInterval(double seconds) {
  auto& defaults = app_->defaults();
  auto& engine = app_->engine();
  const auto change =
      quorvex::applyRefreshInterval(seconds, defaults.refreshInterval(), engine.interval().value());
  if (change.stored) {
    defaults.setRefreshInterval(*change.stored);
  }
  // Who hears of the new setting may have applied it already.
  if (change.engine && engine.interval().value() != *change.engine) {
    engine.setInterval(*change.engine);
  }
}

void AppCommands::applyLowImpactMode() {
  auto& engine = app_->engine();
  const bool isOn = app_->defaults().lowImpactMode();
  if (engine.lowImpactMode().value() != isOn) {
    engine.setLowImpactMode(isOn);
  }
}

void AppCommands::startSession(const QString& title) {
  // As the engine takes it, also while nobody has applied what is stored.
  const double interval = app_->defaults().refreshInterval();
  app_->sessionRecordingCoordinator().start(title.toStdString(), PowerSessionSource::app,
                                            normalisedRefreshInterval(interval),
                                            app_->machine().clock().now());
  emit sessionsChanged();
}

void AppCommands::stopSession() {
  app_->sessionRecordingCoordinator().stop(app_->machine().clock().now());
  emit sessionsChanged();
}

void AppCommands::copyReport(ReportMoment moment) {
  auto material = moment == ReportMoment::now ? std::optional{materialOf(*app_, false)}
                                              : std::optional<ReportMaterial>{};
  asio::co_spawn(app_->context().mainThread,
                 copyWhenSampled(*app_, QPointer{this}, std::move(material)), asio::detached);
}

}  // namespace quorvex
