#pragma once

#include <cstddef>
#include <vector>

#include "InterfaceTable.h"
#include "RecordedClock.h"
#include "Track.h"

namespace quorvex {

/// The recorded interface list, laid out as the kernel's message buffer. Any thread.
class RecordedInterfaceTable final : public InterfaceTable {
 public:
  RecordedInterfaceTable(const MachineFile& file, RecordedClock& clock)
      : interfaces_(&file.interfaces), buffer_(&file.interfaceBuffer), clock_(&clock) {}

  [[nodiscard]] std::optional<std::vector<std::byte>> readInterfaceList() override;
  [[nodiscard]] std::optional<std::string> interfaceName(std::uint16_t index) override;

 private:
  const Track<std::vector<RecordedInterface>>* interfaces_;
  const Track<std::vector<std::byte>>* buffer_;
  RecordedClock* clock_;
};

}  // namespace quorvex
