#include "PowerSessionExport.h"

#include <utility>

#include "CanonicalReader.h"
#include "Date.h"
#include "PowerSessionCoders.h"

namespace quorvex {

PowerSessionExport::PowerSessionExport(std::size_t expectedBytes, Blobs blobs)
    : blobs_(blobs),
      encoder_(PowerSessionCoders::encoder()),
      decoder_(PowerSessionCoders::decoder()) {
  text_.reserve(expectedBytes);
}

void PowerSessionExport::add(const UUID& id, const StoredSample& sample) {
  if (error_) {
    return;
  }
  const std::size_t lineStart = text_.size();
  if (blobs_ == Blobs::copyCanonical && addAsStored(id, sample)) {
    return;
  }
  text_.resize(lineStart);
  addEncoded(id, sample);
}

bool PowerSessionExport::addAsStored(const UUID& id, const StoredSample& sample) {
  const auto elapsedSeconds = encoder_.encode(sample.columns.elapsedSeconds);
  if (!elapsedSeconds) {
    return false;
  }
  text_.append(R"({"recordType":"sample","sample":{"elapsedSeconds":)")
      .append(*elapsedSeconds)
      .append(R"(,"id":")")
      .append(id.text())
      .push_back('"');
  if (sample.proTelemetryData) {
    text_.append(R"(,"proTelemetry":)");
    if (!addCanonical<ProTelemetrySnapshot>(*sample.proTelemetryData)) {
      return false;
    }
  }
  text_.append(R"(,"processActivities":)");
  if (!addCanonical<std::vector<ProcessActivityDTO>>(sample.processActivityData.value_or("[]"))) {
    return false;
  }
  text_.append(R"(,"snapshot":)");
  if (!addCanonical<SystemPowerStateDTO>(sample.snapshotData)) {
    return false;
  }
  text_.append(R"(,"timestamp":")").append(iso8601(sample.columns.timestamp)).append("\"}}\n");
  return true;
}

template <typename Value>
bool PowerSessionExport::addCanonical(std::string_view blob) {
  // Judged where it will stay, so that it is copied only once.
  const std::size_t start = text_.size();
  text_.append(blob).append(CanonicalReader::padding, '\0');
  const bool isCanonical =
      CanonicalReader::isCanonical<Value>(std::string_view{text_}.substr(start, blob.size()));
  text_.resize(start + blob.size());
  return isCanonical;
}

void PowerSessionExport::addEncoded(const UUID& id, const StoredSample& sample) {
  PowerSessionSampleDTO& dto = line_.sample;
  if (!decoder_.decodeInto(dto.snapshot, sample.snapshotData)) {
    return;
  }
  dto.id = id;
  dto.timestamp = sample.columns.timestamp;
  dto.elapsedSeconds = sample.columns.elapsedSeconds;
  if (!sample.processActivityData ||
      !decoder_.decodeInto(dto.processActivities, *sample.processActivityData)) {
    dto.processActivities.clear();
  }
  if (!sample.proTelemetryData ||
      !decoder_.decodeInto(dto.proTelemetry.emplace(), *sample.proTelemetryData)) {
    dto.proTelemetry.reset();
  }
  auto encoded = encoder_.encode(line_);
  if (encoded) {
    text_.append(*encoded).push_back('\n');
  } else {
    error_ = encoded.error();
  }
}

Result<std::string, EncodingError> PowerSessionExport::finish(
    const PowerSessionExportEnvelope& envelope) {
  auto line = encoder_.encode(envelope);
  if (!line) {
    return line.error();
  }
  if (error_) {
    return *error_;
  }
  line->push_back('\n');
  text_.insert(0, *line);
  return std::move(text_);
}

}  // namespace quorvex
