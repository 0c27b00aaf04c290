#pragma once

#include <asio/thread_pool.hpp>

#include "AsyncContext.h"
#include "Clock.h"
#include "QtExecutor.h"
#include "QtSleeper.h"

namespace quorvex {

/// Where the app's asynchronous work runs: the application's event loop, and a few threads for what
/// blocks. Made on the main thread after the application object. The objects that are given its
/// context go before it, the machine after it.
class AppRuntime {
 public:
  /// `clock` outlives the runtime.
  explicit AppRuntime(Clock& clock) : sleeper_(clock), workers_(workerCount) {}
  AppRuntime(const AppRuntime&) = delete;
  AppRuntime& operator=(const AppRuntime&) = delete;

  /// Waits for work that has begun; what has not begun is never run.
  ~AppRuntime() {
    workers_.stop();
    workers_.join();
  }

  [[nodiscard]] AsyncContext context() {
    return {mainThread_.get_executor(), workers_.get_executor(), &sleeper_};
  }

 private:
  /// A poll, the extras of a sample (which may take seconds), a privileged read and a report may be
  /// under way at once.
  static constexpr std::size_t workerCount = 4;

  // Work that is never run is handed back to the main thread, which therefore goes last.
  QtExecutionContext mainThread_;
  QtSleeper sleeper_;
  asio::thread_pool workers_;
};

}  // namespace quorvex
