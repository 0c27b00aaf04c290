#pragma once

// This system's own header, with the messages of Darwin's interface list.

#include_next <net/if.h>
#include <stdint.h>

#pragma pack(push, 4)

struct if_data64 {
  uint8_t ifi_unused0[64];
  uint64_t ifi_ibytes;
  uint64_t ifi_obytes;
  uint8_t ifi_unused1[48];
};

#pragma pack(pop)

struct if_msghdr2 {
  uint16_t ifm_msglen;
  uint8_t ifm_version;
  uint8_t ifm_type;
  int32_t ifm_unused0[2];
  uint16_t ifm_index;
  int32_t ifm_unused1[4];
  struct if_data64 ifm_data;
};
