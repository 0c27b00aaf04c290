#pragma once

#include <mutex>

#include "DynamicLoader.h"
#include "ThermalReadings.h"

namespace quorvex {

/// The process information service and the system's notification of thermal pressure. Any thread.
class MacThermalReadings final : public ThermalReadings {
 public:
  /// The loader must outlive this object. The service's framework is loaded at the first use.
  explicit MacThermalReadings(DynamicLoader& loader) : loader_(&loader) {}

  [[nodiscard]] std::int64_t thermalState() override;
  /// Registers and cancels at each read; no token is kept.
  [[nodiscard]] std::optional<std::uint64_t> thermalPressure() override;
  [[nodiscard]] bool isLowPowerModeEnabled() override;

 private:
  /// The service's object; null when the system has none. Borrowed from the caller's pool.
  [[nodiscard]] void* processInfo();

  DynamicLoader* loader_;
  std::once_flag isLoaded_;
};

}  // namespace quorvex
