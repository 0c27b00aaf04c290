#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ThermalReadings.h"

namespace quorvex::testing {

/// The three thermal readings as a test sets them; a cool machine at first.
/// Set up before reads begin; then one thread.
class FakeThermalReadings final : public ThermalReadings {
 public:
  std::int64_t state = 0;
  std::optional<std::uint64_t> pressure = 0;  ///< none: the notification fails
  bool lowPowerMode = false;

  /// Every call in order, by the names of the port's functions.
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }

  std::int64_t thermalState() override {
    log_.emplace_back("thermalState");
    return state;
  }
  std::optional<std::uint64_t> thermalPressure() override {
    log_.emplace_back("thermalPressure");
    return pressure;
  }
  bool isLowPowerModeEnabled() override {
    log_.emplace_back("isLowPowerModeEnabled");
    return lowPowerMode;
  }

 private:
  std::vector<std::string> log_;
};

}  // namespace quorvex::testing
