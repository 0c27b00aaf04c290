#pragma once

#include <memory>
#include <vector>

#include "EnergyLibrary.h"
#include "RecordedClock.h"
#include "Track.h"

namespace quorvex {

/// The recorded energy library. It has one group of channels; a delta carries the channels of the
/// frame at the moment when it is formed, and a sample by itself carries none. Any thread.
class RecordedEnergyLibrary final : public EnergyLibrary {
 public:
  RecordedEnergyLibrary(const MachineFile& file, RecordedClock& clock)
      : channels_(&file.energyChannels), clock_(&clock) {}

  [[nodiscard]] std::unique_ptr<EnergyEntryPoints> open() override;

 private:
  const Track<std::vector<RecordedEnergyChannel>>* channels_;
  RecordedClock* clock_;
};

}  // namespace quorvex
