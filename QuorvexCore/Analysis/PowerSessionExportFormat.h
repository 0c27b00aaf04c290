#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "PowerSession.h"
#include "PowerSessionMetadataDTO.h"
#include "PowerSessionSummary.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "RecordFields.h"
#include "SystemPowerStateDTO.h"
#include "UUID.h"

namespace quorvex {

namespace PowerSessionExportFormat {

/// The version that every export states, whatever version the session's row holds.
inline constexpr std::int64_t schemaVersion = PowerSession::currentSchemaVersion;

}  // namespace PowerSessionExportFormat

/// The first line of an export.
struct PowerSessionExportEnvelope {
  std::string recordType = "session";
  std::int64_t schemaVersion = PowerSessionExportFormat::schemaVersion;
  std::string appVersion;  ///< of the program that exports, not of the one that recorded
  Date exportedAt{};
  PowerSessionMetadataDTO session;
  PowerSessionSummary summary;  ///< freshly computed

  bool operator==(const PowerSessionExportEnvelope&) const = default;
};

/// One sample in full. The columns of its row are not here: their values stand in `snapshot`.
struct PowerSessionSampleDTO {
  UUID id;
  Date timestamp{};             ///< whole seconds once written
  double elapsedSeconds = 0.0;  ///< with fractions
  SystemPowerStateDTO snapshot;
  std::vector<ProcessActivityDTO> processActivities;  ///< empty when the sample has none
  std::optional<ProTelemetrySnapshot> proTelemetry;   ///< absent when the sample has none

  bool operator==(const PowerSessionSampleDTO&) const = default;
};

/// Each further line of an export.
struct PowerSessionSampleLine {
  std::string recordType = "sample";
  PowerSessionSampleDTO sample;

  bool operator==(const PowerSessionSampleLine&) const = default;
};

template <>
struct RecordFields<PowerSessionExportEnvelope> {
  static constexpr std::tuple values{
      RecordField{"appVersion", &PowerSessionExportEnvelope::appVersion},
      RecordField{"exportedAt", &PowerSessionExportEnvelope::exportedAt},
      RecordField{"recordType", &PowerSessionExportEnvelope::recordType},
      RecordField{"schemaVersion", &PowerSessionExportEnvelope::schemaVersion},
      RecordField{"session", &PowerSessionExportEnvelope::session},
      RecordField{"summary", &PowerSessionExportEnvelope::summary},
  };
};

template <>
struct RecordFields<PowerSessionSampleDTO> {
  static constexpr std::tuple values{
      RecordField{"elapsedSeconds", &PowerSessionSampleDTO::elapsedSeconds},
      RecordField{"id", &PowerSessionSampleDTO::id},
      RecordField{"proTelemetry", &PowerSessionSampleDTO::proTelemetry},
      RecordField{"processActivities", &PowerSessionSampleDTO::processActivities},
      RecordField{"snapshot", &PowerSessionSampleDTO::snapshot},
      RecordField{"timestamp", &PowerSessionSampleDTO::timestamp},
  };
};

template <>
struct RecordFields<PowerSessionSampleLine> {
  static constexpr std::tuple values{
      RecordField{"recordType", &PowerSessionSampleLine::recordType},
      RecordField{"sample", &PowerSessionSampleLine::sample},
  };
};

}  // namespace quorvex
