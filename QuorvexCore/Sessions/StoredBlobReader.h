#pragma once

#include <cstdint>
#include <optional>

#include "PowerSessionSample.h"
#include "SQLiteDatabase.h"

namespace quorvex {

/// Fetches the large columns of sample rows. Rows asked for in ascending order come from one scan
/// of their table; any other order costs a search each. One thread.
class StoredBlobReader final : public PowerSessionBlobSource {
 public:
  /// `scan` selects `sample`, `snapshotData`, `processActivityData` and `proTelemetryData` of the
  /// rows from the bound one on, in ascending order.
  explicit StoredBlobReader(SQLiteStatement scan) : scan_(std::move(scan)) {}

  [[nodiscard]] PowerSessionBlobViews read(std::int64_t row) override;

  /// Says which row a pass over samples will ask for last: with it the scan ends by itself.
  void endAfter(std::int64_t row) { lastRow_ = row; }

  /// Ends the scan, and with it the read transaction that it holds: what other processes have
  /// written since is seen from then on, and this one may write.
  void rest();

 private:
  /// Rows of other samples that are passed over before a search is cheaper. Passing does not read
  /// their blobs.
  static constexpr int longestGap = 32;

  [[nodiscard]] bool seek(std::int64_t row);
  [[nodiscard]] bool stepTo(std::int64_t row);

  SQLiteStatement scan_;
  std::optional<std::int64_t> position_;  ///< the row on which the scan stands
  std::optional<std::int64_t> lastRow_;
  PowerSessionBlobs last_;  ///< of that row, which outlive the scan
};

}  // namespace quorvex
