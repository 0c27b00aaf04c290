#pragma once

#include <optional>

#include "Date.h"

namespace quorvex {

/// What conclusions need of the session itself, beside its samples.
struct SessionFacts {
  Date startedAt{};
  std::optional<Date> endedAt;  ///< absent while the session is active
  double sampleInterval = 2.0;  ///< seconds between samples, as it was asked for

  bool operator==(const SessionFacts&) const = default;
};

}  // namespace quorvex
