#pragma once

#include <QPointer>
#include <memory>

#include "AdvancedMetrics.h"
#include "AppSettings.h"
#include "LiveModel.h"
#include "QuorvexApp.h"
#include "TaskHandle.h"

namespace quorvex {

/// The measuring sections of the dashboard's live tab: battery, power breakdown, network, thermal
/// and fans. `content` has them under `sections` (their order) and their own names; what changes
/// row by row is in lists. While advanced metrics are wanted and seen, it samples the processes.
/// Main thread.
class LiveTabModel : public LiveModel {
  Q_OBJECT

 public:
  /// The app outlives the model.
  explicit LiveTabModel(QuorvexApp& app, QObject* parent = nullptr);
  ~LiveTabModel() override;

 protected:
  QVariantMap makeContent() override;

 private:
  QVariantMap breakdownContent(const SystemPowerState& state);
  QVariant advancedContent(const SystemPowerState& state);
  QVariantMap networkContent(const SystemPowerState& state);
  QVariantMap thermalContent(const SystemPowerState& state, const AppSettings& settings);
  void restartSampler();
  static asio::awaitable<void> sampleProcesses(QuorvexApp& app, QPointer<LiveTabModel> self,
                                               std::shared_ptr<TaskHandle> task);

  QuorvexApp* app_;
  ProcessSamplerState sampler_;
  std::shared_ptr<TaskHandle> samplerTask_;
};

}  // namespace quorvex
