#include "LinuxInterfaceTable.h"

#include <cstring>
#include <limits>
#include <utility>

#include "InterfaceMessage.h"
#include "SystemTree.h"

namespace quorvex {

namespace {

/// ARPHRD_LOOPBACK, as the file "type" gives it.
constexpr std::int64_t loopbackType = 772;

template <typename Number>
void write(std::vector<std::byte>& buffer, std::size_t offset, Number number) {
  std::memcpy(buffer.data() + offset, &number, sizeof number);
}

void appendMessage(std::vector<std::byte>& buffer, std::uint16_t index, std::uint64_t bytesIn,
                   std::uint64_t bytesOut) {
  const std::size_t start = buffer.size();
  buffer.resize(start + interface_message::size);
  write(buffer, start + interface_message::lengthOffset,
        static_cast<std::uint16_t>(interface_message::size));
  write(buffer, start + interface_message::typeOffset, interface_message::interfaceType);
  write(buffer, start + interface_message::indexOffset, index);
  write(buffer, start + interface_message::bytesInOffset, bytesIn);
  write(buffer, start + interface_message::bytesOutOffset, bytesOut);
}

}  // namespace

LinuxInterfaceTable::LinuxInterfaceTable(const std::string& sysRoot)
    : folder_(sysRoot + "/class/net") {}

std::optional<std::vector<std::byte>> LinuxInterfaceTable::readInterfaceList() {
  std::optional<FolderOfIndex> interfaces = findInterfaces();
  if (!interfaces) {
    return std::nullopt;
  }
  std::vector<std::byte> buffer;
  for (const auto& [index, interface] : *interfaces) {
    const std::string statistics = folder_ + "/" + interface + "/statistics";
    const auto bytesIn = system_tree::readCounter(statistics + "/rx_bytes");
    const auto bytesOut = system_tree::readCounter(statistics + "/tx_bytes");
    if (bytesIn && bytesOut) {
      appendMessage(buffer, index, *bytesIn, *bytesOut);
    }
  }
  const std::scoped_lock lock{mutex_};
  lastFound_ = std::move(*interfaces);
  return buffer;
}

std::optional<std::string> LinuxInterfaceTable::interfaceName(std::uint16_t index) {
  std::string interface;
  {
    const std::scoped_lock lock{mutex_};
    if (const auto found = lastFound_.find(index); found != lastFound_.end()) {
      interface = found->second;
    }
  }
  // What was found last may have been renamed or removed since.
  if (interface.empty() || indexOf(interface) != index) {
    const FolderOfIndex interfaces = findInterfaces().value_or(FolderOfIndex{});
    const auto found = interfaces.find(index);
    if (found == interfaces.end()) {
      return std::nullopt;
    }
    interface = found->second;
  }
  const bool isLoopback =
      system_tree::readInteger(folder_ + "/" + interface + "/type") == loopbackType;
  return isLoopback ? "lo0" : interface;
}

std::optional<LinuxInterfaceTable::FolderOfIndex> LinuxInterfaceTable::findInterfaces() const {
  const auto names = system_tree::listFolder(folder_);
  if (!names) {
    return std::nullopt;
  }
  FolderOfIndex interfaces;
  for (const std::string& name : *names) {
    if (const auto index = indexOf(name)) {
      interfaces.emplace(*index, name);
    }
  }
  return interfaces;
}

std::optional<std::uint16_t> LinuxInterfaceTable::indexOf(const std::string& interface) const {
  const auto index = system_tree::readInteger(folder_ + "/" + interface + "/ifindex");
  if (!index || *index < 0 || *index > std::numeric_limits<std::uint16_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint16_t>(*index);
}

}  // namespace quorvex
