#pragma once

#include <optional>

#include "Coroutines.h"
#include "PowerSessionRecorder.h"
#include "PowerSessionReport.h"
#include "PowerSessionSummary.h"
#include "QuorvexApp.h"

namespace quorvex {

/// Reads what stored sessions come to without keeping the main thread from its work: a worker opens
/// the store's file for itself. A store that is not on disk is read at once, on the main thread.
/// The results are the recorder's. Main thread; the app outlives all reading.
class SessionReader {
 public:
  using SessionPointer = PowerSessionRecorder::SessionPointer;

  explicit SessionReader(QuorvexApp& app) : app_(&app) {}

  /// Absent when the session or the store is gone.
  [[nodiscard]] asio::awaitable<std::optional<PowerSessionSummary>> summary(
      SessionPointer session) const;
  /// Likewise. A session without samples gives a report that says so.
  [[nodiscard]] asio::awaitable<std::optional<PowerSessionReport>> report(
      SessionPointer session) const;

 private:
  QuorvexApp* app_;
};

}  // namespace quorvex
