#include "PowerSession.h"

#include <utility>

namespace quorvex {

PowerSession::PowerSession(UUID id, std::string title, Date startedAt, std::optional<Date> endedAt,
                           PowerSessionStatus status, PowerSessionSource source,
                           std::string appVersion, std::int64_t schemaVersion,
                           double sampleInterval, Date createdAt)
    : PowerSession(PowerSessionColumns{.id = id,
                                       .title = std::move(title),
                                       .startedAt = startedAt,
                                       .endedAt = endedAt,
                                       .statusRaw = std::string{rawValue(status)},
                                       .sourceRaw = std::string{rawValue(source)},
                                       .appVersion = std::move(appVersion),
                                       .schemaVersion = schemaVersion,
                                       .sampleInterval = sampleInterval,
                                       .createdAt = createdAt}) {}

PowerSessionStatus PowerSession::status() const {
  const auto& text = columns().statusRaw;
  return (text ? fromRawValue<PowerSessionStatus>(*text) : std::nullopt)
      .value_or(PowerSessionStatus::active);
}

PowerSessionSource PowerSession::source() const {
  const auto& text = columns().sourceRaw;
  return (text ? fromRawValue<PowerSessionSource>(*text) : std::nullopt)
      .value_or(PowerSessionSource::app);
}

void PowerSession::setStatus(PowerSessionStatus status) {
  columns_.modify([&](PowerSessionColumns& columns) { columns.statusRaw = rawValue(status); });
}

void PowerSession::setEndedAt(std::optional<Date> endedAt) {
  columns_.modify([&](PowerSessionColumns& columns) { columns.endedAt = endedAt; });
}

}  // namespace quorvex
