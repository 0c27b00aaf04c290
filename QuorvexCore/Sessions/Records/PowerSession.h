#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Date.h"
#include "Observable.h"
#include "PowerSessionSource.h"
#include "PowerSessionStatus.h"
#include "UUID.h"

namespace quorvex {

/// The columns of one session row.
struct PowerSessionColumns {
  UUID id;                               ///< identity everywhere outside the store
  std::string title;                     ///< normalised: trimmed and never empty
  Date startedAt{};                      ///< elapsed times and the duration count from it
  std::optional<Date> endedAt;           ///< absent while active
  std::optional<std::string> statusRaw;  ///< text of a `PowerSessionStatus`
  std::optional<std::string> sourceRaw;  ///< text of a `PowerSessionSource`
  std::string appVersion;                ///< of the program that recorded it
  std::int64_t schemaVersion = 0;        ///< of the sample payloads, not of the store
  double sampleInterval = 0.0;           ///< nominal, in seconds
  Date createdAt{};                      ///< when the row was made

  bool operator==(const PowerSessionColumns&) const = default;
};

/// One recording: a persistent object. A store hands out one object for each row, so that all who
/// look at a session see the same one; its columns are observable. Only the store makes, changes
/// and deletes stored ones. It belongs to the store's thread.
class PowerSession : public std::enable_shared_from_this<PowerSession> {
 public:
  /// Version of the sample payloads that this program writes.
  static constexpr std::int64_t currentSchemaVersion = 6;

  explicit PowerSession(PowerSessionColumns columns) : columns_(std::move(columns)) {}

  /// A session as it is started: `createdAt` is the present time.
  PowerSession(UUID id, std::string title, Date startedAt, std::optional<Date> endedAt,
               PowerSessionStatus status, PowerSessionSource source, std::string appVersion,
               std::int64_t schemaVersion, double sampleInterval, Date createdAt);

  [[nodiscard]] const PowerSessionColumns& columns() const { return columns_.value(); }
  [[nodiscard]] const UUID& id() const { return columns().id; }
  [[nodiscard]] const std::string& title() const { return columns().title; }
  [[nodiscard]] Date startedAt() const { return columns().startedAt; }
  [[nodiscard]] std::optional<Date> endedAt() const { return columns().endedAt; }
  [[nodiscard]] const std::string& appVersion() const { return columns().appVersion; }
  [[nodiscard]] std::int64_t schemaVersion() const { return columns().schemaVersion; }
  /// Nominal seconds between samples.
  [[nodiscard]] double sampleInterval() const { return columns().sampleInterval; }
  [[nodiscard]] Date createdAt() const { return columns().createdAt; }

  /// A missing or unknown text reads as `active`.
  [[nodiscard]] PowerSessionStatus status() const;
  /// A missing or unknown text reads as `app`.
  [[nodiscard]] PowerSessionSource source() const;

  void setStatus(PowerSessionStatus status);
  void setEndedAt(std::optional<Date> endedAt);
  /// Takes over what another process has written; observers hear of it only when it differs.
  void refresh(PowerSessionColumns columns) { columns_.setIfChanged(std::move(columns)); }

  /// Calls `callback` after each change of a column, until the subscription ends.
  [[nodiscard]] Subscription subscribe(
      std::function<void(const PowerSessionColumns&)> callback) const {
    return columns_.subscribe(std::move(callback));
  }

 private:
  Observable<PowerSessionColumns> columns_;
};

}  // namespace quorvex
