#pragma once

#include "InterfaceTable.h"

namespace quorvex {

/// The kernel's interface list with 64-bit counters (NET_RT_IFLIST2). Any thread.
class MacInterfaceTable final : public InterfaceTable {
 public:
  [[nodiscard]] std::optional<std::vector<std::byte>> readInterfaceList() override;
  [[nodiscard]] std::optional<std::string> interfaceName(std::uint16_t index) override;
};

}  // namespace quorvex
