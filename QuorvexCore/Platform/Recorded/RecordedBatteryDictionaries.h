#pragma once

#include <optional>
#include <vector>

#include "BatteryDictionaries.h"
#include "RecordedClock.h"
#include "Track.h"

namespace quorvex {

/// The recorded battery controller and power sources. Any thread.
class RecordedBatteryDictionaries final : public BatteryDictionaries {
 public:
  RecordedBatteryDictionaries(const MachineFile& file, RecordedClock& clock)
      : registry_(&file.registry), powerSources_(&file.powerSources), clock_(&clock) {}

  [[nodiscard]] std::optional<Dictionary> registry() override;
  [[nodiscard]] std::optional<Dictionary> firstPowerSource() override;

 private:
  const Track<Dictionary>* registry_;
  const Track<std::vector<std::optional<Dictionary>>>* powerSources_;
  RecordedClock* clock_;
};

}  // namespace quorvex
