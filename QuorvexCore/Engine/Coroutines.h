#pragma once

// The one place through which the program includes Asio.
//
// Clang has C++20 coroutines long before it announces them by the standard's macro, and Asio looks
// for the macro only.
#if defined(__clang__) && !defined(__cpp_impl_coroutine)
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
#define __cpp_impl_coroutine 201902L
#endif
#if defined(__clang__) && !defined(ASIO_HAS_CO_AWAIT)
#define ASIO_HAS_CO_AWAIT 1
#endif

#include <asio/any_io_executor.hpp>
#include <asio/associated_executor.hpp>
#include <asio/async_result.hpp>
#include <asio/awaitable.hpp>
#include <asio/co_spawn.hpp>
#include <asio/detached.hpp>
#include <asio/post.hpp>
#include <asio/prefer.hpp>
#include <asio/use_awaitable.hpp>
