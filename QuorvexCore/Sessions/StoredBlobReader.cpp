#include "StoredBlobReader.h"

namespace quorvex {

PowerSessionBlobViews StoredBlobReader::read(std::int64_t row) {
  if (!stepTo(row) && !seek(row)) {
    return {};
  }
  const auto optionalBytes = [&](int column) {
    return scan_.isNull(column) ? std::optional<std::string_view>{}
                                : std::optional{scan_.bytes(column)};
  };
  const PowerSessionBlobViews views{scan_.bytes(1), optionalBytes(2), optionalBytes(3)};
  if (row != lastRow_) {
    return views;
  }
  // Nobody may come back for a long time, and an open scan would keep the log from being emptied.
  last_ = {.snapshotData = std::string{views.snapshotData},
           .processActivityData = std::nullopt,
           .proTelemetryData = std::nullopt};
  PowerSessionBlobViews kept{last_.snapshotData, std::nullopt, std::nullopt};
  if (views.processActivityData) {
    kept.processActivityData = last_.processActivityData.emplace(*views.processActivityData);
  }
  if (views.proTelemetryData) {
    kept.proTelemetryData = last_.proTelemetryData.emplace(*views.proTelemetryData);
  }
  rest();
  return kept;
}

void StoredBlobReader::rest() {
  if (position_) {
    scan_.reset();
    position_.reset();
  }
}

bool StoredBlobReader::seek(std::int64_t row) {
  rest();
  scan_.bind(1, row);
  const auto hasRow = scan_.step();
  if (!hasRow || !*hasRow) {
    scan_.reset();
    return false;
  }
  position_ = scan_.integer(0);
  return *position_ == row;
}

bool StoredBlobReader::stepTo(std::int64_t row) {
  for (int i = 0; position_ && *position_ < row && i < longestGap; ++i) {
    const auto hasRow = scan_.step();
    if (!hasRow || !*hasRow) {
      rest();
      return false;
    }
    position_ = scan_.integer(0);
  }
  return position_ == row;
}

}  // namespace quorvex
