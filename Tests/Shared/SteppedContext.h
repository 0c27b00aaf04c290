#pragma once

#include <asio/io_context.hpp>

#include <exception>
#include <memory>
#include <optional>
#include <utility>

#include "AsyncContext.h"
#include "FakeClock.h"
#include "FakeSleeper.h"

namespace quorvex::testing {

/// A main thread and workers that a test steps by hand, on one thread and a virtual clock.
class SteppedContext {
 public:
  explicit SteppedContext(FakeClock& clock) : clock_(&clock), sleeper_(clock) {}

  [[nodiscard]] AsyncContext context() {
    return {mainThread_.get_executor(), workers_.get_executor(), &sleeper_};
  }
  [[nodiscard]] FakeSleeper& sleeper() { return sleeper_; }

  /// Runs what is ready on the main thread, and what that makes ready there. How many functions.
  std::size_t runMainThread() {
    mainThread_.restart();
    return mainThread_.poll();
  }
  /// Runs one ready function on the main thread. Whether there was one.
  bool stepMainThread() {
    mainThread_.restart();
    return mainThread_.poll_one() == 1;
  }
  /// Runs the next piece of detached work. Whether there was one.
  bool stepWorkers() {
    workers_.restart();
    return workers_.poll_one() == 1;
  }
  /// Runs main thread and workers until both have nothing to do. Time stands still, except for what
  /// the work itself sleeps.
  void settle() {
    do {
      runMainThread();
    } while (stepWorkers());
  }

  /// Lets `seconds` pass: everyone whose sleep ends meanwhile wakes in order and does its work.
  void advance(double seconds) {
    const auto end = clock_->monotonic() + nanosecondsFromSeconds(seconds);
    settle();
    for (auto next = sleeper_.nextDeadline(); next && *next <= end;
         next = sleeper_.nextDeadline()) {
      moveClockTo(*next);
      sleeper_.wakeNext();
      settle();
    }
    moveClockTo(end);
  }

  /// Starts an asynchronous operation; its value appears in the result once it has ended.
  template <typename Value>
  [[nodiscard]] std::shared_ptr<std::optional<Value>> spawn(asio::awaitable<Value> operation) {
    auto result = std::make_shared<std::optional<Value>>();
    asio::co_spawn(mainThread_, std::move(operation),
                   [result](const std::exception_ptr& error, Value value) {
                     if (!error) {
                       *result = std::move(value);
                     }
                   });
    return result;
  }
  /// Runs an asynchronous operation to its end and gives its value.
  template <typename Value>
  [[nodiscard]] Value run(asio::awaitable<Value> operation) {
    const auto result = spawn(std::move(operation));
    settle();
    return result->value();
  }

 private:
  void moveClockTo(std::chrono::nanoseconds time) {
    const std::chrono::duration<double> missing = time - clock_->monotonic();
    clock_->advance(missing.count());
  }

  FakeClock* clock_;
  FakeSleeper sleeper_;
  // Work that is never run is handed back to the main thread, which therefore goes last.
  asio::io_context mainThread_;
  asio::io_context workers_;
};

}  // namespace quorvex::testing
