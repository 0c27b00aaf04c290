#pragma once

#include <optional>
#include <string>

#include "Date.h"
#include "PowerSession.h"
#include "RecordFields.h"
#include "UUID.h"

namespace quorvex {

/// Which session an export or a report is about: a copy of its row's identity that may leave the
/// store's thread.
struct PowerSessionMetadataDTO {
  PowerSessionMetadataDTO() = default;
  /// Status and source as the session's typed view reads them.
  explicit PowerSessionMetadataDTO(const PowerSession& session);

  UUID id;
  std::string title;
  Date startedAt{};
  std::optional<Date> endedAt;  ///< absent while the session has none
  std::string status;           ///< text of a `PowerSessionStatus`
  std::string source;           ///< text of a `PowerSessionSource`
  double sampleInterval = 0.0;  ///< nominal seconds between samples

  bool operator==(const PowerSessionMetadataDTO&) const = default;
};

template <>
struct RecordFields<PowerSessionMetadataDTO> {
  static constexpr std::tuple values{
      RecordField{"endedAt", &PowerSessionMetadataDTO::endedAt},
      RecordField{"id", &PowerSessionMetadataDTO::id},
      RecordField{"sampleInterval", &PowerSessionMetadataDTO::sampleInterval},
      RecordField{"source", &PowerSessionMetadataDTO::source},
      RecordField{"startedAt", &PowerSessionMetadataDTO::startedAt},
      RecordField{"status", &PowerSessionMetadataDTO::status},
      RecordField{"title", &PowerSessionMetadataDTO::title},
  };
};

}  // namespace quorvex
