#pragma once

#include <memory>
#include <vector>

#include "HIDTemperatures.h"
#include "RecordedClock.h"
#include "ThermalReadings.h"
#include "Track.h"

namespace quorvex {

/// The recorded HID temperature sensors. Any thread.
class RecordedHIDTemperatures final : public HIDTemperatures {
 public:
  RecordedHIDTemperatures(const MachineFile& file, RecordedClock& clock)
      : services_(&file.hid), clock_(&clock) {}

  [[nodiscard]] std::unique_ptr<HIDTemperatureClient> open() override;

 private:
  const Track<std::vector<HIDTemperatureService>>* services_;
  RecordedClock* clock_;
};

/// The recorded thermal readings. Any thread.
class RecordedThermalReadings final : public ThermalReadings {
 public:
  RecordedThermalReadings(const MachineFile& file, RecordedClock& clock)
      : thermal_(&file.thermal), clock_(&clock) {}

  [[nodiscard]] std::int64_t thermalState() override { return current().state; }
  [[nodiscard]] std::optional<std::uint64_t> thermalPressure() override {
    return current().pressure;
  }
  [[nodiscard]] bool isLowPowerModeEnabled() override { return current().isLowPowerMode; }

 private:
  [[nodiscard]] RecordedThermal current();

  const Track<RecordedThermal>* thermal_;
  RecordedClock* clock_;
};

}  // namespace quorvex
