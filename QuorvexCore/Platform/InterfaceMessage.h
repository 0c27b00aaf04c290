#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvex::interface_message {

/// Layout of one message of the kernel's interface list (`if_msghdr2` of NET_RT_IFLIST2): byte
/// offsets of the fields that the program uses. Numbers are in the host's little-endian order.
inline constexpr std::size_t lengthOffset = 0;      ///< 2 bytes: length of the whole message
inline constexpr std::size_t typeOffset = 3;        ///< 1 byte
inline constexpr std::size_t indexOffset = 12;      ///< 2 bytes: interface index
inline constexpr std::size_t bytesInOffset = 96;    ///< 8 bytes: total bytes received
inline constexpr std::size_t bytesOutOffset = 104;  ///< 8 bytes: total bytes sent
inline constexpr std::size_t size = 160;            ///< of the whole record
inline constexpr std::uint8_t interfaceType = 18;   ///< RTM_IFINFO2, the wanted message

}  // namespace quorvex::interface_message
