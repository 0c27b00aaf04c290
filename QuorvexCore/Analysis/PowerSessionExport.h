#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Observation.h"
#include "PowerSessionExportFormat.h"
#include "RecordDecoder.h"
#include "RecordEncoder.h"
#include "Result.h"
#include "UUID.h"

namespace quorvex {

/// Writes a session as one JSON Lines text: a line for the session, then one for each sample whose
/// snapshot decodes. Process rows that do not decode become an empty array, a privileged snapshot
/// that does not decode is left out.
///
/// Samples come first, since the session's line carries the summary of all of them: whoever reads
/// the store can hand each sample to this and to an `ObservationLoader` as it comes. What lies in a
/// blob is written as if it were decoded and encoded anew; a blob that is in the encoder's own form
/// already is copied.
///
/// One thread at a time.
class PowerSessionExport {
 public:
  /// How blobs that need no new encoding are treated. The text is the same.
  enum class Blobs {
    copyCanonical,  ///< copied
    encodeAll,      ///< decoded and encoded like all others
  };

  /// Room for `expectedBytes` of text is set aside at once. With less it grows as needed, but needs
  /// twice its size while it does.
  explicit PowerSessionExport(std::size_t expectedBytes = 0, Blobs blobs = Blobs::copyCanonical);

  /// Adds a sample's line; in ascending order of time.
  void add(const UUID& id, const StoredSample& sample);

  /// The whole text, each line with a line feed behind it. Fails with the encoder's error when the
  /// envelope, or else any sample, has a number that cannot be written. The last call.
  [[nodiscard]] Result<std::string, EncodingError> finish(
      const PowerSessionExportEnvelope& envelope);

 private:
  [[nodiscard]] bool addAsStored(const UUID& id, const StoredSample& sample);
  template <typename Value>
  [[nodiscard]] bool addCanonical(std::string_view blob);
  void addEncoded(const UUID& id, const StoredSample& sample);

  Blobs blobs_;
  std::string text_;
  std::optional<EncodingError> error_;
  RecordEncoder encoder_;
  RecordDecoder decoder_;
  PowerSessionSampleLine line_;
};

}  // namespace quorvex
