#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvex {

/// The kernel's interface list. Any thread.
class InterfaceTable {
 public:
  InterfaceTable() = default;
  InterfaceTable(const InterfaceTable&) = delete;
  InterfaceTable& operator=(const InterfaceTable&) = delete;
  virtual ~InterfaceTable() = default;

  /// The list as the kernel lays it out (see InterfaceMessage.h); none when the read fails.
  [[nodiscard]] virtual std::optional<std::vector<std::byte>> readInterfaceList() = 0;
  /// The name of an interface index; none when no interface has it.
  [[nodiscard]] virtual std::optional<std::string> interfaceName(std::uint16_t index) = 0;
};

}  // namespace quorvex
