#include "SessionJSON.h"

#include <string_view>
#include <tuple>
#include <type_traits>

#include "RawEnum.h"
#include "RecordEncoder.h"

namespace quorvex {

namespace {

/// A field of any kind that can be stored; nothing when an optional is absent.
template <typename Value>
void writeField(JSONWriter& json, std::string_view name, const Value& value) {
  if constexpr (isOptionalValue<Value>) {
    if (value) {
      writeField(json, name, *value);
    }
  } else {
    json.key(name);
    writeCoded(json, value);
  }
}

void writeThermalDigest(JSONWriter& json, const PowerSessionThermalDigest& digest) {
  json.beginObject();
  json.field("maxThermalPressure", digest.maxThermalPressure);
  writeField(json, "peakTemperatureCelsius", digest.peakTemperatureCelsius);
  json.field("thermalPressureWasTriggered", digest.thermalPressureWasTriggered);
  json.field("timeAbove100C", digest.timeAbove100C);
  json.field("timeAbove70C", digest.timeAbove70C);
  json.field("timeAbove80C", digest.timeAbove80C);
  json.field("timeAbove90C", digest.timeAbove90C);
  json.field("timeAbove95C", digest.timeAbove95C);
  json.field("verdict", rawValue(digest.verdict));
  json.endObject();
}

void writeStory(JSONWriter& json, const PowerSessionStory& story) {
  json.beginObject();
  json.key("episodes");
  json.beginArray();
  for (const PowerSessionStory::Episode& episode : story.episodes) {
    json.beginObject();
    writeField(json, "highlights", episode.highlights);
    writeField(json, "narrative", episode.narrative);
    writeField(json, "phase", episode.phase);
    writeField(json, "timeRange", episode.timeRange);
    json.endObject();
  }
  json.endArray();
  writeField(json, "headline", story.headline);
  json.endObject();
}

}  // namespace

std::string jsonDocument(const std::function<void(JSONWriter&)>& writeFields) {
  JSONWriter json{JSONWriter::Style::pretty};
  json.beginObject();
  writeFields(json);
  json.endObject();
  return (json.isValid() ? json.takeText() : "{}") + "\n";
}

void writeSessionFields(JSONWriter& json, const PowerSession& session,
                        const PowerSessionSummary& summary, const SessionDetails& details) {
  writeField(json, "endedAt", session.endedAt());
  writeField(json, "id", session.id());
  json.field("sampleInterval", session.sampleInterval());
  writeField(json, "source", session.source());
  writeField(json, "startedAt", session.startedAt());
  writeField(json, "status", session.status());
  if (details.story != nullptr) {
    json.key("story");
    writeStory(json, *details.story);
  }
  json.key("summary");
  writeSummary(json, summary);
  if (details.thermalDigest != nullptr) {
    json.key("thermalDigest");
    writeThermalDigest(json, *details.thermalDigest);
  }
  writeField(json, "title", session.title());
}

void writeSummary(JSONWriter& json, const PowerSessionSummary& summary) {
  // The fields of the record, and one figure that is made for this form alone.
  constexpr std::string_view derivedKey = "effectiveSampleInterval";
  const bool hasInterval = summary.sampleCount >= 2 && summary.durationSeconds > 0.0;
  bool isDerivedWritten = !hasInterval;
  const auto write = [&](const auto& field) {
    if (!isDerivedWritten && std::string_view{field.key} > derivedKey) {
      json.field(derivedKey,
                 summary.durationSeconds / static_cast<double>(summary.sampleCount - 1));
      isDerivedWritten = true;
    }
    writeField(json, field.key, summary.*field.member);
  };
  json.beginObject();
  std::apply([&](const auto&... field) { (write(field), ...); },
             RecordFields<PowerSessionSummary>::values);
  json.endObject();
}

}  // namespace quorvex
