#pragma once

#include "RecordDecoder.h"
#include "RecordEncoder.h"

/// The JSON settings under which a session's records are written and read: keys sorted, dates as
/// ISO 8601 in UTC and whole seconds, "/" escaped, absent fields left out. A number that is not
/// finite cannot be written.
namespace quorvex::PowerSessionCoders {

/// A new encoder that writes no white space: the form of stored blobs and export lines.
[[nodiscard]] RecordEncoder encoder();

/// A new encoder that writes for people: the form of copied reports.
[[nodiscard]] RecordEncoder prettyEncoder();

/// A new decoder. It reads `SystemPowerStateDTO` and its parts, arrays of `ProcessActivityDTO`, and
/// `ProTelemetrySnapshot`.
[[nodiscard]] RecordDecoder decoder();

}  // namespace quorvex::PowerSessionCoders
