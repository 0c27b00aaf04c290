#include "QuorvexApp.h"

#include <utility>

#include "AppScenes.h"
#include "AppVersion.h"
#include "FatalError.h"
#include "PowerSessionStore.h"
#include "RefreshInterval.h"

namespace quorvex {

namespace {

constexpr std::int64_t historyLimit = 60;
constexpr double processSampleInterval = 10.0;
constexpr double proTelemetrySampleInterval = 10.0;

}  // namespace

QuorvexApp::QuorvexApp(Machine& machine, const AsyncContext& context,
                       std::chrono::milliseconds storeBusyTimeout)
    : machine_(&machine),
      context_(context),
      defaults_(machine.userDefaults()),
      engine_(MetricsEngine::make(
          machine, context, normalisedRefreshInterval(defaults_.refreshInterval()), historyLimit)) {
  engine_->setLowImpactMode(defaults_.lowImpactMode());
  sessionRecorder_ = PowerSessionRecorder::make(openStore(storeBusyTimeout), machine,
                                                context.workers, processSampleInterval);
  sessionRecordingCoordinator_ = SessionRecordingCoordinator::make(
      engine_, sessionRecorder_, machine, context, proTelemetrySampleInterval);
}

std::shared_ptr<PowerSessionStore> QuorvexApp::openStore(std::chrono::milliseconds busyTimeout) {
  Clock& clock = machine_->clock();
  const auto file = PowerSessionStore::defaultStoreURL();
  auto onDisk = PowerSessionStore::open(
      {.appVersion = AppVersion::shortText, .storeURL = file, .busyTimeout = busyTimeout}, clock);
  if (onDisk) {
    storeFile_ = file;
    return std::move(*onDisk);
  }
  auto inMemory =
      PowerSessionStore::open({.appVersion = AppVersion::shortText, .inMemory = true}, clock);
  if (!inMemory) {
    fatalError(AppScenes::storeFailureMessage(inMemory.error().description));
  }
  return std::move(*inMemory);
}

}  // namespace quorvex
