#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "HelperStatus.h"
#include "ProTelemetrySnapshot.h"
#include "RecordDecoder.h"
#include "Result.h"
#include "TemperatureSensor.h"

namespace quorvex {

/// Bytes of the largest text that is taken for a reply; an honest one is a thousandth of it.
inline constexpr std::size_t maximumReplySize = std::size_t{16} * 1024 * 1024;

// The helper tool's replies are UTF-8 JSON, one document each, valid throughout. Any text may be
// given: what is no reply gives an error or none. Any thread.

[[nodiscard]] Result<HelperStatus, DecodingError> decodeHelperStatus(std::string_view json);

/// `sampledAt` is an ISO 8601 date-time.
[[nodiscard]] Result<ProTelemetrySnapshot, DecodingError> decodeProTelemetrySnapshot(
    std::string_view json);

/// The sensors of the helper tool's temperature reply: a JSON array of objects with the keys `key`,
/// `name` and `temperature`, all three required, unknown keys ignored. None when the text is
/// anything else.
[[nodiscard]] std::optional<std::vector<TemperatureSensor>> decodeTemperatureReply(
    std::string_view json);

}  // namespace quorvex
