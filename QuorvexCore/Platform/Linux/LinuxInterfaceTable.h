#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "InterfaceTable.h"

namespace quorvex {

/// The interfaces of /sys/class/net with their byte counters, laid out as interface messages in the
/// order of their indices. The loopback interface goes by the name "lo0". An interface is left out
/// when its index or one of its counters cannot be read, or when its index needs more than the
/// message's 16 bits. Any thread.
class LinuxInterfaceTable final : public InterfaceTable {
 public:
  explicit LinuxInterfaceTable(const std::string& sysRoot);

  /// None when the system has no network class.
  [[nodiscard]] std::optional<std::vector<std::byte>> readInterfaceList() override;
  [[nodiscard]] std::optional<std::string> interfaceName(std::uint16_t index) override;

 private:
  using FolderOfIndex = std::map<std::uint16_t, std::string>;

  [[nodiscard]] std::optional<FolderOfIndex> findInterfaces() const;
  [[nodiscard]] std::optional<std::uint16_t> indexOf(const std::string& interface) const;

  std::string folder_;
  std::mutex mutex_;
  /// The interfaces of the last list: one lookup per message need not search all folders again.
  FolderOfIndex lastFound_;
};

}  // namespace quorvex
