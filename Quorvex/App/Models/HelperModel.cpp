#include "HelperModel.h"

#include <QDir>
#include <QFileInfo>
#include <optional>
#include <utility>

#include "DetachedWork.h"
#include "HelperFlow.h"
#include "ProTelemetryService.h"
#include "ShownDashboard.h"

namespace quorvex {

namespace {

ProTelemetryService serviceOf(Machine& machine) {
  return {machine.fileAttributes(), machine.childProcesses(), machine.clock()};
}

/// The tool among the app's resources: in the bundle's, or beside the program.
std::optional<std::string> bundledHelper(const QString& programFolder) {
  const QDir folder(programFolder);
  const QString name = QString::fromLatin1(ProTelemetryService::bundledHelperName);
  for (const QString& place : {QStringLiteral("../Resources/") + name, name}) {
    if (const QFileInfo file(folder, place); file.isFile()) {
      return file.canonicalFilePath().toStdString();
    }
  }
  return std::nullopt;
}

}  // namespace

HelperModel::HelperModel(QuorvexApp& app, QString programFolder, QObject* parent)
    : LiveModel(parent),
      app_(&app),
      programFolder_(std::move(programFolder)),
      times_(userLocaleForDates()) {
  observe(app.sessionRecordingCoordinator().latestProTelemetry());
  // What went wrong while nobody looked is told too.
  const auto& lastMessage = app.sessionRecordingCoordinator().lastMessage();
  state_.message = lastMessage.value();
  lastMessage_ = lastMessage.subscribe([this](const std::optional<std::string>& message) {
    state_.message = message;
    schedule();
  });
  connect(&app.defaults(), &DefaultsModel::proTelemetryEnabledChanged, this, [this] {
    schedule();
    restartLoop();
  });
  refresh();
  readStatus();
  restartLoop();
}

HelperModel::~HelperModel() {
  if (loopTask_ != nullptr) {
    loopTask_->cancel();
  }
}

void HelperModel::install() {
  const auto source = bundledHelper(programFolder_);
  if (!source) {
    apply(HelperFlow::bundledHelperMissing(current()));
    return;
  }
  apply(HelperFlow::installing(current()));
  asio::co_spawn(app_->context().mainThread, installNow(*app_, QPointer{this}, *source),
                 asio::detached);
}

void HelperModel::refreshStatus() {
  readStatus();
  if (app_->defaults().proTelemetryEnabled()) {
    asio::co_spawn(app_->context().mainThread, sampleNow(*app_, QPointer{this}), asio::detached);
  }
}

void HelperModel::tellExportFailure(std::string_view error) {
  apply(HelperFlow::exportFailed(current(), error));
}

void HelperModel::readStatus() {
  asio::co_spawn(app_->context().mainThread, readStatusNow(*app_, QPointer{this}), asio::detached);
}

void HelperModel::restartLoop() {
  if (loopTask_ != nullptr) {
    loopTask_->cancel();
    loopTask_.reset();
  }
  if (!app_->defaults().proTelemetryEnabled()) {
    return;
  }
  loopTask_ = std::make_shared<TaskHandle>();
  asio::co_spawn(app_->context().mainThread, loop(*app_, QPointer{this}, loopTask_),
                 asio::detached);
}

asio::awaitable<void> HelperModel::readStatusNow(QuorvexApp& app, QPointer<HelperModel> self) {
  Machine& machine = app.machine();
  auto work = [&machine] { return serviceOf(machine).helperStatus(); };
  auto status = co_await runDetached(app.context().workers, std::move(work));
  if (self != nullptr) {
    self->apply(HelperFlow::statusRead(self->current(), std::move(status)));
  }
}

asio::awaitable<void> HelperModel::installNow(QuorvexApp& app, QPointer<HelperModel> self,
                                              std::string source) {
  Machine& machine = app.machine();
  auto work = [&machine, source = std::move(source)] {
    const ProTelemetryService service = serviceOf(machine);
    auto installed = service.installBundledHelper(source);
    return std::pair{std::move(installed), service.helperStatus()};
  };
  auto [result, status] = co_await runDetached(app.context().workers, std::move(work));
  if (self != nullptr) {
    self->apply(HelperFlow::installed(self->current(), result, std::move(status)));
  }
}

asio::awaitable<void> HelperModel::sampleNow(QuorvexApp& app, QPointer<HelperModel> self) {
  const auto snapshot = co_await app.sessionRecordingCoordinator().sampleProTelemetryNow();
  if (self != nullptr) {
    self->apply(HelperFlow::sampled(self->current(), snapshot));
  }
}

asio::awaitable<void> HelperModel::loop(QuorvexApp& app, QPointer<HelperModel> self,
                                        std::shared_ptr<TaskHandle> task) {
  while (!task->isCancelled()) {
    co_await sampleNow(app, self);
    co_await TaskHandle::sleep(task, *app.context().sleeper, HelperFlow::sampleSeconds);
    if (!task->isCancelled() && !app.defaults().proTelemetryEnabled()) {
      co_return;
    }
  }
}

HelperControlsState HelperModel::current() const {
  HelperControlsState state = state_;
  state.proTelemetryEnabled = app_->defaults().proTelemetryEnabled();
  const auto& snapshot = app_->sessionRecordingCoordinator().latestProTelemetry().value();
  state.lastSampledAt = snapshot ? std::optional{snapshot->sampledAt} : std::nullopt;
  return state;
}

void HelperModel::apply(HelperControlsState next) {
  const bool isEnabled = next.proTelemetryEnabled;
  state_ = std::move(next);
  app_->defaults().setProTelemetryEnabled(isEnabled);
  schedule();
}

QVariantMap HelperModel::makeContent() {
  return shownMap(helperControls(current(), times_));
}

}  // namespace quorvex
