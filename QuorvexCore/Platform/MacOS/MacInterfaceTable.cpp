#include "MacInterfaceTable.h"

#include <net/if.h>
#include <net/route.h>
#include <sys/socket.h>
#include <sys/sysctl.h>

#include <array>

#include "InterfaceMessage.h"

namespace quorvex {

namespace {

static_assert(CTL_NET == 4 && PF_ROUTE == 17 && NET_RT_IFLIST2 == 6);
static_assert(RTM_IFINFO2 == interface_message::interfaceType);
static_assert(IF_NAMESIZE == 16);
static_assert(sizeof(if_msghdr2) == interface_message::size);
static_assert(offsetof(if_msghdr2, ifm_msglen) == interface_message::lengthOffset);
static_assert(offsetof(if_msghdr2, ifm_type) == interface_message::typeOffset);
static_assert(offsetof(if_msghdr2, ifm_index) == interface_message::indexOffset);
static_assert(offsetof(if_msghdr2, ifm_data.ifi_ibytes) == interface_message::bytesInOffset);
static_assert(offsetof(if_msghdr2, ifm_data.ifi_obytes) == interface_message::bytesOutOffset);
static_assert(sizeof(if_msghdr2::ifm_msglen) == 2 && sizeof(if_msghdr2::ifm_type) == 1 &&
              sizeof(if_msghdr2::ifm_index) == 2);
static_assert(sizeof(if_data64::ifi_ibytes) == 8 && sizeof(if_data64::ifi_obytes) == 8);

/// Whether the kernel answered; `size` is then the size of its answer.
bool readList(void* buffer, std::size_t& size) {
  std::array<int, 6> name{CTL_NET, PF_ROUTE, 0, 0, NET_RT_IFLIST2, 0};
  return sysctl(name.data(), name.size(), buffer, &size, nullptr, 0) == 0 && size > 0;
}

}  // namespace

std::optional<std::vector<std::byte>> MacInterfaceTable::readInterfaceList() {
  std::size_t size = 0;
  if (!readList(nullptr, size)) {
    return std::nullopt;
  }
  std::vector<std::byte> buffer(size);
  if (!readList(buffer.data(), size)) {
    return std::nullopt;
  }
  buffer.resize(size);
  return buffer;
}

std::optional<std::string> MacInterfaceTable::interfaceName(std::uint16_t index) {
  std::array<char, IF_NAMESIZE> name{};
  if (if_indextoname(index, name.data()) == nullptr) {
    return std::nullopt;
  }
  return name.data();
}

}  // namespace quorvex
