#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "RecordFields.h"

namespace quorvex {

/// What is known of the installed helper tool. Also the tool's own status reply, of which only
/// `installedVersion` and `supportsProTelemetry` are ever believed.
struct HelperStatus {
  bool isInstalled = false;                     ///< the file exists
  bool isExecutable = false;                    ///< this user may execute it
  bool isSetuidRoot = false;                    ///< set-uid bit set and owned by user 0
  std::int64_t ownerUserID = -1;                ///< -1: unknown
  std::int64_t groupID = -1;                    ///< -1: unknown
  std::optional<std::string> installedVersion;  ///< as the tool tells it
  bool supportsProTelemetry = false;            ///< as the tool tells it
  std::string path;                             ///< the checked path
  std::optional<std::string> error;             ///< failure text for people

  /// Whether privileged samples can be had. The group plays no part.
  [[nodiscard]] bool isUsable() const {
    return isInstalled && isExecutable && isSetuidRoot && supportsProTelemetry && ownerUserID == 0;
  }

  bool operator==(const HelperStatus&) const = default;
};

template <>
struct RecordFields<HelperStatus> {
  static constexpr std::tuple values{
      RecordField{"error", &HelperStatus::error},
      RecordField{"groupID", &HelperStatus::groupID},
      RecordField{"installedVersion", &HelperStatus::installedVersion},
      RecordField{"isExecutable", &HelperStatus::isExecutable},
      RecordField{"isInstalled", &HelperStatus::isInstalled},
      RecordField{"isSetuidRoot", &HelperStatus::isSetuidRoot},
      RecordField{"ownerUserID", &HelperStatus::ownerUserID},
      RecordField{"path", &HelperStatus::path},
      RecordField{"supportsProTelemetry", &HelperStatus::supportsProTelemetry},
  };
};

}  // namespace quorvex
