#pragma once

#include <type_traits>
#include <utility>

#include "Coroutines.h"

namespace quorvex {

/// Runs `work` on one of the `workers` and resumes the awaiting coroutine with its value, on the
/// coroutine's own executor. Nothing interrupts work that has begun. `work` takes and returns
/// values only and throws nothing; it is destroyed on the worker's thread.
template <typename Work>
[[nodiscard]] asio::awaitable<std::invoke_result_t<Work&>> runDetached(
    asio::any_io_executor workers, Work work) {
  using Result = std::invoke_result_t<Work&>;
  const auto begin = [](auto handler, const asio::any_io_executor& pool, Work task) {
    // Counts as work of the coroutine's executor, which must not run dry while it waits.
    auto home = asio::prefer(asio::get_associated_executor(handler),
                             asio::execution::outstanding_work.tracked);
    asio::post(pool, [handler = std::move(handler), home = std::move(home),
                      task = std::move(task)]() mutable {
      asio::post(home, [handler = std::move(handler), result = task()]() mutable {
        std::move(handler)(std::move(result));
      });
    });
  };
  return asio::async_initiate<const asio::use_awaitable_t<>, void(Result)>(
      begin, asio::use_awaitable, std::move(workers), std::move(work));
}

}  // namespace quorvex
