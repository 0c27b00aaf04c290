#pragma once

#include <optional>
#include <string>
#include <vector>

#include "PowerMetrics.h"

namespace quorvex {

/// Compares one silicon reading with limits and says in words which are exceeded. It keeps no
/// history: cooldown, hysteresis and notification are the caller's. A plain value; any thread.
struct PowerBudgetMonitor {
  /// One exceeded limit.
  struct Alert {
    std::string component;        ///< "CPU", "GPU", "ANE" or "System"
    double currentWatts = 0.0;    ///< the reading in watts, not rounded
    double thresholdWatts = 0.0;  ///< the limit in watts, not rounded
    std::string message;          ///< text for the user, watts to one decimal

    bool operator==(const Alert&) const = default;
  };

  // Limits in watts; an absent one switches its check off.
  std::optional<double> cpuThreshold;
  std::optional<double> gpuThreshold;
  std::optional<double> aneThreshold;
  std::optional<double> systemThreshold;

  /// An alert for each reading strictly above its limit, always in the order CPU, GPU, ANE, System.
  [[nodiscard]] std::vector<Alert> check(const PowerMetrics& metrics) const;

  bool operator==(const PowerBudgetMonitor&) const = default;
};

}  // namespace quorvex
