#pragma once

#include "AsyncSleeper.h"
#include "Coroutines.h"

namespace quorvex {

/// Where the asynchronous work of a main-thread object runs. Executors and sleeper outlive every
/// object that is given them, and the workers end before the main thread's executor goes: what they
/// had not begun by then returns to it to be destroyed.
struct AsyncContext {
  asio::any_io_executor mainThread;  ///< runs one function at a time, on the main thread
  asio::any_io_executor workers;     ///< runs what blocks, on threads of its own
  AsyncSleeper* sleeper = nullptr;   ///< wakes on the main thread
};

}  // namespace quorvex
