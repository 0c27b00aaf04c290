#include "PowerBudgetMonitor.h"

#include <fmt/format.h>

#include <array>

namespace quorvex {

std::vector<PowerBudgetMonitor::Alert> PowerBudgetMonitor::check(
    const PowerMetrics& metrics) const {
  struct Limit {
    const char* component;
    double watts;
    std::optional<double> threshold;
  };
  const std::array limits{Limit{"CPU", metrics.cpuPower, cpuThreshold},
                          Limit{"GPU", metrics.gpuPower, gpuThreshold},
                          Limit{"ANE", metrics.anePower, aneThreshold},
                          Limit{"System", metrics.systemPower, systemThreshold}};
  std::vector<Alert> alerts;
  for (const auto& [component, watts, threshold] : limits) {
    if (threshold && watts > *threshold) {
      alerts.push_back({component, watts, *threshold,
                        fmt::format("{} power ({:.1f}W) exceeds threshold ({:.1f}W)", component,
                                    watts, *threshold)});
    }
  }
  return alerts;
}

}  // namespace quorvex
