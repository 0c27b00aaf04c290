#pragma once

#include <asio/execution_context.hpp>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <atomic>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "Coroutines.h"

namespace quorvex {

/// The main thread as asynchronous work sees it: every function is an event in the queue of the
/// thread that the context was made on, so that there is no second loop and nothing polls.
/// Functions run in the order in which they were handed in, one at a time and never within the call
/// that hands them in. Those that have not run when the context goes are destroyed on that thread.
///
/// Functions may be handed in from any thread until the context goes. They throw nothing.
class QtExecutionContext final : public asio::execution_context {
 public:
  class Executor;

  QtExecutionContext() = default;
  QtExecutionContext(const QtExecutionContext&) = delete;
  QtExecutionContext& operator=(const QtExecutionContext&) = delete;
  ~QtExecutionContext();

  [[nodiscard]] Executor get_executor();  // NOLINT(readability-identifier-naming): Asio's name

 private:
  class Task : public QEvent {
   public:
    explicit Task(QtExecutionContext& context) : QEvent(eventType()), waiting_(&context.waiting_) {
      ++*waiting_;
    }
    ~Task() override { --*waiting_; }
    virtual void run() = 0;
    static Type eventType();

   private:
    std::atomic<std::size_t>* waiting_;
  };

  template <typename Function>
  class TaskOf final : public Task {
   public:
    TaskOf(QtExecutionContext& context, Function function)
        : Task(context), function_(std::move(function)) {}
    void run() override { std::move(function_)(); }

   private:
    Function function_;
  };

  class Receiver final : public QObject {
   public:
    bool event(QEvent* event) override;
  };

  void post(std::unique_ptr<Task> task) {
    // The queue takes ownership.
    QCoreApplication::postEvent(&receiver_, task.release());
  }

  std::atomic<std::size_t> waiting_ = 0;  ///< functions in the queue
  Receiver receiver_;
};

/// Hands functions to a `QtExecutionContext`, which outlives it.
class QtExecutionContext::Executor {
 public:
  explicit Executor(QtExecutionContext& context) : context_(&context) {}

  template <typename Function>
  void execute(Function&& function) const {
    context_->post(std::make_unique<TaskOf<std::decay_t<Function>>>(
        *context_, std::forward<Function>(function)));
  }

  [[nodiscard]] asio::execution_context& query(asio::execution::context_t) const noexcept {
    return *context_;
  }
  [[nodiscard]] static constexpr asio::execution::blocking_t query(
      asio::execution::blocking_t) noexcept {
    return asio::execution::blocking.never;
  }
  [[nodiscard]] Executor require(asio::execution::blocking_t::never_t) const noexcept {
    return *this;
  }

  bool operator==(const Executor&) const noexcept = default;

 private:
  QtExecutionContext* context_;
};

inline QtExecutionContext::Executor QtExecutionContext::get_executor() {
  return Executor{*this};
}

}  // namespace quorvex
