#pragma once

#include <functional>
#include <string>

#include "JSONWriter.h"
#include "PowerSession.h"
#include "PowerSessionReport.h"

/// A session as JSON objects. Numbers are written as they are, without rounding; dates as ISO 8601
/// in UTC and whole seconds; an absent value leaves its key out. Pure functions; any thread.
namespace quorvex {

/// One pretty-printed document with a newline behind it, of the fields that `writeFields` writes in
/// ascending order of keys; "{}" when one of their numbers is not finite.
[[nodiscard]] std::string jsonDocument(const std::function<void(JSONWriter&)>& writeFields);

/// What `session show` has beside the session itself.
struct SessionDetails {
  const PowerSessionThermalDigest* thermalDigest = nullptr;  ///< null: no such key
  const PowerSessionStory* story = nullptr;                  ///< null: no such key
};

/// The fields of a session with its summary, without the braces around them.
void writeSessionFields(JSONWriter& json, const PowerSession& session,
                        const PowerSessionSummary& summary, const SessionDetails& details = {});

/// The object of a summary.
void writeSummary(JSONWriter& json, const PowerSessionSummary& summary);

}  // namespace quorvex
