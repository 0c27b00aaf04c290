#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Date.h"
#include "PowerSession.h"
#include "UUID.h"

namespace quorvex {

/// The columns of one sample row, apart from the three large ones. The figures are taken from the
/// same state as the snapshot, so that time series and extremes need no decoding.
struct PowerSessionSampleColumns {
  UUID id;
  Date timestamp{};                            ///< the sample's time, to the nanosecond
  double elapsedSeconds = 0.0;                 ///< since the session's start, at least 0
  std::optional<double> totalWatts;            ///< of the primary reading; absent without one
  std::optional<std::int64_t> batteryPercent;  ///< absent without a battery
  std::optional<bool> acConnected;             ///< absent without a battery
  std::int64_t thermalPressure = 0;            ///< 0 to 4
  std::optional<std::int64_t> maxFanRPM;       ///< absent without fans
  std::optional<double> maxTemperature;        ///< degrees Celsius; absent without sensors
  Date createdAt{};                            ///< when the row was made

  bool operator==(const PowerSessionSampleColumns&) const = default;
};

/// The three large columns of a sample row, as JSON text.
struct PowerSessionBlobs {
  std::string snapshotData;                        ///< a `SystemPowerStateDTO`
  std::optional<std::string> processActivityData;  ///< a non-empty array of `ProcessActivityDTO`
  std::optional<std::string> proTelemetryData;     ///< a `ProTelemetrySnapshot`

  bool operator==(const PowerSessionBlobs&) const = default;
};

/// The same, where they lie. Empty views of an unreadable row decode to nothing.
struct PowerSessionBlobViews {
  std::string_view snapshotData;
  std::optional<std::string_view> processActivityData;
  std::optional<std::string_view> proTelemetryData;
};

/// Where the large columns of stored samples are fetched from.
class PowerSessionBlobSource {
 public:
  PowerSessionBlobSource() = default;
  PowerSessionBlobSource(const PowerSessionBlobSource&) = delete;
  PowerSessionBlobSource& operator=(const PowerSessionBlobSource&) = delete;
  virtual ~PowerSessionBlobSource() = default;

  /// The columns of the row, until the next call; empty views when the row cannot be read. Calls in
  /// ascending order of rows stream.
  [[nodiscard]] virtual PowerSessionBlobViews read(std::int64_t row) = 0;
};

/// One recorded poll. Never changed once it is stored. A store hands out one object for each row.
/// It belongs to the store's thread.
class PowerSessionSample {
 public:
  /// A sample that carries its blobs itself: not stored yet, or made by hand.
  PowerSessionSample(const PowerSessionSampleColumns& columns, PowerSessionBlobs blobs,
                     std::weak_ptr<PowerSession> session);
  /// A stored sample, whose blobs are fetched when they are asked for.
  PowerSessionSample(const PowerSessionSampleColumns& columns, std::int64_t row,
                     std::weak_ptr<PowerSessionBlobSource> source,
                     std::weak_ptr<PowerSession> session);

  [[nodiscard]] const PowerSessionSampleColumns& columns() const { return columns_; }
  [[nodiscard]] const UUID& id() const { return columns_.id; }
  [[nodiscard]] Date timestamp() const { return columns_.timestamp; }
  [[nodiscard]] double elapsedSeconds() const { return columns_.elapsedSeconds; }
  [[nodiscard]] std::optional<double> totalWatts() const { return columns_.totalWatts; }
  [[nodiscard]] std::optional<std::int64_t> batteryPercent() const {
    return columns_.batteryPercent;
  }
  [[nodiscard]] std::optional<bool> acConnected() const { return columns_.acConnected; }
  [[nodiscard]] std::int64_t thermalPressure() const { return columns_.thermalPressure; }
  [[nodiscard]] std::optional<std::int64_t> maxFanRPM() const { return columns_.maxFanRPM; }
  [[nodiscard]] std::optional<double> maxTemperature() const { return columns_.maxTemperature; }
  [[nodiscard]] Date createdAt() const { return columns_.createdAt; }

  /// The owning session; absent once that object is gone.
  [[nodiscard]] std::shared_ptr<PowerSession> session() const { return session_.lock(); }

  /// The large columns, until the next call for any sample of the same store or the store's next
  /// operation. Asking the samples of a session in time order streams through the store.
  [[nodiscard]] PowerSessionBlobViews blobs() const;

  /// The row that it stands in; absent while it is not stored.
  [[nodiscard]] std::optional<std::int64_t> row() const { return row_; }
  /// The blobs that it carries itself; none once it is stored.
  [[nodiscard]] const PowerSessionBlobs* ownBlobs() const { return ownBlobs_.get(); }
  /// Says where it was stored, and lets go of the blobs that it carried.
  void markStored(std::int64_t row, std::weak_ptr<PowerSessionBlobSource> source);

 private:
  PowerSessionSampleColumns columns_;
  std::optional<std::int64_t> row_;
  std::weak_ptr<PowerSession> session_;
  std::weak_ptr<PowerSessionBlobSource> source_;
  std::unique_ptr<const PowerSessionBlobs> ownBlobs_;
};

/// The samples of one session in ascending order of time.
using PowerSessionSamples = std::vector<std::shared_ptr<const PowerSessionSample>>;

}  // namespace quorvex
