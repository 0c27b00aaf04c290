#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

#include "AsyncContext.h"
#include "DefaultsModel.h"
#include "Machine.h"
#include "MetricsEngine.h"
#include "PowerSessionRecorder.h"
#include "SessionRecordingCoordinator.h"

namespace quorvex {

/// The entry object of the app role: makes the three long-lived objects that every window shares,
/// from the user's settings and the session store. They live as long as the process. Main thread.
class QuorvexApp {
 public:
  /// The main thread waits, so it is short. A sample that cannot be saved goes with the next.
  static constexpr std::chrono::milliseconds usualStoreBusyTimeout{250};

  /// Adopts the session that the store has as active and goes on recording it. A store that cannot
  /// be opened gives way, silently, to one that ends with the process; when not even that can be
  /// made, the process ends with a fatal error. The machine and what runs the context's work
  /// outlive the app. `storeBusyTimeout`: how long another process may keep the store.
  QuorvexApp(Machine& machine, const AsyncContext& context,
             std::chrono::milliseconds storeBusyTimeout = usualStoreBusyTimeout);
  QuorvexApp(const QuorvexApp&) = delete;
  QuorvexApp& operator=(const QuorvexApp&) = delete;

  [[nodiscard]] Machine& machine() const { return *machine_; }
  [[nodiscard]] const AsyncContext& context() const { return context_; }
  [[nodiscard]] DefaultsModel& defaults() { return defaults_; }
  /// The file of the session store; absent when sessions end with the process.
  [[nodiscard]] const std::optional<std::filesystem::path>& storeFile() const { return storeFile_; }
  [[nodiscard]] MetricsEngine& engine() const { return *engine_; }
  [[nodiscard]] PowerSessionRecorder& sessionRecorder() const { return *sessionRecorder_; }
  [[nodiscard]] SessionRecordingCoordinator& sessionRecordingCoordinator() const {
    return *sessionRecordingCoordinator_;
  }

 private:
  [[nodiscard]] std::shared_ptr<PowerSessionStore> openStore(std::chrono::milliseconds busyTimeout);

  Machine* machine_;
  AsyncContext context_;
  DefaultsModel defaults_;
  std::optional<std::filesystem::path> storeFile_;
  std::shared_ptr<MetricsEngine> engine_;
  std::shared_ptr<PowerSessionRecorder> sessionRecorder_;
  std::shared_ptr<SessionRecordingCoordinator> sessionRecordingCoordinator_;
};

}  // namespace quorvex
