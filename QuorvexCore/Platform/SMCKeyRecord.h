#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quorvex {

/// The wire format of one SMC call, input and output alike: 80 bytes in the host's little-endian
/// order. Fields that the program does not use stay zero.
struct SMCKeyRecord {
  std::uint32_t key = 0;                       ///< four-character code
  std::array<std::uint8_t, 6> version{};       ///< zero on input
  std::array<std::uint8_t, 2> padding0{};      ///< zero
  std::array<std::uint8_t, 16> powerLimits{};  ///< zero on input
  std::uint32_t dataSize = 0;                  ///< bytes of the key's value
  std::uint32_t dataType = 0;                  ///< four-character code of the value's type
  std::uint8_t dataAttributes = 0;             ///< zero on input, never used
  std::array<std::uint8_t, 3> padding1{};      ///< zero
  std::uint8_t result = 0;                     ///< zero on input, never inspected
  std::uint8_t status = 0;                     ///< zero on input, never inspected
  std::uint8_t command = 0;                    ///< one of the commands below
  std::uint8_t padding2 = 0;                   ///< zero
  std::uint32_t extra = 0;                     ///< zero on input
  std::array<std::uint8_t, 32> bytes{};        ///< the value, at most 32 bytes

  static constexpr std::uint8_t readBytesCommand = 5;
  static constexpr std::uint8_t readKeyInfoCommand = 9;

  bool operator==(const SMCKeyRecord&) const = default;
};

static_assert(sizeof(SMCKeyRecord) == 80);
static_assert(offsetof(SMCKeyRecord, version) == 4);
static_assert(offsetof(SMCKeyRecord, powerLimits) == 12);
static_assert(offsetof(SMCKeyRecord, dataSize) == 28);
static_assert(offsetof(SMCKeyRecord, dataType) == 32);
static_assert(offsetof(SMCKeyRecord, dataAttributes) == 36);
static_assert(offsetof(SMCKeyRecord, result) == 40);
static_assert(offsetof(SMCKeyRecord, status) == 41);
static_assert(offsetof(SMCKeyRecord, command) == 42);
static_assert(offsetof(SMCKeyRecord, extra) == 44);
static_assert(offsetof(SMCKeyRecord, bytes) == 48);

}  // namespace quorvex
