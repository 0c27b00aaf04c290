#include "TaskHandle.h"

#include <utility>

namespace quorvex {

void TaskHandle::cancel() {
  isCancelled_ = true;
  wake();
}

void TaskHandle::wake() {
  const std::unique_ptr<PendingSleep> ended = std::move(pendingSleep_);
  if (const auto resume = std::exchange(resume_, nullptr)) {
    resume();
  }
}

asio::awaitable<void> TaskHandle::sleep(std::shared_ptr<TaskHandle> handle, AsyncSleeper& sleeper,
                                        double seconds) {
  const auto begin = [](auto resumption, const std::shared_ptr<TaskHandle>& task,
                        AsyncSleeper* taskSleeper, double length) {
    // A function object must be copyable; a resumption is not.
    auto shared = std::make_shared<decltype(resumption)>(std::move(resumption));
    task->resume_ = [shared = std::move(shared)] {
      // The task goes on in a turn of its own and not within whatever cancels or wakes it.
      asio::post(asio::get_associated_executor(*shared), [shared] {
        auto& taken = *shared;
        std::move(taken)();
      });
    };
    if (task->isCancelled_) {
      task->wake();
      return;
    }
    task->pendingSleep_ = taskSleeper->sleep(length, [weak = std::weak_ptr{task}] {
      if (const auto woken = weak.lock()) {
        woken->wake();
      }
    });
  };
  return asio::async_initiate<const asio::use_awaitable_t<>, void()>(
      begin, asio::use_awaitable, std::move(handle), &sleeper, seconds);
}

}  // namespace quorvex
