#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "NetworkSnapshot.h"
#include "RecordFields.h"

namespace quorvex {

/// The stored form of one interface; counters in bytes, rates in bytes per second.
struct NetworkInterfaceStatsDTO {
  NetworkInterfaceStatsDTO() = default;
  explicit NetworkInterfaceStatsDTO(const NetworkInterfaceStats& stats);

  std::int64_t id = 0;
  std::string name;
  std::uint64_t bytesIn = 0;
  std::uint64_t bytesOut = 0;
  double bytesInPerSec = 0.0;
  double bytesOutPerSec = 0.0;

  bool operator==(const NetworkInterfaceStatsDTO&) const = default;
};

/// The stored form of one process's traffic; counters in bytes, rates in bytes per second.
struct NetworkProcessInfoDTO {
  NetworkProcessInfoDTO() = default;
  explicit NetworkProcessInfoDTO(const NetworkProcessInfo& info);

  std::int32_t pid = 0;
  std::string name;
  std::uint64_t bytesIn = 0;
  std::uint64_t bytesOut = 0;
  double bytesInPerSec = 0.0;
  double bytesOutPerSec = 0.0;
  std::string attributionSource;  ///< "nettop" or "none"

  bool operator==(const NetworkProcessInfoDTO&) const = default;
};

/// The stored form of the network, with its total rates frozen. Its time is that of the sample.
struct NetworkSnapshotDTO {
  NetworkSnapshotDTO() = default;
  explicit NetworkSnapshotDTO(const NetworkSnapshot& snapshot);

  std::vector<NetworkInterfaceStatsDTO> interfaces;
  std::vector<NetworkProcessInfoDTO> processes;
  std::string attributionSource;  ///< "nettop" or "none"
  std::optional<std::string> attributionUnavailableReason;
  double totalBytesInPerSec = 0.0;   ///< over all interfaces but "lo0"
  double totalBytesOutPerSec = 0.0;  ///< over all interfaces but "lo0"

  bool operator==(const NetworkSnapshotDTO&) const = default;
};

template <>
struct RecordFields<NetworkInterfaceStatsDTO> {
  static constexpr std::tuple values{
      RecordField{"bytesIn", &NetworkInterfaceStatsDTO::bytesIn},
      RecordField{"bytesInPerSec", &NetworkInterfaceStatsDTO::bytesInPerSec},
      RecordField{"bytesOut", &NetworkInterfaceStatsDTO::bytesOut},
      RecordField{"bytesOutPerSec", &NetworkInterfaceStatsDTO::bytesOutPerSec},
      RecordField{"id", &NetworkInterfaceStatsDTO::id},
      RecordField{"name", &NetworkInterfaceStatsDTO::name},
  };
};

template <>
struct RecordFields<NetworkProcessInfoDTO> {
  static constexpr std::tuple values{
      RecordField{"attributionSource", &NetworkProcessInfoDTO::attributionSource},
      RecordField{"bytesIn", &NetworkProcessInfoDTO::bytesIn},
      RecordField{"bytesInPerSec", &NetworkProcessInfoDTO::bytesInPerSec},
      RecordField{"bytesOut", &NetworkProcessInfoDTO::bytesOut},
      RecordField{"bytesOutPerSec", &NetworkProcessInfoDTO::bytesOutPerSec},
      RecordField{"name", &NetworkProcessInfoDTO::name},
      RecordField{"pid", &NetworkProcessInfoDTO::pid},
  };
};

template <>
struct RecordFields<NetworkSnapshotDTO> {
  static constexpr std::tuple values{
      RecordField{"attributionSource", &NetworkSnapshotDTO::attributionSource},
      RecordField{"attributionUnavailableReason",
                  &NetworkSnapshotDTO::attributionUnavailableReason},
      RecordField{"interfaces", &NetworkSnapshotDTO::interfaces},
      RecordField{"processes", &NetworkSnapshotDTO::processes},
      RecordField{"totalBytesInPerSec", &NetworkSnapshotDTO::totalBytesInPerSec},
      RecordField{"totalBytesOutPerSec", &NetworkSnapshotDTO::totalBytesOutPerSec},
  };
};

}  // namespace quorvex
