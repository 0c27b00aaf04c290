// The part of the session store that draws conclusions from stored samples, and keeps them.

#include <cstddef>
#include <cstdint>
#include <utility>

#include "ObservationLoader.h"
#include "PowerSessionExport.h"
#include "PowerSessionMetadataDTO.h"
#include "PowerSessionMetrics.h"
#include "PowerSessionReportBuilder.h"
#include "PowerSessionStore.h"
#include "SessionFacts.h"

namespace quorvex {

namespace {

constexpr std::int64_t maxTimelinePoints = 240;

SessionFacts factsOf(const PowerSession& session) {
  return {.startedAt = session.startedAt(),
          .endedAt = session.endedAt(),
          .sampleInterval = session.sampleInterval()};
}

/// The views are good until the next sample is asked for its blobs.
StoredSample storedSample(const PowerSessionSample& sample) {
  const PowerSessionBlobViews blobs = sample.blobs();
  return {.columns = {.timestamp = sample.timestamp(),
                      .elapsedSeconds = sample.elapsedSeconds(),
                      .totalWatts = sample.totalWatts(),
                      .batteryPercent = sample.batteryPercent(),
                      .acConnected = sample.acConnected(),
                      .thermalPressure = sample.thermalPressure(),
                      .maxFanRPM = sample.maxFanRPM(),
                      .maxTemperature = sample.maxTemperature()},
          .snapshotData = blobs.snapshotData,
          .processActivityData = blobs.processActivityData,
          .proTelemetryData = blobs.proTelemetryData};
}

/// Room for a text of all samples, guessed from the first one.
std::size_t expectedExportBytes(const PowerSessionSamples& samples) {
  constexpr std::size_t aroundBlobs = 512;
  if (samples.empty()) {
    return 0;
  }
  const PowerSessionBlobViews first = samples.front()->blobs();
  const std::size_t lineBytes = aroundBlobs + first.snapshotData.size() +
                                first.processActivityData.value_or("").size() +
                                first.proTelemetryData.value_or("").size();
  return lineBytes * samples.size();
}

}  // namespace

ObservationSet PowerSessionStore::decodedSamples(const PowerSession& session) {
  const PowerSessionSamples all = samples(session);
  ObservationLoader loader{all.size()};
  std::size_t done = 0;
  for (const SamplePointer& sample : all) {
    loader.add(storedSample(*sample));
    tellReading(++done, all.size());
  }
  return loader.finish();
}

const ObservationSet& PowerSessionStore::observations(const PowerSession& session) {
  if (decoded_ && decoded_->session == session.id()) {
    return decoded_->observations;
  }
  decoded_.reset();
  return decoded_.emplace(DecodedSession{session.id(), decodedSamples(session)}).observations;
}

void PowerSessionStore::tellReading(std::size_t done, std::size_t total) const {
  constexpr std::size_t samplesBetween = 256;
  if (readingObserver_ && (done % samplesBetween == 0 || done == total)) {
    readingObserver_(done, total);
  }
}

void PowerSessionStore::forgetConclusions(const UUID& id) {
  if (decoded_ && decoded_->session == id) {
    decoded_.reset();
  }
  summaryCache_.erase(id);
  reportCache_.erase(id);
}

PowerSessionSummary PowerSessionStore::summary(const PowerSession& session) {
  beginOperation();
  if (const auto known = summaryCache_.find(session.id()); known != summaryCache_.end()) {
    return known->second;
  }
  auto summary = PowerSessionMetrics::summary(factsOf(session), observations(session));
  return summaryCache_.insert_or_assign(session.id(), std::move(summary)).first->second;
}

PowerSessionReport PowerSessionStore::report(const PowerSession& session) {
  beginOperation();
  if (const auto known = reportCache_.find(session.id()); known != reportCache_.end()) {
    return known->second;
  }
  const ObservationSet& decoded = observations(session);
  auto summary = summaryCache_.find(session.id());
  if (summary == summaryCache_.end()) {
    summary =
        summaryCache_.emplace(session.id(), PowerSessionMetrics::summary(factsOf(session), decoded))
            .first;
  }
  auto report = PowerSessionReportBuilder::report(PowerSessionMetadataDTO{session}, summary->second,
                                                  decoded, maxTimelinePoints);
  // Both conclusions are kept from here on.
  decoded_.reset();
  return reportCache_.insert_or_assign(session.id(), std::move(report)).first->second;
}

StoreResult<std::string> PowerSessionStore::exportJSONL(const PowerSession& session,
                                                        Date exportedAt) {
  const PowerSessionSamples all = samples(session);
  PowerSessionExport lines{expectedExportBytes(all)};
  ObservationLoader loader{all.size()};
  std::size_t done = 0;
  for (const SamplePointer& sample : all) {
    const StoredSample stored = storedSample(*sample);
    loader.add(stored);
    lines.add(sample->id(), stored);
    tellReading(++done, all.size());
  }
  auto text =
      lines.finish({.appVersion = appVersion_,
                    .exportedAt = exportedAt,
                    .session = PowerSessionMetadataDTO{session},
                    .summary = PowerSessionMetrics::summary(factsOf(session), loader.finish())});
  if (!text) {
    return StoreError{StoreError::Kind::notEncodable,
                      "The session cannot be exported: " + text.error().description};
  }
  return *std::move(text);
}

}  // namespace quorvex
